#pragma once

#include <string>
#include <utility>
#include <vector>

#include "docparser/ProductData.hpp"

namespace reference::docparser {

// A product and the documentation root that its files are in. A plain value.
class ProductPathData : public ProductData {
  public:
    ProductPathData() = default;
    ProductPathData(std::u16string name, std::u16string root)
        : ProductData(std::move(name)), m_root(std::move(root)) {}

    // The reference lives as long as the object.
    [[nodiscard]] const std::u16string& getRoot() const noexcept { return m_root; }

    friend bool operator==(const ProductPathData&, const ProductPathData&) = default;

  private:
    std::u16string m_root;
};

// The products of all documentation roots, installed or not: all of them first, and then those
// among them that support packages brought. Each in the order in which the roots list them.
struct ProductLists {
    std::vector<ProductPathData> products;
    std::vector<ProductPathData> supportPackageProducts;
};

}  // namespace reference::docparser
