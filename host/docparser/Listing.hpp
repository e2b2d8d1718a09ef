// The documentation sets in force. Internal: no public header includes it.
#pragma once

#include <cstddef>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "docparser/FileDocSource.hpp"
#include "docset/Manifest.hpp"

namespace reference::docparser {

// One documentation set, as its manifest described it when it was read.
struct ListedSet {
    std::filesystem::path root;
    docset::Manifest manifest;
};

// All sets in force, and which file each product is read from. Never changes once made.
class Listing {
  public:
    struct Product {
        std::u16string shortName;
        bool installed;
        std::shared_ptr<const ListedSet> set;
        bool fromSupportPackage;
        std::vector<std::string> locales;  // that the product has
        std::string locale;                // that the product is read in
        docset::ProductFiles files;        // in that locale
        std::u16string referenceFileName;
    };

    // A reference file and what getResourceFile calls it.
    struct File {
        std::filesystem::path root;
        std::string relativePath;
        std::u16string name;
        // Whether products are read from it now; if not, it is of an earlier edition or language.
        bool inUse;
    };

    // `sets` begins with the documentation root's.
    Listing(DocumentationLocation location, std::vector<std::shared_ptr<const ListedSet>> sets);

    [[nodiscard]] const DocumentationLocation& location() const noexcept { return m_location; }
    [[nodiscard]] const std::vector<std::shared_ptr<const ListedSet>>& sets() const noexcept {
        return m_sets;
    }
    [[nodiscard]] const std::vector<Product>& products() const noexcept { return m_products; }

    // Null for a product that is not listed.
    [[nodiscard]] const Product* find(const std::u16string& shortName) const;

    // The products that are read from the reference file of this name, by number.
    [[nodiscard]] std::span<const std::size_t> productsOfFile(const std::u16string& name) const;

    // The file that `resourceFile` names: a reference file in use, else the file of the product of
    // that short name, else any file of that name below one of the roots. Readers of the previous
    // edition still ask for files that are no longer in use.
    [[nodiscard]] std::optional<File> fileNamed(const std::u16string& resourceFile) const;

  private:
    void addProductsOf(const std::shared_ptr<const ListedSet>& set);

    DocumentationLocation m_location;
    std::vector<std::shared_ptr<const ListedSet>> m_sets;
    std::vector<Product> m_products;
    // The products' numbers by short name, and by the name of the reference file that they are read
    // from.
    std::map<std::u16string, std::size_t> m_numbers;
    std::map<std::u16string, std::vector<std::size_t>> m_numbersByFile;
};

}  // namespace reference::docparser
