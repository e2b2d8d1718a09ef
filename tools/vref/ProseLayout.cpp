#include "vref/ProseLayout.hpp"

#include <algorithm>

#include "vref/DisplayText.hpp"
#include "vref/TextTable.hpp"

namespace reference::tools {
namespace {

// Prose is not wrapped narrower than this, however far it is indented.
constexpr std::size_t minProseWidth = 20;
// How much farther code is indented than the text around it.
constexpr std::size_t codeIndent = 4;

std::vector<std::string_view> linesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

bool isUnderline(std::string_view line, std::string_view title) {
    const auto characters =
        std::ranges::count_if(title, [](char c) { return (c & '\xC0') != '\x80'; });
    return !title.empty() && !title.starts_with(' ') &&
           line == std::string(static_cast<std::size_t>(characters), '-');
}

// The length in bytes of the list mark that the line begins with; 0: none.
std::size_t markOf(std::string_view line) {
    constexpr std::size_t maxDigits = 4;
    if (line.starts_with("- "))
        return 2;
    const std::size_t digits = line.find_first_not_of("0123456789");
    const bool isNumber =
        digits > 0 && digits <= maxDigits && line.substr(digits).starts_with(". ");
    return isNumber ? digits + 2 : 0;
}

// Lays out line after line. Further text is aligned with the text of the last list item.
class Layout {
  public:
    explicit Layout(std::size_t width) : m_width(width) {}

    std::vector<std::string> run(const std::vector<std::string_view>& lines) {
        for (std::size_t at = 0; at < lines.size();) {
            const std::string_view line = lines[at];
            const std::size_t indent = std::min(line.find_first_not_of(' '), line.size());
            if (indent == line.size()) {
                m_column = line.empty() ? 0 : m_column;
                m_result.emplace_back();
                ++at;
            } else if (indent >= m_column + codeIndent) {
                m_result.emplace_back(line);
                ++at;
            } else if (isTableRow(line.substr(indent))) {
                at = addTable(lines, at, indent);
            } else {
                addText(line.substr(indent), indent);
                ++at;
            }
        }
        return std::move(m_result);
    }

  private:
    [[nodiscard]] std::size_t widthAt(std::size_t column) const {
        return std::max(m_width > column ? m_width - column : 0, minProseWidth);
    }

    void addText(std::string_view text, std::size_t indent) {
        const std::size_t mark = markOf(text);
        m_column = indent + mark;
        std::string before = std::string(indent, ' ') + std::string(text.substr(0, mark));
        for (const auto& part : wrapToWidth(text.substr(mark), widthAt(m_column))) {
            m_result.push_back(before + part);
            before.assign(m_column, ' ');
        }
    }

    // Adds the table that begins at a line; returns the place of the line after it.
    std::size_t addTable(const std::vector<std::string_view>& lines, std::size_t at,
                         std::size_t indent) {
        std::vector<std::string_view> rows;
        for (; at < lines.size() && lines[at].find_first_not_of(' ') == indent &&
               isTableRow(lines[at].substr(indent));
             ++at)
            rows.push_back(lines[at].substr(indent));
        for (const std::string& line : layOutTable(rows, widthAt(indent)))
            m_result.push_back(line.empty() ? line : std::string(indent, ' ') + line);
        m_column = indent;
        return at;
    }

    std::size_t m_width;
    std::size_t m_column = 0;
    std::vector<std::string> m_result;
};

// The parts of a syntax, each up to a comma between the outermost brackets.
std::vector<std::string> partsOfSyntax(std::string_view text) {
    std::vector<std::string> parts;
    int depth = 0;
    std::size_t begin = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        depth += c == '(' || c == '[' || c == '{' ? 1 : c == ')' || c == ']' || c == '}' ? -1 : 0;
        if (c != ',' || depth != 1 || text.substr(at + 1, 1) != " ")
            continue;
        parts.emplace_back(text.substr(begin, at + 1 - begin));
        begin = at + 2;
    }
    parts.emplace_back(text.substr(begin));
    return parts;
}

}  // namespace

std::vector<ProseSection> sectionsOf(std::string_view text) {
    const std::vector<std::string_view> lines = linesOf(text);
    std::vector<ProseSection> sections(1);
    for (std::size_t at = 0; at < lines.size(); ++at) {
        const bool beginsBlock = at == 0 || lines[at - 1].empty();
        const bool isHeading = beginsBlock && at + 1 < lines.size() &&
                               isUnderline(lines[at + 1], lines[at]) &&
                               (at + 2 == lines.size() || lines[at + 2].empty());
        if (isHeading) {
            sections.push_back({std::string(lines[at]), {}});
            at += 2;
            continue;
        }
        std::string& body = sections.back().text;
        body.append(body.empty() ? "" : "\n").append(lines[at]);
    }
    for (ProseSection& section : sections)
        while (section.text.ends_with('\n'))
            section.text.pop_back();
    std::erase_if(sections, [](const ProseSection& section) { return section.text.empty(); });
    return sections;
}

std::vector<std::string> layOutProse(std::string_view text, std::size_t width) {
    return Layout(width).run(linesOf(text));
}

std::vector<std::string> layOutSyntax(std::string_view text, std::size_t width) {
    constexpr std::size_t furtherIndent = 4;
    std::vector<std::string> lines;
    for (const std::string_view whole : linesOf(text)) {
        if (displayWidth(whole) <= width) {
            lines.emplace_back(whole);
            continue;
        }
        std::string line;
        for (const std::string& part : partsOfSyntax(whole)) {
            if (line.empty()) {
                line = part;
            } else if (displayWidth(line) + 1 + displayWidth(part) <= width) {
                line += " " + part;
            } else {
                lines.push_back(line);
                line = std::string(furtherIndent, ' ') + part;
            }
        }
        lines.push_back(line);
    }
    return lines;
}

}  // namespace reference::tools
