// Lists of numbers in ascending order, each once. Internal: no public header includes it.
#pragma once

#include <algorithm>
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
