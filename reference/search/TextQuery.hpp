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

    // The numbers of the texts of a lexicon that have all parts, ascending. `textCount` is how many
    // texts it was made of.
    [[nodiscard]] std::vector<std::uint32_t> textsWithAll(const docimage::Lexicon& lexicon,
                                                          std::size_t textCount) const;

  private:
    boost::container::small_vector<docimage::WordPart, 4> m_parts;
    bool m_isExact = false;
};

}  // namespace reference::search
