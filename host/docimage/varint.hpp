// Numbers in as few bytes as they need: seven bits a byte, the lowest first, the top bit set on all
// bytes but the last.
#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>

#include "docimage/Image.hpp"

namespace reference::docimage {

inline void appendVarint(std::uint32_t number, std::string& bytes) {
    for (; number >= 0x80U; number >>= 7U)
        bytes += static_cast<char>(static_cast<unsigned char>(number | 0x80U));
    bytes += static_cast<char>(static_cast<unsigned char>(number));
}

// Takes a number from the front of `bytes`. Throws DamagedImage where there is none.
[[nodiscard]] inline std::uint32_t takeVarint(std::string_view& bytes) {
    std::uint32_t number = 0;
    for (unsigned shift = 0; shift < 32; shift += 7) {
        if (bytes.empty())
            break;
        const auto byte = static_cast<unsigned char>(bytes.front());
        bytes.remove_prefix(1);
        number |= (byte & 0x7FU) << shift;
        if (byte < 0x80U)
            return number;
    }
    throw DamagedImage("A number in an image is not ended.");
}

// Calls `visit(number)`; whether it wants another number: one that returns nothing wants all.
template <typename Visit>
bool wantsMore(Visit& visit, std::uint32_t number) {
    if constexpr (std::is_void_v<decltype(visit(number))>) {
        visit(number);
        return true;
    } else {
        return visit(number);
    }
}

// Ascending numbers as the differences between them. A visit that returns false is the last.
template <typename Visit>
void forEachNumber(std::string_view deltas, Visit visit) {
    std::uint32_t number = 0;
    while (!deltas.empty()) {
        const std::uint32_t delta = takeVarint(deltas);
        if (delta > std::numeric_limits<std::uint32_t>::max() - number)
            throw DamagedImage("Numbers in an image do not ascend.");
        number += delta;
        if (!wantsMore(visit, number))
            return;
    }
}

}  // namespace reference::docimage
