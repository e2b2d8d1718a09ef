#pragma once

#include <string>

namespace reference::docset {

// Where the documentation of a product in one locale was imported from, and by what. All texts
// UTF-8. A plain value.
struct ProductSource {
    // The folder that was imported, as an absolute path: the product's hrefs are relative to it.
    // The folder may be gone, or be on another machine.
    std::string folder;
    // The importer, by the name that `vref import` knows it by ("sphinx"); never empty.
    std::string importer;
    // The importer's version; may be empty.
    std::string importerVersion;

    friend bool operator==(const ProductSource&, const ProductSource&) = default;
};

}  // namespace reference::docset
