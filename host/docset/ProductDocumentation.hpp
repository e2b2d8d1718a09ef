#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "docimage/Aliases.hpp"
#include "docset/ProductSource.hpp"
#include "property/RefItem.hpp"
#include "property/RefItemLookup.hpp"

namespace reference::docset {

// How a product names itself. All texts UTF-16.
struct ProductHeader {
    // The product's key within a documentation set; never empty.
    std::u16string shortName;
    // What a reader sees.
    std::u16string displayName;
    // The folder of the product's pages below the help root, without a slash at the end.
    std::u16string helpFolder;
    // As the product writes it; may be empty.
    std::u16string version;

    friend bool operator==(const ProductHeader&, const ProductHeader&) = default;
};

// The whole documentation of one product in one locale, as an importer gathers it and a
// documentation set stores it. A plain value.
struct ProductDocumentation {
    ProductHeader header;

    // Qualified entity name to its lookup records, in the order in which the documentation has
    // them.
    std::map<std::u16string, std::vector<property::RefItemLookup>> entities;

    // Href to the items filed under it, in page order. Every href of `entities` is a key here, and
    // every item carries its key as its href.
    std::map<std::u16string, std::vector<property::RefItem>> pages;

    // What the product's examples call modules and classes. Names are identifiers, see
    // AliasFile.hpp, where their number has a limit, too.
    docimage::Aliases aliases = {};

    // Where this was imported from; nothing for documentation that was not imported.
    std::optional<ProductSource> source = std::nullopt;

    friend bool operator==(const ProductDocumentation&, const ProductDocumentation&) = default;
};

}  // namespace reference::docset
