#pragma once

#include <string>
#include <utility>

namespace reference::property {

// A named setting of a block, an app or a command, with the value it has until it is changed. A
// plain value; references from the getters stay valid until the object is changed or destroyed.
class Parameter {
  public:
    Parameter() = default;

    // `defaultValue` as it would be typed; empty where the page names none.
    Parameter(std::u16string name, std::u16string purpose, std::u16string defaultValue)
        : m_name(std::move(name)),
          m_purpose(std::move(purpose)),
          m_defaultValue(std::move(defaultValue)) {}

    [[nodiscard]] const std::u16string& getName() const noexcept { return m_name; }
    [[nodiscard]] const std::u16string& getPurpose() const noexcept { return m_purpose; }
    [[nodiscard]] const std::u16string& getDefaultValue() const noexcept { return m_defaultValue; }

    // A deep copy, sharing no storage with this object.
    [[nodiscard]] Parameter copy() const { return *this; }

    friend bool operator==(const Parameter&, const Parameter&) = default;

  private:
    std::u16string m_name;
    std::u16string m_purpose;
    std::u16string m_defaultValue;
};

}  // namespace reference::property
