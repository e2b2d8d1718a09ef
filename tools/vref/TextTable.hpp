#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace reference::tools {

// Tables within prose, a line for each row: "| a | b |". docs/documentation-set.md describes the
// form. All texts are well-formed UTF-8. Any thread.

// Whether a line is a row of a table.
[[nodiscard]] bool isTableRow(std::string_view line);

// The rows of a table with aligned columns, in lines of at most `width` columns. If there is room,
// a column is as wide as its widest cell; otherwise the texts of cells are broken. If that would
// leave columns too narrow to read, each row becomes the item of a list.
[[nodiscard]] std::vector<std::string> layOutTable(const std::vector<std::string_view>& rows,
                                                   std::size_t width);

}  // namespace reference::tools
