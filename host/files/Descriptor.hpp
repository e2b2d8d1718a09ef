#pragma once

#include <utility>

#include "foundation/core/export.hpp"

namespace reference::files {

// A file descriptor that closes itself. Moved, not copied: one owner closes.
class VELTRA_HOST_API Descriptor {
  public:
    // Owns nothing.
    Descriptor() = default;

    // Owns `number`; a negative one, as open(2) returns on failure, is no descriptor.
    explicit Descriptor(int number) noexcept : m_number(number) {}

    Descriptor(Descriptor&& other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(m_number, other.m_number);
        return *this;
    }
    ~Descriptor();

    [[nodiscard]] bool isOpen() const noexcept { return m_number >= 0; }

    // Borrowed: valid as long as this object owns it.
    [[nodiscard]] int number() const noexcept { return m_number; }

  private:
    int m_number = -1;
};

}  // namespace reference::files
