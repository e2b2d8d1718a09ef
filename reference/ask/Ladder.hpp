// Decides what a question means. Internal: no public header includes it.
#pragma once

#include "reference/ask/Answer.hpp"
#include "reference/ask/Question.hpp"
#include "reference/ask/ask.hpp"
#include "reference/search/ReferenceStore.hpp"

namespace reference::ask {

// The answer to a question of this text. `question` is null where the text is no question; it may
// still be a name.
[[nodiscard]] Answer climb(const search::Snapshot& snapshot, std::u16string_view text,
                           const Question* question, const AskOptions& options);

}  // namespace reference::ask
