// Faults of a file that a reader of a documentation set reports.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "FuzzTarget.hpp"
#include "docset/Fault.hpp"

namespace reference::fuzz {

// Counts faults, and requires that each says something and names a place of the file. Of very many
// faults only the first get a place.
class ReadFaults {
  public:
    // The content of the file, which outlives this.
    explicit ReadFaults(std::string_view content) : m_lines(linesOf(content)) {}

    [[nodiscard]] docset::FaultHandler handler() {
        return [this](const docset::Fault& fault) { take(fault); };
    }
    [[nodiscard]] std::size_t count() const noexcept { return m_count; }

  private:
    void take(const docset::Fault& fault) {
        ++m_count;
        const std::string text = fault.toString();
        require(!fault.file.empty() && !fault.problem.empty(), "A fault says what it is", text);
        constexpr std::size_t mostPlaced = 100;
        if (m_count > mostPlaced && fault.line == 0 && fault.column == 0)
            return;
        // The end of the file is behind its last line.
        require(fault.line >= 1 && fault.line <= m_lines.size() + 1, "A fault has a line", text);
        const std::size_t length =
            fault.line <= m_lines.size() ? m_lines[fault.line - 1].size() : 0;
        require(fault.column >= 1 && fault.column <= length + 1, "A fault has a column", text);
    }

    const std::vector<std::string_view> m_lines;
    std::size_t m_count = 0;
};

}  // namespace reference::fuzz
