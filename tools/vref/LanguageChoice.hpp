#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace reference::tools {

// In which language documentation is read where nobody has named one. Any thread, while none
// changes the environment.

// A language that somebody would like.
struct LanguageWish {
    std::string locale;    // "de_AT", or "de" for any locale of the language
    std::string variable;  // the environment variable that says so; empty for the last resort

    friend bool operator==(const LanguageWish&, const LanguageWish&) = default;
};

// What the locale of the process says, the most wanted first: the list in LANGUAGE, which counts
// for nothing in the locale "C"; then the first of LC_ALL, LC_MESSAGES and LANG that is set; and
// last English. A locale is followed by its language alone, and has no encoding and modifier:
// "de_DE.UTF-8@euro" gives "de_DE" and "de".
[[nodiscard]] std::vector<LanguageWish> languagesOfEnvironment();

// The one of a documentation set's locales that is meant by its name, however it is written
// ("ja_JP", "ja-jp"), or by its language alone ("ja"), which means the first of that language.
[[nodiscard]] std::optional<std::string> localeMeant(std::string_view wanted,
                                                     const std::vector<std::string>& locales);

}  // namespace reference::tools
