// Letters of ASCII in the bytes of a text (see docimage/unitBytes.hpp): nearly all names are made
// of these alone, and need no look at Unicode's tables. Internal: no public header includes it.
#pragma once

#include <algorithm>
#include <string_view>

namespace reference::ask {

[[nodiscard]] inline bool isAscii(std::string_view bytes) noexcept {
    return std::ranges::all_of(bytes,
                               [](char byte) { return static_cast<signed char>(byte) >= 0; });
}

[[nodiscard]] constexpr char lowerByte(char byte) noexcept {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + ('a' - 'A')) : byte;
}

[[nodiscard]] constexpr char upperByte(char byte) noexcept {
    return byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - ('a' - 'A')) : byte;
}

}  // namespace reference::ask
