#pragma once

#include <string>

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

}  // namespace reference::tools
