#include "grow/Vocabulary.hpp"

#include <algorithm>
#include <cmath>

#include "grow/mix.hpp"

namespace reference::bench {
namespace {

// Only words that less than one in a thousand items has are spelt anew: texts everywhere share
// their frequent words. Short words would turn into each other.
constexpr std::size_t rarity = 1000;
constexpr std::size_t shortest = 4;

// Letters as often as English has them, more or less.
constexpr std::string_view consonants = "bccddfgghklllmmnnnnpprrrrssssttttvw";
constexpr std::string_view vowels = "aaaeeeeeiiiooou";

std::string newWord(std::uint64_t number, std::size_t length) {
    std::string word;
    for (std::size_t n = 0; n < length; ++n) {
        number = mix(number);
        const std::string_view letters = n % 2 == 0 ? consonants : vowels;
        word += letters[number % letters.size()];
    }
    return word;
}

}  // namespace

void Vocabulary::count(std::string_view word) {
    ++m_counts[std::string(word)];
}

std::string Vocabulary::spelling(std::string_view word, std::uint32_t product) const {
    if (word.size() < shortest)
        return std::string(word);
    const auto counted = m_counts.find(std::string(word));
    const std::size_t count = counted == m_counts.end() ? 0 : counted->second;
    if (count * rarity > m_items)
        return std::string(word);
    // The first product, which has the real spelling, or the one that spelt it like this first.
    while (product > 1) {
        const std::uint64_t draw = mix(hashOf(word) + mix(product));
        const double probability = growth * std::pow(product, growth - 1);
        if (fraction(draw) < probability)
            return newWord(draw, word.size());
        product = static_cast<std::uint32_t>(1 + mix(draw) % (product - 1));
    }
    return std::string(word);
}

std::string Vocabulary::ownSpelling(std::string_view word, std::uint32_t product) {
    return newWord(mix(hashOf(word) + product), std::max<std::size_t>(word.size(), 6));
}

}  // namespace reference::bench
