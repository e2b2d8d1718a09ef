#include "relevance/Table.hpp"

#include <algorithm>
#include <cstddef>

namespace reference::bench {
namespace {

void printMarkdown(std::ostream& stream, const std::vector<std::string>& cells) {
    stream << '|';
    for (const std::string& cell : cells)
        stream << ' ' << cell << " |";
    stream << '\n';
}

void printPlain(std::ostream& stream, const std::vector<std::string>& cells,
                const std::vector<std::size_t>& widths) {
    std::string line;
    for (std::size_t column = 0; column < cells.size(); ++column) {
        const std::string space(widths[column] - cells[column].size(), ' ');
        line += column == 0 ? cells[column] + space : "   " + space + cells[column];
    }
    stream << line << '\n';
}

}  // namespace

void Table::print(std::ostream& stream, TableForm form) const {
    if (form == TableForm::Markdown) {
        printMarkdown(stream, header);
        std::vector<std::string> rule(header.size(), "---:");
        rule.front() = "---";
        printMarkdown(stream, rule);
        for (const auto& row : rows)
            printMarkdown(stream, row);
        return;
    }
    std::vector<std::size_t> widths(header.size());
    for (std::size_t column = 0; column < header.size(); ++column) {
        widths[column] = header[column].size();
        for (const auto& row : rows)
            widths[column] = std::max(widths[column], row[column].size());
    }
    printPlain(stream, header, widths);
    for (const auto& row : rows)
        printPlain(stream, row, widths);
}

}  // namespace reference::bench
