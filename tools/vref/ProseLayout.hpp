#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace reference::tools {

// Lays documentation text out for a terminal. The forms of headings, lists, code and tables are
// told in docs/documentation-set.md. All texts are well-formed UTF-8. Any thread.

struct ProseSection {
    // Empty for what stands before the first heading.
    std::string title;
    std::string text;
};

// The sections of a description, in order; those without text are left out.
[[nodiscard]] std::vector<ProseSection> sectionsOf(std::string_view text);

// Prose in lines of at most `width` columns. Items of lists and what belongs to them stand under
// each other, tables have aligned columns, and code keeps its own lines, however long. Where a
// table has too many columns for the width, its rows become the items of a list.
[[nodiscard]] std::vector<std::string> layOutProse(std::string_view text, std::size_t width);

// A syntax in lines of at most `width` columns, broken after commas within its brackets; what goes
// on is set in. A part that is longer than a line has a line of its own.
[[nodiscard]] std::vector<std::string> layOutSyntax(std::string_view text, std::size_t width);

}  // namespace reference::tools
