#pragma once

#include <cstddef>
#include <string>

#include "sphinx/InlineText.hpp"

namespace reference::importers::sphinx {

// How many bytes of a paragraph its first sentence takes, the mark at its end included; the whole
// of a paragraph without such a mark. May be called from any thread.
[[nodiscard]] std::size_t firstSentenceLength(const InlineText& paragraph);

// Where a paragraph's last sentence begins, in bytes; 0 for a paragraph of one sentence.
[[nodiscard]] std::size_t lastSentenceBegin(const InlineText& paragraph);

// A paragraph's first sentence.
[[nodiscard]] inline std::string firstSentence(const InlineText& paragraph) {
    return paragraph.text().substr(0, firstSentenceLength(paragraph));
}

}  // namespace reference::importers::sphinx
