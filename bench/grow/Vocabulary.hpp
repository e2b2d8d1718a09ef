#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

namespace reference::bench {

// Which words the documentation of made-up products has. They are numbered from 1. Each takes the
// words of real texts, but has some of the rare ones spelt anew, so that together they have more
// words the more of them there are. In real texts the number of words grows with a power of the
// length (Heaps' law), and so it does here: product n spells a word anew with the probability
// p n^(p-1), and otherwise as an earlier product does, so that n products have n^p spellings of it.
//
// The same seed and words give the same spellings everywhere. Any thread.
class Vocabulary {
  public:
    // The power that is usual for English texts.
    static constexpr double growth = 0.55;

    // Counts a word, in lower case, once for each item that holds it. Call it for all items before
    // the first spelling.
    void count(std::string_view word);
    void countItem() { ++m_items; }

    // The word, which is in lower case, as product `product` spells it: the word itself, or a new
    // one that is as long.
    [[nodiscard]] std::string spelling(std::string_view word, std::uint32_t product) const;

    // A word that no other product has for this one.
    [[nodiscard]] static std::string ownSpelling(std::string_view word, std::uint32_t product);

  private:
    std::unordered_map<std::string, std::size_t> m_counts;
    std::size_t m_items = 0;
};

}  // namespace reference::bench
