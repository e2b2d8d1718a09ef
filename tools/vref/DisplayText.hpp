#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace reference::tools {

// Text as it fills the cells of a terminal. Unless said otherwise, all texts are well-formed UTF-8.
// Any thread.

// Chooses ICU's default locale, which nothing here depends on: left to itself, ICU finds it out
// when it is first asked for words or lines, and waits for its own lock for ever where it lacks the
// memory to. To be called before all else here, while there is one thread. Throws std::bad_alloc.
void prepareDefaultLocale();

// How many columns the text takes: two for a wide or fullwidth character (Unicode Standard Annex
// 11), none for a combining mark or a control character, one for any other.
[[nodiscard]] std::size_t displayWidth(std::string_view text);

// The text, cut with an ellipsis where it would take more than `width` columns.
[[nodiscard]] std::string cutToWidth(std::string_view text, std::size_t width);

// The text with spaces at the end, so that it takes at least `width` columns.
[[nodiscard]] std::string padToWidth(std::string_view text, std::size_t width);

// The text in lines of at most `width` columns, broken where Unicode Standard Annex 14 allows; a
// word that is longer than a line has a line of its own, uncut. Line feeds in the text stay, and so
// does a line's leading white space; an empty text has no lines.
[[nodiscard]] std::vector<std::string> wrapToWidth(std::string_view text, std::size_t width);

// Whether a terminal may obey the character rather than show it: a control character, a line or
// paragraph separator, or what changes the direction of the text around it (Unicode Standard Annex
// 9: embeddings, overrides and isolates), which makes text read as something else than it says.
[[nodiscard]] bool controlsTerminal(char32_t character) noexcept;

// The text without such characters except line feed and tab: documentation must not be able to
// control a terminal.
[[nodiscard]] std::string withoutControls(std::string_view text);

// Any bytes as well-formed UTF-8: the text itself or, where it is not UTF-8, with a question mark
// for each byte above ASCII.
[[nodiscard]] std::string wellFormed(const std::string& text);

// Any bytes, ready to be shown in a message: well-formed and without such characters.
[[nodiscard]] std::string printable(const std::string& text);

// The same in one line, with spaces for line feeds and tabs: a name or a message that is quoted
// must not look like a line of its own.
[[nodiscard]] std::string printableLine(const std::string& text);

// A text of the documentation in UTF-8, without such characters; and in one line.
[[nodiscard]] std::string shown(const std::u16string& text);
[[nodiscard]] std::string shownLine(const std::u16string& text);

}  // namespace reference::tools
