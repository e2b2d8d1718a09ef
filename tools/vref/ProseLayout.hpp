#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace reference::tools {

// Lays documentation text out for a terminal. docs/documentation-set.md describes the forms of
// headings, lists, code and tables. All texts are well-formed UTF-8. Any thread.

struct ProseSection {
    // Empty for the text before the first heading.
    std::string title;
    std::string text;
};

// The sections of a description, in order; those without text are left out.
[[nodiscard]] std::vector<ProseSection> sectionsOf(std::string_view text);

// Prose in lines of at most `width` columns. List items, and the text that belongs to them, are
// aligned; so are the columns of tables. Code keeps its own lines, however long. If a table has too
// many columns for the width, its rows become the items of a list.
[[nodiscard]] std::vector<std::string> layOutProse(std::string_view text, std::size_t width);

// A syntax in lines of at most `width` columns, broken after commas within its brackets;
// continuation lines are indented. A part that is longer than a line has a line of its own.
[[nodiscard]] std::vector<std::string> layOutSyntax(std::string_view text, std::size_t width);

}  // namespace reference::tools
