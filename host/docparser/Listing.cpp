#include "docparser/Listing.hpp"

#include <algorithm>
#include <system_error>
#include <utility>

#include "fl/i18n/utf.hpp"

namespace reference::docparser {

namespace fs = std::filesystem;

Listing::Listing(DocumentationLocation location, std::vector<std::shared_ptr<const ListedSet>> sets)
    : m_location(std::move(location)), m_sets(std::move(sets)) {
    for (const auto& set : m_sets)
        addProductsOf(set);
}

const Listing::Product* Listing::find(const std::u16string& shortName) const {
    const auto found = m_numbers.find(shortName);
    return found == m_numbers.end() ? nullptr : &m_products[found->second];
}

std::span<const std::size_t> Listing::productsOfFile(const std::u16string& name) const {
    const auto found = m_numbersByFile.find(name);
    return found == m_numbersByFile.end() ? std::span<const std::size_t>() : found->second;
}

std::optional<Listing::File> Listing::fileNamed(const std::u16string& resourceFile) const {
    const auto named = productsOfFile(resourceFile);
    const Product* product = named.empty() ? find(resourceFile) : &m_products[named.front()];
    if (product != nullptr && !product->files.reference.empty())
        return File{product->set->root, product->files.reference, product->referenceFileName, true};
    const fs::path path(fl::i18n::toUtf8(resourceFile));
    for (const auto& set : m_sets) {
        const fs::path relative = path.is_absolute() ? path.lexically_relative(set->root) : path;
        std::error_code error;
        if (!relative.empty() && *relative.begin() != ".." &&
            fs::is_regular_file(set->root / relative, error))
            return File{set->root, relative.string(), resourceFile, false};
    }
    return std::nullopt;
}

void Listing::addProductsOf(const std::shared_ptr<const ListedSet>& set) {
    const bool fromSupportPackage = set != m_sets.front();
    for (const auto& product : set->manifest.products) {
        const auto locale = product.localeFor(m_location.language, set->manifest.locales);
        if (!locale || find(product.shortName) != nullptr)
            continue;
        const docset::ProductFiles& files = product.files.at(*locale);
        // A relative name is below the documentation root; a support package's files are told
        // apart from it, and from each other, by their whole path.
        std::string name = files.reference;
        if (!name.empty() && fromSupportPackage)
            name = (set->root / files.reference).string();
        std::vector<std::string> locales;
        for (const auto& entry : product.files)
            locales.push_back(entry.first);
        m_numbers.emplace(product.shortName, m_products.size());
        std::u16string fileName = fl::i18n::toUtf16(name);
        m_numbersByFile[fileName].push_back(m_products.size());
        m_products.push_back({.shortName = product.shortName,
                              .installed = product.installed,
                              .set = set,
                              .fromSupportPackage = fromSupportPackage,
                              .locales = std::move(locales),
                              .locale = *locale,
                              .files = files,
                              .referenceFileName = std::move(fileName)});
    }
}

}  // namespace reference::docparser
