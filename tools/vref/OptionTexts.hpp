#pragma once

#include <string>

#include <CLI/App.hpp>

namespace reference::tools {

// Makes the command, and the commands below it, refuse text that is not well-formed UTF-8 or holds
// control characters, with an error that names the option. Only NAME and WORDS, which may be a
// pasted piece of code, may hold control characters. Call it after all options have been added.
void requireCleanTexts(CLI::App& command);

// Checks of one option's text, for CLI::Option::check: they return an empty text, or what would be
// right.

// One line of text: well-formed UTF-8 without control characters.
[[nodiscard]] std::string checkClean(const std::string& text);

// A product's short name: a key of the documentation set, the value of --product, and by default a
// folder of the help root.
[[nodiscard]] std::string checkProductName(const std::string& text);

// A folder below the help root.
[[nodiscard]] std::string checkHelpFolder(const std::string& text);

// A whole number, 0 or more; and one from 1 on.
[[nodiscard]] std::string checkCount(const std::string& text);
[[nodiscard]] std::string checkPositive(const std::string& text);

}  // namespace reference::tools
