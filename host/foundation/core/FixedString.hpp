#pragma once

#include <algorithm>
#include <cstddef>

namespace foundation::core {

// A text that can be a template's argument.
template <std::size_t Size>
struct FixedString {
    constexpr FixedString(const char (&literal)[Size]) { std::copy_n(literal, Size, text); }

    char text[Size] = {};
};

}  // namespace foundation::core
