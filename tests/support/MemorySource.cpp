#include "support/MemorySource.hpp"

#include <memory>
#include <utility>

#include "docparser/DocParserException.hpp"
#include "fl/i18n/utf.hpp"

namespace reference::tests {

void MemorySource::add(docset::ProductDocumentation product, bool installed) {
    const std::u16string name = product.header.shortName;
    Product& entry = m_products[name];
    entry.documentation = std::move(product);
    entry.referenceFileName = name + u".ref";
    entry.installed = installed;
}

void MemorySource::shareFile(const std::u16string& product,
                             const std::u16string& referenceFileName) {
    m_products.at(product).referenceFileName = referenceFileName;
}

void MemorySource::onResourceFile(std::function<void(const std::u16string&)> hook) {
    m_onResourceFile = std::move(hook);
}

void MemorySource::onLookupFiles(std::function<void()> hook) {
    m_onLookupFiles = std::move(hook);
}

property::HeaderInfo MemorySource::headerOf(const Product& product) {
    const auto& header = product.documentation.header;
    return {product.referenceFileName, header.helpFolder, header.shortName, header.displayName,
            header.version};
}

// Aliases are handed over as a part of an image alone.
docparser::DocResource<property::RefItemLookup> MemorySource::lookupOf(const Product& product) {
    const auto& documentation = product.documentation;
    if (documentation.aliases.empty())
        return {headerOf(product), documentation.entities};
    return {headerOf(product), std::make_shared<const docimage::LookupImage>(
                                   documentation.entities, documentation.aliases)};
}

docparser::ParsingResults MemorySource::getResourceLookupFiles() {
    ++m_lookupCalls;
    if (m_onLookupFiles)
        m_onLookupFiles();
    docparser::ParsingResults results;
    for (const auto& [name, product] : m_products)
        (product.installed ? results.installed : results.uninstalled)
            .emplace(name, lookupOf(product));
    return results;
}

docparser::ReferenceResources MemorySource::getResourceFile(const std::u16string& resourceFile) {
    ++m_resourceCalls;
    if (m_onResourceFile)
        m_onResourceFile(resourceFile);
    const auto named = m_products.find(resourceFile);
    const std::u16string file =
        named == m_products.end() ? resourceFile : named->second.referenceFileName;
    docparser::ReferenceResources resources;
    for (const auto& [name, product] : m_products)
        if (product.referenceFileName == file)
            resources.emplace(name, docparser::DocResource<property::RefItem>(
                                        headerOf(product), product.documentation.pages));
    if (resources.empty())
        throw docparser::DocParserException("there is no file " + fl::i18n::toUtf8(resourceFile));
    return resources;
}

docparser::ReferenceRoots MemorySource::getReferenceRoots() {
    return {.docRoot = u"memory:", .supportPackageRoots = {}};
}

std::vector<std::u16string> MemorySource::getSupportedDocLocales() {
    return {u"en_US"};
}

docparser::ProductLists MemorySource::getAllProducts(const std::u16string& docRoot,
                                                     const std::vector<std::u16string>& /*locales*/,
                                                     const std::u16string& locale) {
    m_lastLocale = locale;
    docparser::ProductLists lists;
    for (const auto& [name, product] : m_products)
        lists.products.emplace_back(name, docRoot);
    return lists;
}

bool MemorySource::isProductInstalled(const std::u16string& product) {
    const auto found = m_products.find(product);
    return found != m_products.end() && found->second.installed;
}

void MemorySource::clearSupportPackageCaches() {
    ++m_clearCalls;
}

}  // namespace reference::tests
