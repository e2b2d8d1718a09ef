#pragma once

#include <span>
#include <string>

#include <CLI/App.hpp>

#include "vref/ExitStatus.hpp"

namespace reference::tools {

// Completes the tool's own command line, for the completion scripts of shells:
//
//     vref complete --words N [--quoted] -- WORD...
//
// The words are those of the command line after the tool's name, and the one with the number N,
// counted from 0, is being typed; it may be the one after the last. With --quoted they are as they
// were typed, with quotation marks and backslashes.
//
// A line is printed for each text that may stand in the place of that word: the text, without
// quotation marks, a tab, and what it is. One that ends with any of ".:=," is to go on. A line of a
// tab and "folders" asks the shell to complete the name of a folder. Commands and options are those
// of `app`. Whatever is wrong, with the line or the documentation, nothing is said of it: who is
// typing is not to be disturbed.
[[nodiscard]] bool isLineCompletion(std::span<const std::string> arguments);
[[nodiscard]] ExitStatus completeLine(const CLI::App& app, std::span<const std::string> arguments);

}  // namespace reference::tools
