// Which numbered texts hold a word.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <boost/unordered/unordered_flat_map.hpp>

#include "docimage/Image.hpp"
#include "docimage/TextTable.hpp"
#include "docimage/varint.hpp"

namespace reference::docimage {

// A part of a word that is looked for: letters that stand anywhere in it, at its beginning, at its
// end, or are all of it.
struct WordPart {
    std::string_view letters;
    bool isStart = false;
    bool isEnd = false;
};

// The distinct words of numbered texts, sorted, and for each word the numbers of the texts that
// hold it. The words of a part are found by their trigrams (three bytes in a row), by binary search
// where the part is a word's beginning, and by going through all words for a part of one or two
// bytes: there are far fewer words than text. A lexicon may have the order of its words by their
// ends in place of trigrams.
//
// Views live as long as the image. Throws DamagedImage. Any thread.
class VELTRA_HOST_API Lexicon {
  public:
    static constexpr std::uint32_t sections = 8;

    Lexicon() = default;
    Lexicon(const Image& image, std::uint32_t firstSection);

    [[nodiscard]] std::size_t wordCount() const noexcept { return m_words.size(); }
    [[nodiscard]] std::string_view word(std::size_t number) const { return m_words[number]; }

    // The numbers of the words in the order of their bytes from the last to the first; none where
    // the lexicon has trigrams. They have not been checked.
    [[nodiscard]] std::span<const std::uint32_t> byEnds() const {
        return m_trigramWords.size() > 0 ? std::span<const std::uint32_t>()
                                         : m_trigrams.range(0, m_trigrams.size());
    }

    // Calls `visit(word number)` for each word that has the part, in ascending order. A visit that
    // returns false is the last.
    // Requires: the part has letters, or is a beginning: all words begin with none.
    template <typename Visit>
    void forEachWordWith(const WordPart& part, Visit visit) const;

    // Calls `visit(text number)` for each text that holds the word, in ascending order. A visit
    // that returns false is the last.
    template <typename Visit>
    void forEachTextWith(std::size_t word, Visit visit) const {
        forEachNumber(m_texts[word], visit);
    }

    // Whether no text has an unpaired surrogate.
    [[nodiscard]] bool isWellFormed() const {
        return m_wellFormed.size() == 0 || m_wellFormed[0] != 0;
    }

    // The bytes that the numbers of a word's texts take, at least one each.
    [[nodiscard]] std::size_t weightOf(std::size_t word) const { return m_texts[word].size(); }

  private:
    // The numbers of the words that hold the rarest of the letters' trigrams.
    [[nodiscard]] std::string_view rarestTrigram(std::string_view letters) const;
    [[nodiscard]] static bool hasPart(std::string_view word, const WordPart& part);

    TextTable m_words;                       // sorted
    TextTable m_texts;                       // the numbers of each word's texts, as differences
    ImageArray<std::uint32_t> m_trigrams;    // sorted; or what byEnds() gives
    TextTable m_trigramWords;                // the numbers of each trigram's words, as differences
    ImageArray<std::uint32_t> m_wellFormed;  // one number, 0 or 1
};

// What a lexicon has besides its sorted words: trigrams, by which words are found by letters from
// their middle, and which take a third of it, or the order of the words by their ends.
enum class FoundBy { Trigrams, Ends };

// The numbers of texts in the order of their bytes from the last to the first.
[[nodiscard]] std::vector<std::uint32_t> orderByEnds(const std::vector<std::string_view>& texts);

class VELTRA_HOST_API LexiconBuilder {
  public:
    // The words of a text. Numbers never descend; several texts may have one number.
    void addText(std::u16string_view text, std::uint32_t number);

    // One word of a text.
    void addWord(std::string_view word, std::uint32_t text);

    // Consumes the builder. Without trigrams, forEachWordWith() finds nothing by three letters or
    // more that need not stand at a word's beginning.
    void writeTo(ImageWriter& writer, std::uint32_t firstSection,
                 FoundBy foundBy = FoundBy::Trigrams);

  private:
    struct Texts {
        std::uint32_t last = 0;
        std::string deltas;
    };
    struct Hash {
        using is_transparent = void;
        [[nodiscard]] std::size_t operator()(std::string_view word) const noexcept;
    };
    boost::unordered_flat_map<std::string, Texts, Hash, std::equal_to<>> m_words;
    bool m_isWellFormed = true;
};

template <typename Visit>
void Lexicon::forEachWordWith(const WordPart& part, Visit visit) const {
    const std::string_view letters = part.letters;
    if (part.isStart) {
        for (std::size_t word = m_words.lowerBound(letters); word < m_words.size(); ++word) {
            const std::string_view text = m_words[word];
            if (!text.starts_with(letters) || (part.isEnd && text.size() != letters.size()))
                return;
            if (!wantsMore(visit, static_cast<std::uint32_t>(word)))
                return;
        }
        return;
    }
    if (letters.size() >= 3) {
        forEachNumber(rarestTrigram(letters), [&](std::uint32_t word) {
            return !hasPart(m_words[word], part) || wantsMore(visit, word);
        });
        return;
    }
    const std::string_view all = m_words.bytes();
    for (std::size_t at = all.find(letters); at != std::string_view::npos;) {
        const std::size_t word = m_words.textAt(at);
        const std::size_t end = m_words.startOf(word + 1);
        if (hasPart(m_words[word], part) && !wantsMore(visit, static_cast<std::uint32_t>(word)))
            return;
        at = all.find(letters, std::max(end, at + 1));  // onward even where the starts are damaged
    }
}

}  // namespace reference::docimage
