#pragma once

#include <string>
#include <utility>

#include "property/FunctionType.hpp"
#include "property/RefEntityType.hpp"

namespace reference::property {

// One documented name and what kind of thing it names. An item carries several when one page
// documents several names together. A plain value; references from the getters stay valid until the
// object is changed or destroyed.
class RefEntity {
  public:
    // An entity of type Unknown with an empty name.
    RefEntity() = default;

    // `name` is the qualified name ("pkg.Class.method").
    RefEntity(RefEntityType::Value type, std::u16string name, FunctionType::Value functionType)
        : m_type(type), m_functionType(functionType), m_name(std::move(name)) {}

    [[nodiscard]] RefEntityType::Value getRefEntityType() const noexcept { return m_type; }
    [[nodiscard]] const std::u16string& getName() const noexcept { return m_name; }
    [[nodiscard]] FunctionType::Value getFunctionType() const noexcept { return m_functionType; }

    // A deep copy, sharing no storage with this object.
    [[nodiscard]] RefEntity copy() const { return *this; }

    friend bool operator==(const RefEntity&, const RefEntity&) = default;

  private:
    RefEntityType::Value m_type = RefEntityType::Unknown;
    FunctionType::Value m_functionType = FunctionType::NotCallable;
    std::u16string m_name;
};

}  // namespace reference::property
