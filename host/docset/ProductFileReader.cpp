#include "docset/ProductFileReader.hpp"

#include <utility>

#include "docset/ContainedFile.hpp"
#include "docset/Formats.hpp"
#include "docset/ItemReader.hpp"
#include "docset/JsonDocument.hpp"
#include "fl/i18n/utf.hpp"

namespace reference::docset {
namespace {

void readHeaderFields(const JsonNode& node, ProductHeader& header) {
    header.shortName = node.requiredTextOf("shortName", false);
    header.displayName = node.requiredTextOf("displayName", true);
    header.helpFolder = node.requiredTextOf("helpFolder", true);
    header.version = node.textOf("version");
}

// A member that files a list under a name that the author chose.
void requireNameAndElements(std::string_view name, const JsonNode& list) {
    if (name.empty())
        list.fault("The name is empty; it may not be here.");
    list.requireElements();
}

// The list that is filed under the key; a new one when there is none. Mostly a file has its keys in
// the map's order, in which the end is where the next one belongs.
template <typename Entry>
std::vector<Entry>& listUnder(std::u16string key,
                              std::map<std::u16string, std::vector<Entry>>& lists) {
    return lists.emplace_hint(lists.end(), std::move(key), std::vector<Entry>())->second;
}

std::optional<LookupContents> lookupContentsOf(const JsonDocument& document) {
    const auto top = document.top(lookupFormat, formatVersion);
    if (!top || !top->isObjectOf({"format", "formatVersion", "product", "entities"}))
        return std::nullopt;
    LookupContents contents;
    const auto product = top->require("product");
    const auto entities = top->require("entities");
    if (!product || !entities ||
        !product->isObjectOf({"shortName", "displayName", "helpFolder", "version"}))
        return std::nullopt;
    readHeaderFields(*product, contents.header);
    entities->forEachMember([&](std::string_view name, const JsonNode& list) {
        requireNameAndElements(name, list);
        auto& records = listUnder(fl::i18n::toUtf16(name), contents.entities);
        records.reserve(list.elementCount());
        list.forEachElement(
            [&](const JsonNode& node) { records.push_back(readLookupRecord(node)); });
    });
    return contents;
}

std::optional<std::vector<ReferenceContents>> referenceContentsOf(const JsonDocument& document) {
    const auto top = document.top(referenceFormat, formatVersion);
    if (!top || !top->isObjectOf({"format", "formatVersion", "products"}))
        return std::nullopt;
    const auto products = top->require("products");
    if (!products)
        return std::nullopt;
    std::vector<ReferenceContents> all;
    products->forEachElement([&](const JsonNode& node) {
        if (!node.isObjectOf({"shortName", "displayName", "helpFolder", "version", "pages"}))
            return;
        ReferenceContents contents;
        readHeaderFields(node, contents.header);
        if (const auto pages = node.require("pages"))
            pages->forEachMember([&](std::string_view href, const JsonNode& list) {
                requireNameAndElements(href, list);
                const std::u16string key = fl::i18n::toUtf16(href);
                auto& items = listUnder(key, contents.pages);
                items.reserve(list.elementCount());
                list.forEachElement(
                    [&](const JsonNode& item) { items.push_back(readItem(item, key)); });
            });
        all.push_back(std::move(contents));
    });
    return all;
}

}  // namespace

std::optional<LookupContents> readLookupFile(const std::filesystem::path& root,
                                             std::string_view relativePath,
                                             const FaultHandler& onFault) {
    const auto folder = openRoot(root, relativePath, onFault);
    return folder ? readLookupFile(*folder, relativePath, onFault) : std::nullopt;
}

std::optional<LookupContents> readLookupFile(const files::Folder& root,
                                             std::string_view relativePath,
                                             const FaultHandler& onFault) {
    return JsonDocument::readAs(root, relativePath, onFault, &lookupContentsOf);
}

std::optional<std::vector<ReferenceContents>> readReferenceFile(const std::filesystem::path& root,
                                                                std::string_view relativePath,
                                                                const FaultHandler& onFault) {
    const auto folder = openRoot(root, relativePath, onFault);
    return folder ? readReferenceFile(*folder, relativePath, onFault) : std::nullopt;
}

std::optional<std::vector<ReferenceContents>> readReferenceFile(const files::Folder& root,
                                                                std::string_view relativePath,
                                                                const FaultHandler& onFault) {
    return JsonDocument::readAs(root, relativePath, onFault, &referenceContentsOf);
}

}  // namespace reference::docset
