#pragma once

#include <string>

#include <CLI/App.hpp>

namespace reference::tools {

// Makes the command, and the commands below it, refuse text that is not well-formed UTF-8 or holds
// control characters, with an error that names the option. Only NAME, which may be a pasted piece
// of code, may hold control characters. Call it when all options are there.
void requireCleanTexts(CLI::App& command);

// Checks of one option's text, for CLI::Option::check: empty, or what would be right.

// A product's short name. It is a key of the documentation set, what --product names, and by
// default a folder of the help root.
[[nodiscard]] std::string checkProductName(const std::string& text);

// A folder below the help root.
[[nodiscard]] std::string checkHelpFolder(const std::string& text);

// A whole number from 0 on.
[[nodiscard]] std::string checkCount(const std::string& text);

}  // namespace reference::tools
