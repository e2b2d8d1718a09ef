#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "sphinx/Node.hpp"

namespace reference::importers::sphinx {

// The text of running content (a paragraph, a heading, a signature) as a reader sees it: white
// space collapsed, without the marks that a page adds for its own use (permalinks, links to source
// code, line numbers), formulas as MathText.hpp describes. Remembers which parts are code.
//
// A plain value: separate objects may be used from separate threads.
class InlineText {
  public:
    // A stretch of the text, in bytes.
    struct Range {
        std::size_t begin = 0;
        std::size_t end = 0;
    };

    InlineText() = default;
    // The text of one node and everything within it.
    explicit InlineText(Node node) { add(node); }

    // Appends a node with everything within it.
    void add(Node node);
    // Appends text that stands between nodes.
    void addText(std::string_view text);

    // Well-formed UTF-8 without white space at either end.
    [[nodiscard]] const std::string& text() const noexcept { return m_text; }
    [[nodiscard]] bool empty() const noexcept { return m_text.empty(); }
    // The parts that are code or formulas, in order, none within another.
    [[nodiscard]] const std::vector<Range>& code() const noexcept { return m_code; }

  private:
    void addChildren(Node node);
    void addCode(Node node);
    void addFormula(Node node);

    std::string m_text;
    std::vector<Range> m_code;
    bool m_spaceDue = false;
    int m_codeDepth = 0;
};

// Whether the node shows nothing that belongs to the text: a permalink, a link to the source code,
// line numbers, scripts and the like.
[[nodiscard]] bool isPageFurniture(Node node);

// What a formula's element shows, for a picture its alternative text: as Unicode text where that is
// possible, else as TeX without delimiters. Several lines where the formula has several.
[[nodiscard]] std::string formulaText(Node node);

// The text of a node as running content.
[[nodiscard]] inline std::string inlineText(Node node) {
    return InlineText(node).text();
}

}  // namespace reference::importers::sphinx
