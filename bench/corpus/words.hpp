#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include <unicode/uchar.h>

namespace reference::bench {

// Takes the first character off a well-formed UTF-8 text that is not empty.
[[nodiscard]] inline char32_t takeCharacter(std::string_view& text) {
    const auto byteAt = [&](std::size_t n) {
        return static_cast<char32_t>(static_cast<unsigned char>(text[n]));
    };
    const char32_t first = byteAt(0);
    const std::size_t length = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    char32_t character = length == 1 ? first : first & (0x7FU >> length);
    for (std::size_t n = 1; n < length; ++n)
        character = (character << 6U) | (byteAt(n) & 0x3FU);
    text.remove_prefix(length);
    return character;
}

// Letters, digits and the marks on them. This is what SQLite's tokenizer "unicode61" makes words
// of, so that the word indexes that we fill ourselves know the same words.
[[nodiscard]] inline bool isWordCharacter(char32_t character) {
    if (character < 0x80)
        return (character >= U'a' && character <= U'z') ||
               (character >= U'0' && character <= U'9') || (character >= U'A' && character <= U'Z');
    constexpr std::uint32_t kinds = U_GC_L_MASK | U_GC_N_MASK | U_GC_M_MASK | U_GC_CO_MASK;
    return (U_GET_GC_MASK(static_cast<UChar32>(character)) & kinds) != 0;
}

// Calls `found` with each word of the UTF-8 text, in order, until it returns false.
template <typename Found>
void forEachWord(std::string_view text, Found found) {
    const char* word = nullptr;
    while (!text.empty()) {
        const char* const here = text.data();
        if (isWordCharacter(takeCharacter(text))) {
            if (word == nullptr)
                word = here;
        } else if (word != nullptr) {
            if (!found(std::string_view(word, static_cast<std::size_t>(here - word))))
                return;
            word = nullptr;
        }
    }
    if (word != nullptr)
        found(std::string_view(word, static_cast<std::size_t>(text.data() - word)));
}

}  // namespace reference::bench
