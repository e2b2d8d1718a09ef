// A text that is looked for, as a lexicon is asked for it. Internal: no public header includes it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "docimage/Lexicon.hpp"

namespace reference::search {

// The words, and parts of words, that a text must have in order to hold the wanted one.
class TextQuery {
  public:
    // An empty text.
    TextQuery() = default;

    // `text` is what is looked for, folded unless case counts.
    TextQuery(std::u16string_view text, bool isCaseSensitive);

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
    struct Part {
        std::size_t at;
        std::size_t size;
        bool isStart;
        bool isEnd;
    };

    [[nodiscard]] docimage::WordPart wordPart(const Part& part) const;

    std::string m_form;
    std::vector<Part> m_parts;
    bool m_isExact = false;
};

}  // namespace reference::search
