#pragma once

#include <string>
#include <utility>
#include <vector>

namespace reference::property {

// The ways to write a call that stand under one heading. A plain value; references from the getters
// stay valid until the object is changed or destroyed.
class SyntaxGroup {
  public:
    SyntaxGroup() = default;

    // `title` is the heading over the group (empty: none); `syntaxes` in page order.
    SyntaxGroup(std::u16string title, std::vector<std::u16string> syntaxes)
        : m_title(std::move(title)), m_syntaxes(std::move(syntaxes)) {}

    [[nodiscard]] const std::u16string& getTitle() const noexcept { return m_title; }
    [[nodiscard]] const std::vector<std::u16string>& getSyntaxes() const noexcept {
        return m_syntaxes;
    }

    // A deep copy, sharing no storage with this object.
    [[nodiscard]] SyntaxGroup copy() const { return *this; }

    friend bool operator==(const SyntaxGroup&, const SyntaxGroup&) = default;

  private:
    std::u16string m_title;
    std::vector<std::u16string> m_syntaxes;
};

}  // namespace reference::property
