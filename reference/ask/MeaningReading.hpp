// Reads a question as words that describe what is looked for. Internal: no public header includes
// it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "reference/ask/Candidates.hpp"
#include "reference/ask/passages.hpp"
#include "reference/search/LookupIndex.hpp"
#include "reference/search/ReferenceStore.hpp"

namespace reference::ask {

// The stems of a question's words, and the rungs of the ladder that look for them. One thread.
class MeaningReading {
  public:
    // `stems`: those of the words that say something, each once; what is beyond 64 is left out.
    // `change`: what was changed in the question to get them. The snapshot and the candidates must
    // outlive the object.
    MeaningReading(const search::Snapshot& snapshot, const std::vector<std::string>& stems,
                   std::uint32_t change, Candidates& candidates);

    // All words in name and purpose, in any form; or, with `isPurposeWanted`, in the purpose.
    void findWords(bool isPurposeWanted);
    // All words in one passage of an item's texts, and with `alsoMostWords` names that have most of
    // the words, or others of the same meaning, in name, purpose or text.
    void findTexts(bool alsoMostWords);

  private:
    using Keys = std::vector<std::uint32_t>;
    using VisitKey = std::function<void(std::uint32_t key)>;

    // A stem that is looked for, and the words by which lexicons are asked for it.
    struct Stem {
        std::string text;
        bool isWeak = false;
        std::vector<std::string_view> parts;  // of names
        std::vector<std::string> synonyms;
        std::vector<std::string_view> synonymParts;
    };
    // The fields of a name, from the one that says most. A synonym stands in any of them.
    enum class Field { Last, Purpose, Synonym, Outer };
    static constexpr Field fields[] = {Field::Last, Field::Purpose, Field::Synonym, Field::Outer};

    // Where a name, or its texts, have the stems: a bit for each.
    struct Places {
        std::uint64_t last = 0;
        std::uint64_t outer = 0;
        std::uint64_t purpose = 0;
        std::uint64_t synonym = 0;
        PassageFinder::Texts texts;
        std::size_t size = 0;  // of the texts
    };
    // A name or an item, and what it is worth at first sight.
    struct Scored {
        float score;
        std::uint32_t product;
        std::uint32_t number;
    };

    [[nodiscard]] std::vector<std::string_view> partsOf(std::string_view stem) const;
    void forEachKeyWith(std::size_t stem, Field field, const VisitKey& visit) const;
    [[nodiscard]] Keys keysWith(std::size_t stem, bool isPurposeWanted) const;
    [[nodiscard]] std::uint64_t requiredStems() const;
    void weigh();
    [[nodiscard]] std::span<const float> weightsIn(std::uint32_t product) const;
    [[nodiscard]] std::vector<Places> placesOf(const Keys& keys) const;
    [[nodiscard]] float nearnessOf(std::uint32_t key, const Places& places) const;
    [[nodiscard]] float shareOf(std::uint32_t key, const Places& places) const;
    [[nodiscard]] float prominenceOf(std::uint32_t key) const;
    void add(std::uint32_t key, Rung rung, float nearness);

    [[nodiscard]] std::vector<Scored> likelyNames() const;
    [[nodiscard]] std::vector<Scored> likelyItems();
    [[nodiscard]] const search::JoinedPages* pagesOf(std::uint32_t product) const;
    [[nodiscard]] std::uint32_t keyOfItem(std::uint32_t product, std::uint32_t item) const;
    [[nodiscard]] std::uint32_t itemOfKey(std::uint32_t key) const;
    void readTexts(const Keys& keys, std::vector<Places>& places) const;

    const search::Snapshot& m_snapshot;
    const search::LookupIndex& m_index;
    const docimage::QuestionIndex& m_questions;
    const std::uint32_t m_change;
    Candidates& m_candidates;
    std::vector<Stem> m_stems;
    std::size_t m_strongStems = 0;
    std::vector<float> m_weights;  // by product and stem; empty until they are needed
};

}  // namespace reference::ask
