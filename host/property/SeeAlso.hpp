#pragma once

#include <string>
#include <utility>

namespace reference::property {

// A pointer to a related entity. A plain value; references from the getters stay valid until the
// object is changed or destroyed.
class SeeAlso {
  public:
    SeeAlso() = default;

    // `page` is where it is documented (empty: unknown), `name` what the reader sees.
    SeeAlso(std::u16string page, std::u16string name)
        : m_page(std::move(page)), m_name(std::move(name)) {}

    [[nodiscard]] const std::u16string& getPage() const noexcept { return m_page; }
    [[nodiscard]] const std::u16string& getName() const noexcept { return m_name; }

    // A deep copy, sharing no storage with this object.
    [[nodiscard]] SeeAlso copy() const { return *this; }

    friend bool operator==(const SeeAlso&, const SeeAlso&) = default;

  private:
    std::u16string m_page;
    std::u16string m_name;
};

}  // namespace reference::property
