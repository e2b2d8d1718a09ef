#pragma once

#include <CLI/App.hpp>

#include "vref/Configuration.hpp"

namespace reference::tools {

// Options of several commands that say what may be configured as well. What is parsed goes into
// `given`, which must outlive the command.

// --doc-root and --language.
void addDocumentationOptions(CLI::App& command, GivenSettings& given);

// --no-pager.
void addPagerOption(CLI::App& command, GivenSettings& given);

// --colours.
void addColoursOption(CLI::App& command, GivenSettings& given);

}  // namespace reference::tools
