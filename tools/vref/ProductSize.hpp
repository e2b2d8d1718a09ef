#pragma once

#include <cstddef>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "property/RefEntityType.hpp"
#include "property/RefItemLookup.hpp"

namespace reference::tools {

// How much a product documents, to detect an import that finds too little. A plain value.
struct ProductSize {
    // Lookup records by kind.
    std::map<property::RefEntityType::Value, std::size_t> records;
    // How many of them have a purpose: those whose description was found.
    std::size_t described = 0;

    [[nodiscard]] std::size_t total() const;
};

[[nodiscard]] ProductSize sizeOf(
    const std::map<std::u16string, std::vector<property::RefItemLookup>>& entities);

// What the set at `root` has of the product in `locale`; nothing if it has none, or nothing that
// can be read, since there is then nothing to lose.
[[nodiscard]] std::optional<ProductSize> publishedSize(const std::filesystem::path& root,
                                                       const std::string& locale,
                                                       const std::u16string& shortName);

// What is lost when `fresh` replaces `old`, as a sentence: "It would shrink from 313 to 12 entries
// (function: 280 to 9, class: 33 to 3)." Empty if the loss is no more than an ordinary release's:
// up to a quarter of the entries, and of those with a description.
[[nodiscard]] std::string shrinkage(const ProductSize& old, const ProductSize& fresh);

}  // namespace reference::tools
