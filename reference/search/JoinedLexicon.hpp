// One lexicon of the words of many. Internal: no public header includes it.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "docimage/Lexicon.hpp"
#include "reference/search/TextQuery.hpp"

namespace reference::search {

// Which words of which lexicons have the parts of a text. Asking each lexicon takes time for each
// of them, so that a lexicon of all their words is made once that has cost about as much as making
// it does. Any thread.
class JoinedLexicon {
  public:
    // The words of one lexicon for each part of a text.
    struct Found {
        std::uint32_t lexicon;
        TextQuery::Words words;
    };

    JoinedLexicon() = default;
    JoinedLexicon(const JoinedLexicon&) = delete;  // shared by pointer
    JoinedLexicon& operator=(const JoinedLexicon&) = delete;
    ~JoinedLexicon();

    // The lexicons that have words for all parts, in their order. `lexiconOf(number)` gives each of
    // `count` lexicons, which are the same for every call and live as long as this object.
    [[nodiscard]] std::vector<Found> wordsOf(
        const TextQuery& query, std::size_t count,
        const std::function<const docimage::Lexicon&(std::uint32_t)>& lexiconOf) const;

  private:
    using LexiconOf = std::function<const docimage::Lexicon&(std::uint32_t)>;
    // The "texts" of this lexicon are the words of the others, numbered through.
    struct Joined {
        std::shared_ptr<const docimage::Image> image;
        docimage::Lexicon lexicon;
        std::vector<std::uint32_t> firstWords;
    };

    [[nodiscard]] const Joined* joined(std::size_t count, const LexiconOf& lexiconOf) const;
    [[nodiscard]] static std::unique_ptr<const Joined> join(std::size_t count,
                                                            const LexiconOf& lexiconOf);
    [[nodiscard]] static std::vector<Found> wordsOf(const TextQuery& query, const Joined& joined,
                                                    const LexiconOf& lexiconOf);

    mutable std::atomic<const Joined*> m_joined{nullptr};  // owned
    mutable std::atomic<std::size_t> m_questions{0};
    mutable std::atomic_flag m_isBeingMade;
};

}  // namespace reference::search
