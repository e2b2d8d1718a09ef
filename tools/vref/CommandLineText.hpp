#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace reference::tools {

// Converts text of the command line, which is UTF-8, to the library's form. Throws UnusableError
// for text that is not UTF-8.
[[nodiscard]] std::u16string fromCommandLine(const std::string& text);

// The text without white space at its ends.
[[nodiscard]] std::string trimmed(const std::string& text);

// The name in what somebody pasted: without a prompt, the variable it is assigned to, its arguments
// and the punctuation around it ("k = scipy.stats.gaussian_kde(data, " ->
// "scipy.stats.gaussian_kde"). The text itself if there is nothing to remove. UTF-8.
[[nodiscard]] std::string nameInPastedCode(const std::string& text);

// The arguments that a line holds, divided by white space. An argument that begins with a quote ("
// ' or `) goes on to the next one that no backslash stands before, or to the end; "--option="x y""
// is an option and a quoted argument. Empty ones are left out. In time linear in the line's length.
[[nodiscard]] std::vector<std::string> splitLine(std::string_view line);

// The line that splitLine() divides into these arguments, with quotes where they are needed; a JSON
// array of texts, which a session takes as well, where quotes do not do.
[[nodiscard]] std::string joinLine(std::span<const std::string> arguments);

}  // namespace reference::tools
