#pragma once

#include <string>
#include <utility>
#include <vector>

#include "property/Input.hpp"

namespace reference::property {

// The inputs that stand under one heading. A plain value; references from the getters stay valid
// until the object is changed or destroyed.
class InputGroup {
  public:
    InputGroup() = default;

    // `title` is the heading over the group (empty: none); `inputs` in page order.
    InputGroup(std::u16string title, std::vector<Input> inputs)
        : m_title(std::move(title)), m_inputs(std::move(inputs)) {}

    [[nodiscard]] const std::u16string& getTitle() const noexcept { return m_title; }
    [[nodiscard]] const std::vector<Input>& getInputs() const noexcept { return m_inputs; }

    // A deep copy, sharing no storage with this object.
    [[nodiscard]] InputGroup copy() const { return *this; }

    friend bool operator==(const InputGroup&, const InputGroup&) = default;

  private:
    std::u16string m_title;
    std::vector<Input> m_inputs;
};

}  // namespace reference::property
