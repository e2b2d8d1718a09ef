#pragma once

#include <string>

#include "foundation/core/export.hpp"

namespace zorb {

// An identifier of the object system: a text that the process holds once, so that two are compared
// by their addresses. A plain value; any thread.
class VELTRA_HOST_API Interned {
  public:
    // The empty identifier.
    Interned() noexcept = default;

    // The text; lives as long as the process.
    [[nodiscard]] const std::string& str() const;

    [[nodiscard]] bool empty() const noexcept { return m_text == nullptr; }

    friend bool operator==(const Interned&, const Interned&) = default;

  private:
    friend class InternedTexts;
    explicit Interned(const std::string* text) noexcept : m_text(text) {}

    const std::string* m_text = nullptr;
};

namespace internal {

// The identifier of a name; an empty name gives the empty identifier. Any thread.
[[nodiscard]] VELTRA_HOST_API Interned makeInterned(std::string&& name);

}  // namespace internal
}  // namespace zorb
