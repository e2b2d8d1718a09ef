#include "vref/ProductSize.hpp"

#include <algorithm>

#include "docset/Manifest.hpp"
#include "docset/ProductFileReader.hpp"

namespace reference::tools {
namespace {

using property::RefEntityType;

// Projects drop a few per cent of their entries from one release to the next, and seldom a tenth. A
// tree that was built in part, or whose pages are gone, lacks far more. The bound stands well clear
// of both.
bool isFarFewer(std::size_t fresh, std::size_t old) {
    return fresh < old - old / 4;
}

std::string change(std::size_t old, std::size_t fresh) {
    return std::to_string(old) + " to " + std::to_string(fresh);
}

}  // namespace

std::size_t ProductSize::total() const {
    std::size_t all = 0;
    for (const auto& [type, count] : records)
        all += count;
    return all;
}

ProductSize sizeOf(const std::map<std::u16string, std::vector<property::RefItemLookup>>& entities) {
    ProductSize size;
    for (const auto& [name, records] : entities)
        for (const property::RefItemLookup& record : records) {
            ++size.records[record.getType()];
            if (!record.getPurpose().empty())
                ++size.described;
        }
    return size;
}

std::optional<ProductSize> publishedSize(const std::filesystem::path& root,
                                         const std::string& locale,
                                         const std::u16string& shortName) {
    const auto ignore = [](const docset::Fault&) {};
    const auto manifest = docset::readManifest(root, ignore);
    if (!manifest)
        return std::nullopt;
    for (const auto& product : manifest->products) {
        const auto files = product.files.find(locale);
        if (product.shortName != shortName || files == product.files.end())
            continue;
        if (const auto lookup = docset::readLookupFile(root, files->second.lookup, ignore))
            return sizeOf(lookup->entities);
    }
    return std::nullopt;
}

std::string shrinkage(const ProductSize& old, const ProductSize& fresh) {
    std::string text;
    if (isFarFewer(fresh.total(), old.total())) {
        std::string kinds;
        for (const auto& [type, count] : old.records) {
            const auto found = fresh.records.find(type);
            const std::size_t left = found != fresh.records.end() ? found->second : 0;
            if (left < count)
                kinds += (kinds.empty() ? "" : ", ") + RefEntityType::enumToString(type) + ": " +
                         change(count, left);
        }
        text = "It would shrink from " + change(old.total(), fresh.total()) + " entries (" + kinds +
               ").";
    }
    if (isFarFewer(fresh.described, old.described))
        text += (text.empty() ? "" : " ") + ("The entries with a description would shrink from " +
                                             change(old.described, fresh.described) + ".");
    return text;
}

}  // namespace reference::tools
