// What a piece of source code calls. Internal: no public header includes it.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "reference/ask/Question.hpp"

namespace reference::ask {

// Whether the unit may stand in an identifier.
[[nodiscard]] bool isIdentifierUnit(char16_t unit) noexcept;

// The number of units of a separator of components at `at` that an identifier follows: ".", "::",
// "->", "#" or "/"; 0 where there is none.
[[nodiscard]] std::size_t separatorAt(std::u16string_view text, std::size_t at) noexcept;

// The end of the arguments of a template that begin at `at` and that a separator or a call follows:
// the position after them; `at` where there are none.
[[nodiscard]] std::size_t endOfTemplate(std::u16string_view text, std::size_t at) noexcept;

// The end of the bracket, or of the string, that begins at `at`: the position after its closing
// one, or the end of the text where it is not closed.
[[nodiscard]] std::size_t endOfBracket(std::u16string_view code, std::size_t at) noexcept;
[[nodiscard]] std::size_t endOfString(std::u16string_view code, std::size_t at) noexcept;

// The names that the code calls or looks into, the likeliest to be asked for first: of a chain of
// calls the last one, then those before it, then what is called in arguments. What is called on a
// literal is a member of its type: "str.join". Positions are counted from `offset`.
[[nodiscard]] std::vector<Term> callsIn(std::u16string_view code, std::size_t offset);

}  // namespace reference::ask
