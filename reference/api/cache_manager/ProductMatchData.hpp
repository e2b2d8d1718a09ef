#pragma once

#include <set>
#include <string>

namespace reference::cache_manager {

// Where one product documents what was asked for. A plain value.
struct ProductMatchData {
    // What the product's items are fetched by.
    std::u16string referenceFileName;
    // The matching pages, each once.
    std::set<std::u16string> hrefs;

    friend bool operator==(const ProductMatchData&, const ProductMatchData&) = default;
};

}  // namespace reference::cache_manager
