// Reads a question as words. Internal: no public header includes it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "docimage/QuestionIndex.hpp"
#include "docimage/Stemmer.hpp"
#include "reference/ask/Candidates.hpp"
#include "reference/ask/Question.hpp"

namespace reference::ask {

// The words of a question, and the rungs of the ladder that look for words. One thread.
class WordReading {
  public:
    // The arguments must outlive the object. Words that say nothing count where there are others
    // only as what they form with a neighbour: "extract all" is extractall.
    WordReading(const docimage::QuestionIndex& questions, std::span<const Term> terms,
                Candidates& candidates);

    // Names that have all words as parts, at least one of them in the last component.
    void findParts();
    // The same words where one is spelt wrongly: words that occur nowhere are replaced by those
    // that they are nearest to. Returns whether any was replaced.
    bool correctSpelling();
    // The stems of the words that say something, each once, and the change that led to them.
    [[nodiscard]] std::vector<std::string> stems() const;
    [[nodiscard]] std::uint32_t change() const noexcept { return m_change; }

  private:
    using Keys = std::vector<std::uint32_t>;

    struct Word {
        std::string form;
        std::u16string text;  // as it was typed
        std::vector<std::string> stems;
        bool isStop = false;
    };
    void addWord(std::u16string_view component);
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
    void add(Word word);
    [[nodiscard]] bool isKnown(const Word& word) const;

    const docimage::QuestionIndex& m_questions;
    Candidates& m_candidates;
    docimage::Stemmer m_stemmer;
    std::vector<Word> m_words;
    const bool m_isQualifiedName;  // and nothing else
    std::uint32_t m_change = 0;
};

}  // namespace reference::ask
