#pragma once

#include <string>

namespace reference::tools {

// Text of the command line, which is UTF-8, as the library takes it. Throws UnusableError for what
// is not UTF-8.
[[nodiscard]] std::u16string fromCommandLine(const std::string& text);

// The text without white space at its ends.
[[nodiscard]] std::string trimmed(const std::string& text);

// The name in what somebody pasted: without a prompt, what it is assigned to, its arguments and
// punctuation around it ("k = scipy.stats.gaussian_kde(data, " -> "scipy.stats.gaussian_kde"). The
// text itself where there is nothing to take off. UTF-8.
[[nodiscard]] std::string nameInPastedCode(const std::string& text);

}  // namespace reference::tools
