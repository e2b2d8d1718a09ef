#pragma once

#include <string>
#include <utility>

namespace reference::property {

// A worked example. A plain value; references from the getters stay valid until the object is
// changed or destroyed.
class Example {
  public:
    Example() = default;

    // `title` says what it shows (may be empty); `code` as it is typed, lines separated by line
    // feeds.
    Example(std::u16string title, std::u16string code)
        : m_title(std::move(title)), m_code(std::move(code)) {}

    [[nodiscard]] const std::u16string& getTitle() const noexcept { return m_title; }
    [[nodiscard]] const std::u16string& getCode() const noexcept { return m_code; }

    // A deep copy, sharing no storage with this object.
    [[nodiscard]] Example copy() const { return *this; }

    friend bool operator==(const Example&, const Example&) = default;

  private:
    std::u16string m_title;
    std::u16string m_code;
};

}  // namespace reference::property
