// Finds the words that are spelt nearly like another. Internal: no public header includes it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "docimage/Lexicon.hpp"

namespace reference::ask {

struct NearWord {
    std::uint32_t word;  // its number in the lexicon
    std::uint32_t slips;
};

// How many slips are taken for a slip in a word of this length: none in a short one, where each
// turns it into another word.
[[nodiscard]] constexpr std::uint32_t admittedSlips(std::size_t length) noexcept {
    constexpr std::size_t shortWord = 4;
    constexpr std::size_t longWord = 8;
    return length < shortWord ? 0 : length < longWord ? 1 : 2;
}

// The words of a lexicon that are at most `most` slips away from `word`, but for the word itself,
// in the order of their texts. A slip is a missing, a foreign, or a wrong byte, or two neighbours
// exchanged.
[[nodiscard]] std::vector<NearWord> nearWords(const docimage::Lexicon& lexicon,
                                              std::string_view word, std::uint32_t most);

// The slips between two words, or more than `most`.
[[nodiscard]] std::uint32_t slipsBetween(std::string_view a, std::string_view b,
                                         std::uint32_t most);

}  // namespace reference::ask
