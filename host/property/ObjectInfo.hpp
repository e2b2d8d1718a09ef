#pragma once

#include <string>
#include <vector>

#include "foundation/core/export.hpp"

namespace reference::property {

// What the documentation says of one named part of an entity: an input, an output, a property of a
// class. All texts are UTF-16 and may be empty where the page says nothing.
//
// A plain value: separate objects may be used from separate threads, one object may be read from
// many. References that the getters return stay valid until the object is changed or destroyed.
class VELTRA_HOST_API ObjectInfo {
  public:
    ObjectInfo() = default;

    // `name` is the part's own, unqualified name; `purpose` its explanation; `href` where it is
    // documented, relative to the product's help folder (empty: only on its owner's page);
    // `values` the classifiers and allowed values that the page lists, in its order.
    ObjectInfo(std::u16string name, std::u16string purpose, std::u16string href,
               std::vector<std::u16string> values);

    [[nodiscard]] const std::u16string& getName() const noexcept { return m_name; }
    [[nodiscard]] const std::u16string& getPurpose() const noexcept { return m_purpose; }
    [[nodiscard]] const std::u16string& getHref() const noexcept { return m_href; }
    [[nodiscard]] const std::vector<std::u16string>& getValues() const noexcept { return m_values; }

    // A deep copy, sharing no storage with this object.
    [[nodiscard]] ObjectInfo copy() const { return *this; }

    friend bool operator==(const ObjectInfo&, const ObjectInfo&) = default;

  private:
    std::u16string m_name;
    std::u16string m_purpose;
    std::u16string m_href;
    std::vector<std::u16string> m_values;
};

}  // namespace reference::property
