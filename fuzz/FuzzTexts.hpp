// The texts of inputs that people can read.
#pragma once

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

#include "fl/i18n/utf.hpp"

namespace reference::fuzz {

// The UTF-16 form of what stands in an input: "\uD83D" stands for that unit, so that there can be
// unpaired surrogates, line ends and spaces. Bytes that are not UTF-8 are taken for Latin-1.
[[nodiscard]] inline std::u16string unitsOf(std::string_view bytes) {
    constexpr int hex = 16;
    constexpr std::size_t digits = 4;
    std::u16string text;
    try {
        text = fl::i18n::toUtf16(bytes);
    } catch (const std::invalid_argument&) {
        for (const char byte : bytes)
            text += static_cast<char16_t>(static_cast<unsigned char>(byte));
    }
    for (auto at = text.find(u"\\u"); at != std::u16string::npos; at = text.find(u"\\u", at + 1)) {
        std::string number;
        for (const char16_t unit : text.substr(at + 2, digits))
            number += unit < 0x80 ? static_cast<char>(unit) : ' ';
        std::uint16_t unit = 0;
        const auto [end, error] =
            std::from_chars(number.data(), number.data() + number.size(), unit, hex);
        if (error == std::errc() && number.size() == digits && end == number.data() + digits)
            text.replace(at, 2 + digits, 1, static_cast<char16_t>(unit));
    }
    return text;
}

// The number that a word is; 0 for any other word.
[[nodiscard]] inline std::uint32_t numberOf(std::string_view word) {
    std::uint32_t number = 0;
    std::from_chars(word.data(), word.data() + word.size(), number);
    return number;
}

[[nodiscard]] inline bool isUtf8(std::string_view text) {
    try {
        static_cast<void>(fl::i18n::toUtf16(text));
        return true;
    } catch (const std::invalid_argument&) {
        return false;
    }
}

}  // namespace reference::fuzz
