// Reads a question as words. Internal: no public header includes it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "docimage/Stemmer.hpp"
#include "reference/ask/Candidates.hpp"
#include "reference/ask/Question.hpp"
#include "reference/ask/passages.hpp"
#include "reference/search/LookupIndex.hpp"
#include "reference/search/ReferenceStore.hpp"

namespace reference::ask {

// The words of a question, and the rungs of the ladder that look for words. One thread.
class WordReading {
  public:
    // The arguments must outlive the object. Words that say nothing count where there are others
    // only as what they form with a neighbour: "extract all" is extractall.
    WordReading(const search::Snapshot& snapshot, std::span<const Term> terms,
                Candidates& candidates);

    // Names that have all words as parts, at least one of them in the last component.
    void findParts();
    // The same words where one is spelt wrongly: words that occur nowhere are replaced by those
    // that they are nearest to. Returns whether any was replaced.
    bool correctSpelling();
    // All words in name and purpose, in any form; or, with `isPurposeWanted`, in the purpose.
    void findWords(bool isPurposeWanted);
    // All words in one passage of an item's texts; and, unless there is such an item, most of the
    // words in name, purpose and a passage.
    void findTexts(bool alsoMostWords);

  private:
    using Keys = std::vector<std::uint32_t>;

    struct Word {
        std::string form;
        std::u16string text;  // as it was typed
        std::vector<std::string> stems;
        bool isStop = false;
    };
    // A stem that is looked for, and the names that have it, each list in order.
    struct Stem {
        std::string text;
        bool isWeak = false;
        Keys last;
        Keys outer;
        Keys purpose;
        Keys synonym;  // names that have a word of the same meaning in name or purpose
        Keys any;
    };
    // In which parts of a name, or of its texts, the words stand: a bit for each word.
    struct Places {
        std::uint64_t last = 0;
        std::uint64_t outer = 0;
        std::uint64_t purpose = 0;
        std::uint64_t synonym = 0;
        WordBits passage;
        WordBits text;

        [[nodiscard]] std::uint64_t any() const noexcept {
            return last | outer | purpose | synonym | passage.any() | text.any();
        }
    };

    [[nodiscard]] static Keys keysOf(const docimage::Lexicon& lexicon, std::string_view word);
    void addWord(std::u16string_view component);
    void makeStems();
    [[nodiscard]] Keys formsOf(const docimage::Lexicon& lexicon, const std::string& stem) const;
    [[nodiscard]] Places placesOf(std::uint32_t key) const;
    [[nodiscard]] std::uint64_t requiredStems() const;
    [[nodiscard]] const std::vector<float>& weightsIn(std::uint32_t product);
    [[nodiscard]] std::uint32_t distanceOf(std::uint32_t key, const Places& places);
    [[nodiscard]] float shareOf(std::uint64_t stems, std::uint32_t product);
    // The names that have a word of the question, alone or run together with a neighbour.
    struct WordKeys {
        Keys last;
        Keys outer;
        Keys joined;  // of the last component, run together
        std::size_t joinedLength = 0;

        [[nodiscard]] std::size_t size() const noexcept { return last.size() + outer.size(); }
    };
    [[nodiscard]] WordKeys keysOfWord(std::size_t number) const;
    [[nodiscard]] bool standsInOrder(std::uint32_t key) const;
    [[nodiscard]] bool isKnown(const Word& word);
    void addByPlaces(const Keys& keys, Rung rung);
    struct LikelyItem {
        std::uint32_t key;
        Places places;
    };
    // The words of a product's texts that stand for words of the question.
    struct TextWord {
        std::uint32_t word;
        std::uint8_t stem;
        bool isSynonym;
    };
    [[nodiscard]] std::vector<TextWord> textWordsOf(const docimage::Lexicon& lexicon);
    void findTextsOf(std::uint32_t product, const search::JoinedPages& joined, bool alsoMostWords);
    void addLikely(std::uint32_t key, const Places& places);
    [[nodiscard]] std::uint32_t keyOfItem(std::uint32_t product, const search::JoinedPages& pages,
                                          std::uint32_t item) const;

    const search::Snapshot& m_snapshot;
    const search::LookupIndex& m_index;
    const docimage::QuestionIndex& m_questions;
    Candidates& m_candidates;
    docimage::Stemmer m_stemmer;
    std::vector<Word> m_words;
    std::uint32_t m_change = 0;
    std::vector<Stem> m_stems;                  // made when they are first needed
    std::vector<LikelyItem> m_likely;           // items that were read, and have not all words
    std::vector<std::vector<float>> m_weights;  // by product; empty until asked for
};

}  // namespace reference::ask
