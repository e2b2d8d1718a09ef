#pragma once

#include <string>

#include <CLI/App.hpp>
#include <CLI/Error.hpp>

namespace reference::tools {

// What is wrong with a command line that `app` would not parse: arguments in the order in which
// they were typed, and for an option that there is not, the one that was likely meant. UTF-8.
[[nodiscard]] std::string describe(const CLI::App& app, const CLI::ParseError& error);

// That there is no command `typed` below `app`, which one was likely meant, and which there are.
// UTF-8.
[[nodiscard]] std::string describeUnknownCommand(const CLI::App& app, const std::string& typed);

}  // namespace reference::tools
