#include "docset/Manifest.hpp"

#include <algorithm>
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

// Collects whether anything was reported while a product was read.
class FaultWatch {
  public:
    explicit FaultWatch(const FaultHandler& onFault) : m_onFault(onFault) {}

    [[nodiscard]] FaultHandler handler() {
        return [this](const Fault& fault) {
            ++m_count;
            m_onFault(fault);
        };
    }
    [[nodiscard]] std::size_t count() const noexcept { return m_count; }

  private:
    const FaultHandler& m_onFault;
    std::size_t m_count = 0;
};

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

ManifestProduct readProduct(const JsonNode& node, const std::vector<std::string>& locales) {
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
        if (std::ranges::find(locales, locale) == locales.end()) {
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
    FaultWatch watch(onFault);
    const auto document = JsonDocument::read(root, fileName, watch.handler());
    if (!document)
        return std::nullopt;
    const auto top = document->top(manifestFormat, formatVersion);
    if (!top || !top->isObjectOf({"format", "formatVersion", "title", "locales", "products"}))
        return std::nullopt;

    Manifest manifest;
    manifest.title = fl::i18n::toUtf8(top->textOf("title"));
    const auto locales = top->require("locales");
    const auto products = top->require("products");
    if (!locales || !products)
        return std::nullopt;
    locales->forEachElement([&](const JsonNode& node) {
        const auto locale = node.text();
        if (!locale)
            return;
        if (const auto reason = whyNotALocale(*locale))
            node.fault("\"" + std::string(*locale) + "\" is no locale. " + *reason);
        else if (std::ranges::find(manifest.locales, *locale) != manifest.locales.end())
            node.fault("The locale is listed twice.");
        else
            manifest.locales.emplace_back(*locale);
    });
    if (manifest.locales.empty()) {
        locales->fault("A set has at least one locale.");
        return std::nullopt;
    }
    products->forEachElement([&](const JsonNode& node) {
        const std::size_t faultsBefore = watch.count();
        ManifestProduct product = readProduct(node, manifest.locales);
        const bool repeated = std::ranges::any_of(manifest.products, [&](const auto& other) {
            return other.shortName == product.shortName;
        });
        if (repeated)
            node.fault("The short name \"" + fl::i18n::toUtf8(product.shortName) +
                       "\" occurs twice; each product has its own.");
        if (watch.count() == faultsBefore)
            manifest.products.push_back(std::move(product));
    });
    return manifest;
}

}  // namespace reference::docset
