#pragma once

#include "vq/vqArray.hpp"

namespace reference::utils {

// A native enumeration field that is also a property of the scripting language, such as the letter
// case setting of a request.
//
// The host form is made once and kept: setting the native value leaves it alone, so that a script
// sees what it last read or set, until a script sets another value. Copies share it. Because
// reading the property fills it in, reading counts as a change: one thread at a time.
//
// Value is EntityCaseSensitivity::Value, EntityPrecision::Value or RefEntityType::Value.
template <typename Value>
class EnumerationProperty {
  public:
    explicit EnumerationProperty(Value value) noexcept : m_value(value) {}

    [[nodiscard]] Value get() const noexcept { return m_value; }
    // Any 32-bit number is stored as it is.
    void set(Value value) noexcept { m_value = value; }

    // An array that holds one member of the enumeration. It is valid until this object is changed
    // or destroyed.
    [[nodiscard]] const vqArray* getProperty() const;

    // Takes over one member or number, also a member of another enumeration: a number that has no
    // name here may have one in scripts. Returns whether there was a value: null is ignored. Throws
    // "VELTRA:class:RequireScalar" unless there is exactly one element, and
    // "VELTRA:class:RequireNumeric" for an element that is no number; nothing is changed then.
    bool setProperty(const vqArray* given);

  private:
    Value m_value;
    mutable vqArrayPtr m_cache;  // null until the property is first read or set
};

}  // namespace reference::utils
