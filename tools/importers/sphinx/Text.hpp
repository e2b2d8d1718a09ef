#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace reference::importers::sphinx {

// Small operations on UTF-8 text that several readers share. All may be called from any thread.

// Without white space (ASCII and no-break space) at either end.
[[nodiscard]] std::string_view trimmed(std::string_view text);

// Every run of white space (ASCII and no-break space) turned into one space, none at either end;
// zero-width spaces, which pages carry as hints for line breaks, taken out.
[[nodiscard]] std::string collapsed(std::string_view text);

// Without the spaces after opening brackets and before closing ones and commas; `text` is
// collapsed.
[[nodiscard]] std::string withoutGaps(std::string_view text);

// With `lead` at the beginning of each line but the first. Empty lines get it, too.
[[nodiscard]] std::string withSetLines(std::string_view text, std::string_view lead);

// The first character of a text that is not empty, as the bytes that it takes.
[[nodiscard]] std::string_view firstCharacter(std::string_view text);

// ASCII letters in lower case, everything else unchanged.
[[nodiscard]] std::string lowered(std::string_view text);

// Whether `text` is well-formed UTF-8 throughout.
[[nodiscard]] bool isWellFormed(std::string_view text);

// `text` with every ill-formed part replaced by U+FFFD.
[[nodiscard]] std::string toWellFormed(std::string_view text);

// "%41" turned into "A" and so on; a "%" without two hexadecimal digits after it stays.
[[nodiscard]] std::string percentDecoded(std::string_view text);

// The parts between the commas that stand outside brackets, each trimmed, empty ones left out.
[[nodiscard]] std::vector<std::string> splitAtCommas(std::string_view text);

// What follows the last "." of a qualified name, or the whole of a name without one.
[[nodiscard]] std::string_view lastComponent(std::string_view name);

// `title` as the heading of a section: below it a line of as many dashes as it has characters.
[[nodiscard]] std::string underlined(std::string_view title);

// `lead` and then `text`: after a space where `text` goes on as a sentence, on a line of its own
// where it begins with a list, a table or code.
[[nodiscard]] std::string withLead(std::string lead, std::string_view text);

// A label's text without the colon at its end and the spaces around that colon.
[[nodiscard]] std::string withoutColon(std::string text);

// Whether `c` is an ASCII digit.
[[nodiscard]] constexpr bool isDigit(char c) noexcept {
    return c >= '0' && c <= '9';
}

// `parts` with `separator` between each two.
[[nodiscard]] std::string joined(const std::vector<std::string>& parts, std::string_view separator);

}  // namespace reference::importers::sphinx
