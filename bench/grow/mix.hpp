#pragma once

#include <cstdint>
#include <string_view>

namespace reference::bench {

// Random numbers that depend on what they are drawn for and on nothing else.

// Scatters the bits of a number: the finishing step of the generator "splitmix64".
[[nodiscard]] constexpr std::uint64_t mix(std::uint64_t number) {
    number += 0x9E3779B97F4A7C15U;
    number = (number ^ (number >> 30U)) * 0xBF58476D1CE4E5B9U;
    number = (number ^ (number >> 27U)) * 0x94D049BB133111EBU;
    return number ^ (number >> 31U);
}

// The hash FNV-1a, which is the same on every machine.
[[nodiscard]] constexpr std::uint64_t hashOf(std::string_view text) {
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const char byte : text)
        hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3U;
    return hash;
}

// From 0 up to but not including 1.
[[nodiscard]] constexpr double fraction(std::uint64_t number) {
    return static_cast<double>(number >> 11U) * 0x1.0p-53;
}

}  // namespace reference::bench
