#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

#include "vref/Terminal.hpp"

namespace reference::tools {

// Rows of texts under headings, as a terminal shows them. All texts are well-formed UTF-8.
class Table {
  public:
    enum class Align { Left, Right };

    struct Column {
        std::string heading;
        Align align = Align::Left;
    };

    struct Cell {
        std::string text;
        Style style = Style::Plain;
    };

    explicit Table(std::vector<Column> columns) : m_columns(std::move(columns)) {}

    // Texts are shown in one line each, without what controls a terminal. Requires: one cell per
    // column.
    void add(std::vector<Cell> row);

    // Writes the headings and a line for each row, each column as wide as its widest text.
    void write(std::ostream& out, const Terminal& terminal) const;

  private:
    std::vector<Column> m_columns;
    std::vector<std::vector<Cell>> m_rows;
};

}  // namespace reference::tools
