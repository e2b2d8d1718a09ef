// A text that is looked for, as a lexicon is asked for it. Internal: no public header includes it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <boost/container/small_vector.hpp>

#include "docimage/Lexicon.hpp"
#include "reference/search/ReferenceRequestExt.hpp"

namespace reference::search {

// The words, and parts of words, that a text must have in order to hold the wanted one.
class TextQuery {
  public:
    // `ext` must outlive the object.
    explicit TextQuery(const ReferenceRequestExt& ext);

    // No part: nothing can be said of the texts that hold the wanted one.
    [[nodiscard]] bool hasParts() const noexcept { return !m_parts.empty(); }

    // Whether every text that has the part holds the wanted one, so that nothing needs to be
    // confirmed, as long as all indexed texts are well-formed.
    [[nodiscard]] bool isExact() const noexcept { return m_isExact; }

    // The words of a lexicon that have one part of the text, and the bytes that the numbers of
    // their texts take: a measure of how many texts these are.
    struct PartWords {
        std::vector<std::uint32_t> words;
        std::size_t weight = 0;
    };
    using Words = std::vector<PartWords>;

    [[nodiscard]] const docimage::WordPart& part(std::size_t number) const {
        return m_parts[number];
    }
    [[nodiscard]] std::size_t partCount() const noexcept { return m_parts.size(); }

    // The words of each part; none at all where a part has none.
    [[nodiscard]] Words wordsOf(const docimage::Lexicon& lexicon) const;

    // The numbers of the texts of a lexicon that have a word of each part, ascending. `textCount`
    // is how many texts it was made of. Consumes the words.
    [[nodiscard]] static std::vector<std::uint32_t> textsWithAll(const docimage::Lexicon& lexicon,
                                                                 Words& words,
                                                                 std::size_t textCount);

  private:
    boost::container::small_vector<docimage::WordPart, 4> m_parts;
    bool m_isExact = false;
};

}  // namespace reference::search
