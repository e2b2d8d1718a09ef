#pragma once

#include <string>
#include <utility>
#include <vector>

#include "property/ClassProperty.hpp"

namespace reference::property {

// The properties of a class that stand under one heading. A plain value; references from the
// getters stay valid until the object is changed or destroyed.
class ClassPropertyGroup {
  public:
    ClassPropertyGroup() = default;

    // `title` is the heading over the group (empty: none); `properties` in page order.
    ClassPropertyGroup(std::u16string title, std::vector<ClassProperty> properties)
        : m_title(std::move(title)), m_properties(std::move(properties)) {}

    [[nodiscard]] const std::u16string& getTitle() const noexcept { return m_title; }
    [[nodiscard]] const std::vector<ClassProperty>& getClassProperties() const noexcept {
        return m_properties;
    }

    // A deep copy, sharing no storage with this object.
    [[nodiscard]] ClassPropertyGroup copy() const { return *this; }

    friend bool operator==(const ClassPropertyGroup&, const ClassPropertyGroup&) = default;

  private:
    std::u16string m_title;
    std::vector<ClassProperty> m_properties;
};

}  // namespace reference::property
