// Reads a question as words that describe what is looked for. Internal: no public header includes
// it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "reference/ask/Candidates.hpp"
#include "reference/ask/ItemTexts.hpp"
#include "reference/ask/StemKeys.hpp"
#include "reference/search/LookupIndex.hpp"
#include "reference/search/ReferenceStore.hpp"

namespace reference::ask {

// The stems of a question's words, and the rungs of the ladder that look for them. One thread.
class MeaningReading {
  public:
    // `stems`: those of the words that say something, each once; what is beyond StemKeys::most is
    // left out. `change`: what was changed in the question to get them. The snapshot and the
    // candidates must outlive the object.
    MeaningReading(const search::Snapshot& snapshot, const std::vector<std::string>& stems,
                   std::uint32_t change, Candidates& candidates);

    // All words in name and purpose, in any form; or, with `isPurposeWanted`, in the purpose.
    void findWords(bool isPurposeWanted);
    // All words in one passage of an item's texts.
    void findInTexts();
    // Names that have most of the words, or others of the same meaning, in name, purpose and text:
    // words that are scattered over a long page say little together. Those that have all of them,
    // and are nearly as near as the nearest, are on the rung before.
    void findMostWords();

  private:
    // What the texts of a name have.
    struct Texts {
        WordBits all;
        WordBits passage;
        std::size_t size = 0;
    };
    // A name that is looked at closely.
    struct Likely {
        ItemTexts::Entry entry;
        StemKeys::Places places;
        float nearness = 0;
        WordBits passage;  // nothing as long as it was not read
    };
    [[nodiscard]] std::vector<Likely> likelyEntries();
    void readFirst(std::vector<Likely>& likely);

    [[nodiscard]] static float countOf(std::uint64_t stem, const StemKeys::Places& places,
                                       const Texts& texts);
    [[nodiscard]] float likelihoodOf(std::uint32_t key) const;
    [[nodiscard]] float nearnessOf(std::uint32_t key, const StemKeys::Places& places,
                                   const Texts& texts);
    [[nodiscard]] float shareOf(std::uint32_t key, std::uint64_t words);
    void add(std::uint32_t key, Rung rung, float nearness);

    const search::LookupIndex& m_index;
    const docimage::QuestionIndex& m_questions;
    const std::uint32_t m_change;
    Candidates& m_candidates;
    StemKeys m_stems;
    ItemTexts m_texts;
};

}  // namespace reference::ask
