// Where in a text the words of a question stand together. Internal: no public header includes it.
#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <boost/unordered/unordered_flat_map.hpp>

namespace reference::ask {

// The words of a question that a text has: a bit for each.
struct WordBits {
    std::uint64_t words = 0;
    std::uint64_t synonyms = 0;  // by another word of the same meaning

    [[nodiscard]] std::uint64_t any() const noexcept { return words | synonyms; }
    void add(const WordBits& other) noexcept {
        words |= other.words;
        synonyms |= other.synonyms;
    }
};

// Finds the passage of a text that has most of a question's words: words that stand far apart have
// little to do with each other. One thread.
class PassageFinder {
  public:
    // What stands within so many words is one passage: two or three sentences.
    static constexpr std::size_t passageLength = 40;
    // The bytes that are looked at. What a thing is for is said at the beginning.
    static constexpr std::size_t longestText = 4096;

    // `weights`: what each word of the question counts; must outlive the object.
    explicit PassageFinder(std::span<const float> weights) : m_weights(weights) {}

    // A word of the texts, in search form, and the number of the question's word that it stands
    // for.
    void addWord(std::string_view word, std::size_t number, bool isSynonym);

    // Forgets the texts that were looked at.
    void clear() noexcept;
    // Looks at one more text; as bytes, see docimage/unitBytes.hpp. Returns whether no more texts
    // need to be shown.
    bool look(std::string_view text);
    // What the best passage of all texts has.
    [[nodiscard]] const WordBits& passage() const noexcept { return m_passage; }

  private:
    struct Found {
        std::size_t position;
        WordBits bits;
    };
    struct Hash {
        using is_transparent = void;
        [[nodiscard]] std::size_t operator()(std::string_view word) const noexcept;
    };
    [[nodiscard]] const WordBits* bitsOf(std::string_view word);
    void takePassage(std::size_t first, std::size_t end);

    std::span<const float> m_weights;
    boost::unordered_flat_map<std::string, WordBits, Hash, std::equal_to<>> m_words;
    std::bitset<1U << 15U> m_beginnings;  // of the words, see beginningOf()
    std::vector<Found> m_found;
    std::string m_form;
    std::size_t m_looked = 0;
    WordBits m_passage;
    float m_bestWeight = -1;
};

}  // namespace reference::ask
