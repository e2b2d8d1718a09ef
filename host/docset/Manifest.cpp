#include "docset/Manifest.hpp"

#include <algorithm>
#include <functional>
#include <set>
#include <string_view>
#include <utility>

#include "docset/ContainedFile.hpp"
#include "docset/Formats.hpp"
#include "docset/JsonDocument.hpp"
#include "docset/ManifestFile.hpp"
#include "docset/SetNames.hpp"
#include "fl/i18n/utf.hpp"

namespace reference::docset {
namespace {

// CLDR knows about 700. Each product is looked for in each of them.
constexpr std::size_t maxLocales = 1000;

using Locales = std::set<std::string, std::less<>>;

std::string readFileName(const JsonNode& files, std::string_view member) {
    const auto node = files.find(member);
    const auto text = node ? node->text() : std::nullopt;
    if (!text)
        return {};
    if (const auto reason = whyNotContained(*text)) {
        node->fault(*reason);
        return {};
    }
    return std::string(*text);
}

bool isSourceFolder(std::string_view folder) {
    return folder.starts_with('/') && folder.find('\0') == std::string_view::npos;
}

std::optional<ProductSource> readSource(const JsonNode& files) {
    const auto node = files.find("source");
    if (!node || !node->isObjectOf({"folder", "importer", "importerVersion"}))
        return std::nullopt;
    ProductSource source;
    if (const auto folder = node->require("folder")) {
        source.folder = std::string(folder->text().value_or(""));
        if (folder->isText() && !isSourceFolder(source.folder))
            folder->fault("The folder must be an absolute path, such as /usr/share/doc/demo/html.");
    }
    source.importer = fl::i18n::toUtf8(node->requiredTextOf("importer", false));
    source.importerVersion = fl::i18n::toUtf8(node->textOf("importerVersion"));
    return source;
}

ManifestProduct readProduct(const JsonNode& node, const Locales& locales) {
    ManifestProduct product;
    if (!node.isObjectOf({"shortName", "installed", "files"}))
        return product;
    product.shortName = node.requiredTextOf("shortName", false);
    if (const auto installed = node.require("installed"))
        product.installed = installed->boolean().value_or(false);
    const auto files = node.require("files");
    if (!files)
        return product;
    files->forEachMember([&](std::string_view locale, const JsonNode& entry) {
        if (!locales.contains(locale)) {
            entry.fault("The locale is not among the set's \"locales\".");
            return;
        }
        if (!entry.isObjectOf({"lookup", "reference", "source"}) || !entry.require("lookup"))
            return;
        if (product.installed && !entry.require("reference"))
            return;
        product.files.emplace(locale, ProductFiles{.lookup = readFileName(entry, "lookup"),
                                                   .reference = readFileName(entry, "reference"),
                                                   .source = readSource(entry)});
    });
    if (product.files.empty())
        files->fault("No locale is named; a product has the files of at least one.");
    return product;
}

// The locales of a set, in order.
std::vector<std::string> readLocales(const JsonNode& list) {
    std::vector<std::string> locales;
    Locales seen;
    list.forEachElement([&](const JsonNode& node) {
        const auto locale = node.text();
        if (!locale)
            return;
        if (const auto reason = whyNotALocale(*locale))
            node.fault("\"" + shortened(*locale) + "\" is no locale. " + *reason);
        else if (!seen.emplace(*locale).second)
            node.fault("The locale is listed twice.");
        else if (seen.size() == maxLocales + 1)
            list.fault("A set has up to " + std::to_string(maxLocales) +
                       " locales; the others are left out.");
        else if (seen.size() <= maxLocales)
            locales.emplace_back(*locale);
    });
    if (locales.empty())
        list.fault("A set has at least one locale.");
    return locales;
}

std::optional<Manifest> manifestOf(const JsonDocument& document) {
    const auto top = document.top(manifestFormat, formatVersion);
    if (!top || !top->isObjectOf({"format", "formatVersion", "title", "locales", "products"}))
        return std::nullopt;

    Manifest manifest;
    manifest.title = fl::i18n::toUtf8(top->textOf("title"));
    const auto locales = top->require("locales");
    const auto products = top->require("products");
    if (!locales || !products)
        return std::nullopt;
    manifest.locales = readLocales(*locales);
    if (manifest.locales.empty())
        return std::nullopt;
    const Locales known(manifest.locales.begin(), manifest.locales.end());
    std::set<std::u16string> shortNames;
    products->forEachElement([&](const JsonNode& node) {
        const std::size_t faultsBefore = document.faultCount();
        ManifestProduct product = readProduct(node, known);
        if (shortNames.contains(product.shortName))
            node.fault("The short name \"" + shortened(fl::i18n::toUtf8(product.shortName)) +
                       "\" occurs twice; each product has its own.");
        if (document.faultCount() != faultsBefore)
            return;
        shortNames.insert(product.shortName);
        manifest.products.push_back(std::move(product));
    });
    return manifest;
}

}  // namespace

std::optional<std::string> ManifestProduct::localeFor(
    const std::string& wanted, const std::vector<std::string>& locales) const {
    if (files.contains(wanted))
        return wanted;
    const auto found = std::ranges::find_if(
        locales, [this](const std::string& locale) { return files.contains(locale); });
    return found == locales.end() ? std::nullopt : std::optional(*found);
}

std::optional<Manifest> readManifest(const std::filesystem::path& root,
                                     const FaultHandler& onFault) {
    const auto folder = openRoot(root, manifestFileName, onFault);
    return folder ? readManifestFile(*folder, manifestFileName, onFault) : std::nullopt;
}

std::optional<Manifest> readManifestFile(const files::Folder& root, const std::string& fileName,
                                         const FaultHandler& onFault) {
    return JsonDocument::readAs(root, fileName, onFault, &manifestOf);
}

}  // namespace reference::docset
