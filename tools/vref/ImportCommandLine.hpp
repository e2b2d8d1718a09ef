#pragma once

#include <string>

#include <CLI/App.hpp>

#include "vref/Commands.hpp"

namespace reference::tools {

// Adds to "vref import" its command "sphinx", and returns that. What is parsed goes into `options`,
// which must outlive the command.
CLI::App& addImportSphinx(CLI::App& import, ImportSphinxOptions& options);

// For errors, with what would be right: that nothing is named to import, and that what is named is
// no importer. UTF-8.
[[nodiscard]] std::string describeMissingImporter();
[[nodiscard]] std::string describeUnknownImporter(const std::string& typed);

}  // namespace reference::tools
