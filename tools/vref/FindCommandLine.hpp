#pragma once

#include <CLI/App.hpp>

#include "vref/Commands.hpp"
#include "vref/Finding.hpp"

namespace reference::tools {

// Adds to a command the options of every search: --type, --product, --prefer, --ignore-case,
// --ignore-package. What is parsed goes into `options`, which must outlive the command.
void addQueryOptions(CLI::App& command, QueryOptions& options);

// Adds the arguments of "vref find" except those that say which documentation is read.
void addFindOptions(CLI::App& command, FindOptions& options);

// Adds the arguments of "vref complete" except those that are configured as well.
void addCompleteOptions(CLI::App& command, CompleteOptions& options);

}  // namespace reference::tools
