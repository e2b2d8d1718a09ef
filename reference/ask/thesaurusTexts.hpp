// What the thesaurus is made of. Internal: no public header includes it.
#pragma once

#include <span>
#include <string_view>

namespace reference::ask {

// Lines of words in any of their forms, divided by blanks, in lower case. "delete remove drop":
// each means the others. "tally: count frequency": the word before the colon means those after it,
// and not the other way round. "standard deviation: std": the words before the colon do, where a
// question has all of them. Words with underscores are names.
//
// Here stands what documentation and its readers exchange for one another, not all that a
// dictionary has: each line makes questions find more, and less of what they find is meant.
[[nodiscard]] std::span<const std::string_view> thesaurusTexts() noexcept;

}  // namespace reference::ask
