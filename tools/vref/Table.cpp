#include "vref/Table.hpp"

#include <algorithm>
#include <ostream>

#include "vref/DisplayText.hpp"

namespace reference::tools {
namespace {

std::string aligned(const std::string& text, Table::Align align, std::size_t width, bool isLast) {
    const std::size_t used = displayWidth(text);
    const std::string space(used < width ? width - used : 0, ' ');
    if (align == Table::Align::Right)
        return space + text;
    return isLast ? text : text + space;
}

}  // namespace

void Table::add(std::vector<Cell> row) {
    for (Cell& cell : row)
        cell.text = printableLine(cell.text);
    m_rows.push_back(std::move(row));
}

void Table::write(std::ostream& out, const Terminal& terminal) const {
    std::vector<std::size_t> widths;
    for (std::size_t at = 0; at < m_columns.size(); ++at) {
        widths.push_back(displayWidth(m_columns[at].heading));
        for (const auto& row : m_rows)
            widths.back() = std::max(widths.back(), displayWidth(row[at].text));
    }
    const auto textAt = [&](const std::string& text, std::size_t at) {
        return aligned(text, m_columns[at].align, widths[at], at + 1 == m_columns.size());
    };

    const auto writeLine = [&](const std::vector<Cell>& cells) {
        for (std::size_t at = 0; at < cells.size(); ++at) {
            const std::string text = textAt(cells[at].text, at);
            if (!text.empty())
                out << (at == 0 ? "" : "  ") << terminal.styled(cells[at].style, text);
        }
        out << '\n';
    };
    std::vector<Cell> headings;
    for (const auto& column : m_columns)
        headings.push_back({column.heading, Style::Heading});
    writeLine(headings);
    for (const auto& row : m_rows)
        writeLine(row);
}

}  // namespace reference::tools
