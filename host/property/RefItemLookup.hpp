#pragma once

#include <string>
#include <utility>

#include "property/FunctionType.hpp"
#include "property/RefEntityType.hpp"

namespace reference::property {

// What a product's lookup file says of one entity: enough to decide whether its page is wanted
// without reading the page. The entity's name is the key under which the record is filed. A plain
// value; references from the getters stay valid until the object is changed or destroyed.
class RefItemLookup {
  public:
    // A record of type Unknown with empty texts.
    RefItemLookup() = default;

    // `href` is the key of the entity's items in the product's reference file; `purpose` is the
    // one-sentence summary (may be empty).
    RefItemLookup(RefEntityType::Value type, FunctionType::Value functionType, std::u16string href,
                  std::u16string purpose)
        : m_type(type),
          m_functionType(functionType),
          m_href(std::move(href)),
          m_purpose(std::move(purpose)) {}

    [[nodiscard]] RefEntityType::Value getType() const noexcept { return m_type; }
    [[nodiscard]] FunctionType::Value getFunctionType() const noexcept { return m_functionType; }
    [[nodiscard]] const std::u16string& getHref() const noexcept { return m_href; }
    [[nodiscard]] const std::u16string& getPurpose() const noexcept { return m_purpose; }

    // A deep copy, sharing no storage with this object.
    [[nodiscard]] RefItemLookup copy() const { return *this; }

    friend bool operator==(const RefItemLookup&, const RefItemLookup&) = default;

  private:
    RefEntityType::Value m_type = RefEntityType::Unknown;
    FunctionType::Value m_functionType = FunctionType::NotCallable;
    std::u16string m_href;
    std::u16string m_purpose;
};

}  // namespace reference::property
