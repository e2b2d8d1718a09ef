#include "vref/TextTable.hpp"

#include <algorithm>
#include <numeric>

#include "vref/DisplayText.hpp"

namespace reference::tools {
namespace {

// Cells narrower than this cannot be broken well.
constexpr std::size_t minBrokenWidth = 12;
constexpr std::string_view gap = "  ";

using Cells = std::vector<std::string>;

std::string trimmedCell(std::string text) {
    text.erase(0, std::min(text.find_first_not_of(' '), text.size()));
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

Cells cellsOf(std::string_view row) {
    Cells cells;
    std::string cell;
    for (std::size_t at = 1; at < row.size(); ++at) {
        if (row[at] == '\\' && row.substr(at + 1, 1) == "|") {
            cell += row[++at];
        } else if (row[at] == '|') {
            cells.push_back(trimmedCell(std::move(cell)));
            cell = {};
        } else {
            cell += row[at];
        }
    }
    return cells;
}

bool isRule(std::string_view row) {
    return row.find("---") != std::string_view::npos &&
           row.find_first_not_of("|-") == std::string_view::npos;
}

// How wide each column is. Those that are no wider than their share keep their width; the others
// share what is left.
std::vector<std::size_t> columnWidths(const std::vector<Cells>& rows, std::size_t columns,
                                      std::size_t width) {
    std::vector<std::size_t> widths(columns, 0);
    for (const Cells& row : rows)
        for (std::size_t column = 0; column < row.size(); ++column)
            widths[column] = std::max(widths[column], displayWidth(row[column]));
    const std::size_t gaps = gap.size() * (columns - 1);
    std::size_t room = width > gaps ? width - gaps : 0;
    std::vector<std::size_t> byWidth(columns);
    std::iota(byWidth.begin(), byWidth.end(), 0U);
    std::ranges::stable_sort(byWidth, {}, [&](std::size_t column) { return widths[column]; });
    for (std::size_t done = 0; done < columns; ++done) {
        std::size_t& each = widths[byWidth[done]];
        each = std::min(each, room / (columns - done));
        room -= each;
    }
    return widths;
}

void addRow(const Cells& row, const std::vector<std::size_t>& widths,
            std::vector<std::string>& lines) {
    std::vector<std::vector<std::string>> parts;
    std::size_t height = 1;
    for (std::size_t column = 0; column < widths.size(); ++column) {
        parts.push_back(column < row.size() ? wrapToWidth(row[column], widths[column]) : Cells());
        height = std::max(height, parts.back().size());
    }
    for (std::size_t at = 0; at < height; ++at) {
        std::string line;
        for (std::size_t column = 0; column < widths.size(); ++column) {
            const std::string text = at < parts[column].size() ? parts[column][at] : std::string();
            line += (column == 0 ? "" : std::string(gap)) + padToWidth(text, widths[column]);
        }
        line.erase(line.find_last_not_of(' ') + 1);
        lines.push_back(std::move(line));
    }
}

// Each row as a list item: its first cell, and below it the others, each after its column's
// heading.
std::vector<std::string> asList(const std::vector<Cells>& rows, bool hasHeading,
                                std::size_t width) {
    std::vector<std::string> lines;
    for (std::size_t at = hasHeading ? 1 : 0; at < rows.size(); ++at) {
        std::string before = "- ";
        for (std::size_t column = 0; column < rows[at].size(); ++column) {
            std::string text = rows[at][column];
            if (text.empty() && column > 0)
                continue;
            const bool isTitled = hasHeading && column < rows[0].size() && !rows[0][column].empty();
            if (isTitled && column > 0)
                text = rows[0][column] + ": " + text;
            for (const std::string& part : wrapToWidth(text, width - before.size())) {
                lines.push_back(before + part);
                before = "  ";
            }
        }
    }
    return lines;
}

}  // namespace

bool isTableRow(std::string_view line) {
    return line.size() > 1 && line.starts_with('|') && line.ends_with('|');
}

std::vector<std::string> layOutTable(const std::vector<std::string_view>& rows, std::size_t width) {
    std::vector<Cells> cells;
    std::size_t headings = 0;
    std::size_t columns = 0;
    for (const std::string_view row : rows) {
        if (isRule(row)) {
            headings = cells.size();
            continue;
        }
        cells.push_back(cellsOf(row));
        columns = std::max(columns, cells.back().size());
    }
    if (columns == 0)
        return {};
    const std::vector<std::size_t> natural = columnWidths(cells, columns, std::string::npos);
    const std::vector<std::size_t> widths = columnWidths(cells, columns, width);
    bool isBroken = false;
    for (std::size_t column = 0; column < columns; ++column) {
        isBroken = isBroken || widths[column] < natural[column];
        if (widths[column] < natural[column] && widths[column] < minBrokenWidth)
            return asList(cells, headings == 1, width);
    }
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < cells.size(); ++at) {
        // Without a gap the lines of broken cells would look like rows.
        if (isBroken && at > 0 && at != headings)
            lines.emplace_back();
        addRow(cells[at], widths, lines);
        if (at + 1 != headings)
            continue;
        std::string rule;
        for (const std::size_t each : widths) {
            rule += rule.empty() ? "" : gap;
            for (std::size_t count = 0; count < each; ++count)
                rule += "─";
        }
        lines.push_back(rule);
    }
    return lines;
}

}  // namespace reference::tools
