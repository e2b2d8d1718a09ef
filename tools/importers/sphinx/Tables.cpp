#include "sphinx/Tables.hpp"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <string_view>
#include <vector>

#include "sphinx/InlineText.hpp"

namespace reference::importers::sphinx {
namespace {

struct Row {
    std::vector<std::string> cells;
    bool isHeading = false;
};

// Wider tables are cut: their text would grow with the product of rows and columns.
constexpr std::size_t maxColumns = 200;

// How many columns or rows a cell takes. Larger numbers than any real table has are cut.
std::size_t spanOf(Node cell, const char* name) {
    constexpr std::size_t maxSpan = 100;
    const std::string_view text = cell.attribute(name).value_or("1");
    std::size_t span = 1;
    std::from_chars(text.data(), text.data() + text.size(), span);
    return std::clamp<std::size_t>(span, 1, maxSpan);
}

std::string cellText(Node cell) {
    std::string text;
    for (const char c : inlineText(cell)) {
        if (c == '|')
            text += '\\';
        text += c;
    }
    return text;
}

// `taken`: for how many more rows each column is taken by a cell of a row above.
Row readRow(Node tr, std::vector<std::size_t>& taken) {
    Row row;
    row.isHeading = true;
    const auto skipTaken = [&] {
        while (row.cells.size() < taken.size() && taken[row.cells.size()] > 0) {
            --taken[row.cells.size()];
            row.cells.emplace_back();
        }
    };
    for (Node cell = tr.firstElement(); cell; cell = cell.nextElement()) {
        if (!cell.hasTag({"td", "th"}))
            continue;
        skipTaken();
        row.isHeading = row.isHeading && cell.tag() == "th";
        const std::size_t rows = spanOf(cell, "rowspan");
        const std::size_t columns =
            std::min(spanOf(cell, "colspan"), maxColumns - std::min(maxColumns, row.cells.size()));
        for (std::size_t column = 0; column < columns; ++column) {
            taken.resize(std::max(taken.size(), row.cells.size() + 1));
            taken[row.cells.size()] = rows - 1;
            row.cells.push_back(column == 0 ? cellText(cell) : std::string());
        }
    }
    skipTaken();
    return row;
}

std::string lineOf(const Row& row, std::size_t columns) {
    std::string line = "|";
    for (std::size_t column = 0; column < columns; ++column) {
        const std::string cell = column < row.cells.size() ? row.cells[column] : std::string();
        line += " " + cell + (cell.empty() ? "|" : " |");
    }
    return line;
}

}  // namespace

std::string tableText(Node table) {
    std::vector<Row> rows;
    std::vector<std::size_t> taken;
    for (Node node = table.next(table); node; node = node.next(table)) {
        if (node.tag() != "tr")
            continue;
        Row row = readRow(node, taken);
        if (std::ranges::any_of(row.cells, [](const auto& cell) { return !cell.empty(); }))
            rows.push_back(std::move(row));
    }
    std::string text;
    for (std::size_t at = 0; at < rows.size(); ++at) {
        text += (at == 0 ? "" : "\n") + lineOf(rows[at], taken.size());
        const bool isLastHeading =
            rows[at].isHeading && at + 1 < rows.size() && !rows[at + 1].isHeading;
        if (!isLastHeading || text.find("|---") != std::string::npos)
            continue;
        text += "\n|";
        for (std::size_t column = 0; column < taken.size(); ++column)
            text += "---|";
    }
    return text;
}

}  // namespace reference::importers::sphinx
