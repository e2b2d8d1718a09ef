#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace reference::bench {

// How DevDocs scores the names of its entries for what was typed into its search field. Written
// anew after its published behaviour. The unit of all lengths is the byte, since names are ASCII.

// A name as it is compared, and a question as it is looked for: in lower case, separators as dots,
// without blanks and empty parentheses.
[[nodiscard]] std::string normalizedName(std::string_view name);
[[nodiscard]] std::string normalizedQuestion(std::string_view question);

// The score of a name that contains the question, both normalized and not empty; nothing where it
// does not. At most 100, which is an equal name.
[[nodiscard]] std::optional<int> containedScore(std::string_view name, std::string_view question);

// The score of a name that has the letters of the question in this order but not in a row; nothing
// where it has not.
[[nodiscard]] std::optional<int> scatteredScore(std::string_view name, std::string_view question);

}  // namespace reference::bench
