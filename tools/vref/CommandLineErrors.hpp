#pragma once

#include <string>

#include <CLI/App.hpp>
#include <CLI/Error.hpp>

namespace reference::tools {

// What is wrong with a command line that `app` could not parse. Lists unexpected arguments in the
// order in which they were typed and, for an unknown option, the one that was probably meant.
// UTF-8.
[[nodiscard]] std::string describe(const CLI::App& app, const CLI::ParseError& error);

// Says that `app` has no command `typed`, which command was probably meant, and which commands
// there are. UTF-8.
[[nodiscard]] std::string describeUnknownCommand(const CLI::App& app, const std::string& typed);

}  // namespace reference::tools
