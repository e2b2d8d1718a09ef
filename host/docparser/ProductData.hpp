#pragma once

#include <string>
#include <utility>

namespace reference::docparser {

// A product that documentation is known for. A plain value; the reference lives as long as it.
class ProductData {
  public:
    ProductData() = default;
    explicit ProductData(std::u16string name) : m_name(std::move(name)) {}

    // The product's short name.
    [[nodiscard]] const std::u16string& getName() const noexcept { return m_name; }

    friend bool operator==(const ProductData&, const ProductData&) = default;

  private:
    std::u16string m_name;
};

}  // namespace reference::docparser
