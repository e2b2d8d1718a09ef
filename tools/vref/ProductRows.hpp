#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include <boost/json/array.hpp>

#include "vref/Documentation.hpp"

namespace reference::tools {

// What is told of a product. UTF-8.
struct ProductRow {
    std::string product;
    std::string displayName;
    std::string version;
    std::string state;  // "installed", "not installed" or "unreadable"
    std::string locale;
    std::size_t entities = 0;
    std::size_t pages = 0;
};

// All products that the documentation lists, in its order. Loads the lookup files if they are not
// loaded; throws what that throws.
[[nodiscard]] std::vector<ProductRow> productRows(const Documentation& documentation);

// The rows as programs read them.
[[nodiscard]] boost::json::array toJson(std::span<const ProductRow> rows);

}  // namespace reference::tools
