// Lists of numbers in ascending order, each once. Internal: no public header includes it.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>
#include <vector>

#include "docimage/Lexicon.hpp"

namespace reference::ask {

// The numbers that a lexicon has under a word; none for an empty word.
[[nodiscard]] inline std::vector<std::uint32_t> keysOf(const docimage::Lexicon& lexicon,
                                                       std::string_view word) {
    std::vector<std::uint32_t> keys;
    if (word.empty())
        return keys;
    lexicon.forEachWordWith(
        {.letters = word, .isStart = true, .isEnd = true}, [&](std::uint32_t number) {
            keys.reserve(lexicon.weightOf(number));
            lexicon.forEachTextWith(number, [&](std::uint32_t key) { keys.push_back(key); });
        });
    return keys;
}

[[nodiscard]] inline bool holds(const std::vector<std::uint32_t>& numbers, std::uint32_t number) {
    return std::ranges::binary_search(numbers, number);
}

// Puts numbers that are less than `end` in order, each once. Many of them are marked rather than
// sorted.
inline void putInOrder(std::vector<std::uint32_t>& numbers, std::size_t end) {
    constexpr std::size_t bits = 64;
    if (numbers.size() < end / bits) {
        std::ranges::sort(numbers);
        numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
        return;
    }
    std::vector<std::uint64_t> marks(end / bits + 1);
    for (const std::uint32_t number : numbers)
        marks[number / bits] |= std::uint64_t{1} << (number % bits);
    numbers.clear();
    for (std::size_t at = 0; at < marks.size(); ++at)
        for (std::uint64_t left = marks[at]; left != 0; left &= left - 1)
            numbers.push_back(static_cast<std::uint32_t>(
                at * bits + static_cast<std::size_t>(std::countr_zero(left))));
}

// Adds the numbers of another list.
inline void unite(std::vector<std::uint32_t>& all, const std::vector<std::uint32_t>& more) {
    if (more.empty())
        return;
    if (all.empty()) {
        all = more;
        return;
    }
    std::vector<std::uint32_t> united;
    united.reserve(all.size() + more.size());
    std::ranges::set_union(all, more, std::back_inserter(united));
    all = std::move(united);
}

}  // namespace reference::ask
