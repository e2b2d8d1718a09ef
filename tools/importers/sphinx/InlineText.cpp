#include "sphinx/InlineText.hpp"

#include <algorithm>

#include "sphinx/MathText.hpp"
#include "sphinx/Text.hpp"

namespace reference::importers::sphinx {
namespace {

std::string_view withoutDelimiters(std::string_view tex) {
    struct Pair {
        std::string_view open;
        std::string_view close;
    };
    tex = trimmed(tex);
    for (const auto& [open, close] : {Pair{"\\(", "\\)"}, Pair{"\\[", "\\]"}, Pair{"$$", "$$"}})
        if (tex.size() >= open.size() + close.size() && tex.starts_with(open) &&
            tex.ends_with(close))
            return trimmed(tex.substr(open.size(), tex.size() - open.size() - close.size()));
    return tex;
}

// Footnote marks get their brackets from the style sheet.
bool lacksBrackets(Node node) {
    return node.hasClass("brackets") && node.hasTag({"a", "span"}) && !node.findClass("fn-bracket");
}

}  // namespace

bool isPageFurniture(Node node) {
    if (!node.isElement())
        return false;
    if (node.hasTag({"script", "style", "button", "input", "nav", "svg", "template"}))
        return true;
    if (node.hasAnyClass({"headerlink", "viewcode-link", "viewcode-back", "linenos", "lineno",
                          "copybtn", "system-message", "backrefs", "eqno", "section-number"}))
        return true;
    // The link around "[source]" is dropped with its mark, even where it holds white space.
    return node.tag() == "a" && node.findClass("viewcode-link");
}

std::string formulaText(Node node) {
    // Formulas rendered in advance carry their source in an annotation.
    if (const Node annotation = node.findTag("annotation"))
        return mathText(withoutDelimiters(InlineText(annotation).text()));
    if (node.tag() == "img")
        return mathText(withoutDelimiters(node.attribute("alt").value_or(std::string_view())));
    std::string tex;
    for (Node at = node.next(node); at; at = at.next(node, isPageFurniture(at))) {
        if (isPageFurniture(at))
            continue;
        if (at.tag() == "img")
            tex += at.attribute("alt").value_or(std::string_view());
        else if (at.tag().empty())
            tex += at.ownText();
    }
    return mathText(withoutDelimiters(tex));
}

void InlineText::addText(std::string_view text) {
    const std::string plain = collapsed(text);
    if (plain.empty()) {
        m_spaceDue = m_spaceDue || (!text.empty() && !m_text.empty());
        return;
    }
    const bool beginsWithSpace = trimmed(text).data() != text.data();
    if ((m_spaceDue || beginsWithSpace) && !m_text.empty())
        m_text += ' ';
    m_text += plain;
    const std::string_view kept = trimmed(text);
    m_spaceDue = kept.data() + kept.size() != text.data() + text.size();
}

void InlineText::addChildren(Node node) {
    for (const Node child : node)
        add(child);
}

void InlineText::addCode(Node node) {
    if (m_codeDepth > 0) {
        addChildren(node);
        return;
    }
    const std::size_t begin = m_text.size() + (m_spaceDue && !m_text.empty() ? 1 : 0);
    ++m_codeDepth;
    addChildren(node);
    --m_codeDepth;
    if (m_text.size() > begin)
        m_code.push_back({begin, m_text.size()});
}

void InlineText::addFormula(Node node) {
    const std::size_t begin = m_text.size() + (m_spaceDue && !m_text.empty() ? 1 : 0);
    addText(formulaText(node));
    if (m_text.size() > begin && m_codeDepth == 0)
        m_code.push_back({begin, m_text.size()});
}

void InlineText::add(Node node) {
    if (!node.isElement()) {
        addText(node.ownText());
        return;
    }
    if (isPageFurniture(node))
        return;
    if (node.hasAnyClass({"math", "katex"}) || node.tag() == "math") {
        addFormula(node);
    } else if (node.hasTag({"code", "tt", "kbd", "samp"})) {
        addCode(node);
    } else if (node.tag() == "br") {
        addText(" ");
    } else if (node.hasTag({"sup", "sub"}) && !node.findTag("a")) {
        // Separated from what they follow: ten to the third must not read 103.
        addText(node.tag() == "sup" ? "^" : "_");
        addChildren(node);
    } else if (lacksBrackets(node)) {
        addText("[");
        addChildren(node);
        addText("]");
    } else if (node.hasTag({"dl", "dd", "p", "div", "li", "ul", "ol", "td", "th"})) {
        addText(" ");
        addChildren(node);
        addText(" ");
    } else {
        addChildren(node);
    }
}

}  // namespace reference::importers::sphinx
