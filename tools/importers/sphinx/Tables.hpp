#pragma once

#include <string>

#include "sphinx/Node.hpp"

namespace reference::importers::sphinx {

// A table as lines of text, one for each row: "| a | b |". A line "|---|---|" follows the heading
// rows, if the table has any. A "|" within a cell is written "\\|". A cell that takes several
// columns or rows fills the first of them; the others are empty, so that every row has all columns.
// A table without text gives an empty string. May be called from any thread.
[[nodiscard]] std::string tableText(Node table);

}  // namespace reference::importers::sphinx
