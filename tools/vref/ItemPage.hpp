#pragma once

#include <iosfwd>
#include <string>

#include "reference/api/ReferenceData.hpp"
#include "vref/Terminal.hpp"

namespace reference::tools {

// Writes one result as a manual page: name and purpose, where it belongs and whether it is still to
// be used, then what the page has of syntaxes, description, inputs, outputs, parameters,
// properties, examples and pointers elsewhere. Prose is broken at the terminal's width. `address`
// is that of the page's file; empty where there is none.
void writePage(std::ostream& out, const Terminal& terminal, const api::ReferenceData& result,
               const std::string& address = {});

}  // namespace reference::tools
