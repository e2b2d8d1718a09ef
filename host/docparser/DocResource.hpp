#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "property/HeaderInfo.hpp"

namespace reference::docparser {

// A parsed documentation file, or one product's share of it: the product's header and records of
// type T by key. For lookup records the key is an entity's qualified name, for items it is an href.
// A plain value: many threads may read one object, but none may use it while another changes it.
template <typename T>
class DocResource {
  public:
    using ItemMap = std::map<std::u16string, std::vector<T>>;

    DocResource() = default;
    DocResource(property::HeaderInfo header, ItemMap items)
        : m_header(std::move(header)), m_items(std::move(items)) {}

    // References are valid until the object is changed or destroyed.
    [[nodiscard]] const property::HeaderInfo& getHeaderInfo() const noexcept { return m_header; }
    [[nodiscard]] const ItemMap& getItems() const noexcept { return m_items; }

    // Takes the records out without copying any; the object is left with none.
    [[nodiscard]] ItemMap takeItems() noexcept { return std::exchange(m_items, {}); }

    friend bool operator==(const DocResource&, const DocResource&) = default;

  private:
    property::HeaderInfo m_header;
    ItemMap m_items;
};

}  // namespace reference::docparser
