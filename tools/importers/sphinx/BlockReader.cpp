#include "sphinx/BlockReader.hpp"

#include <algorithm>
#include <charconv>
#include <utility>

#include "sphinx/FieldLists.hpp"
#include "sphinx/FollowingProse.hpp"
#include "sphinx/Signature.hpp"
#include "sphinx/Tables.hpp"
#include "sphinx/Text.hpp"
#include "sphinx/VersionBoxes.hpp"

namespace reference::importers::sphinx {
namespace {

bool isHeading(Node node) {
    return node.hasTag({"h1", "h2", "h3", "h4", "h5", "h6"}) ||
           (node.tag() == "p" && node.hasAnyClass({"rubric", "topic-title", "sidebar-title"}));
}

bool isCode(Node node) {
    if (node.tag() == "pre")
        return true;
    if (!node.hasTag({"div", "table"}))
        return false;
    return node.hasAnyClass({"highlight", "doctest", "literal-block-wrapper", "highlighttable"}) ||
           node.attribute("class").value_or(std::string_view()).starts_with("highlight-");
}

bool isFootnote(Node node) {
    return node.hasTag({"div", "aside"}) && node.hasAnyClass({"footnote", "citation"}) &&
           !node.hasClass("footnote-list");
}

// A description whose signature lines have an id can be linked to: it is an object of its own. One
// without is part of the text that it stands in.
bool isOwnObject(Node node) {
    if (!isObjectDescription(node))
        return false;
    for (Node line = node.firstElement(); line; line = line.nextElement()) {
        if (line.tag() != "dt")
            continue;
        for (Node at = line; at; at = at.next(line))
            if (!at.attribute("id").value_or(std::string_view()).empty())
                return true;
    }
    return false;
}

bool isPassedOver(Node node) {
    return isPageFurniture(node) || node.hasAnyClass({"toctree-wrapper", "contents"}) ||
           isOwnObject(node) || node.hasTag({"hr", "object", "iframe", "form"});
}

// The text of a <pre> as it is, without line numbers.
std::string codeText(Node pre) {
    std::string text;
    for (Node node = pre.next(pre); node; node = node.next(pre, isPageFurniture(node)))
        if (!node.isElement())
            text += node.ownText();
    while (text.ends_with('\n') || text.ends_with('\r') || text.ends_with(' '))
        text.pop_back();
    return text;
}

// Not one that holds line numbers.
bool isPreOfCode(Node node) {
    return node.tag() == "pre" && !isPageFurniture(node) && !isPageFurniture(node.parent()) &&
           !isPageFurniture(node.parent().parent());
}

Node preWithin(Node node) {
    for (Node at = node; at; at = at.next(node, isPageFurniture(at)))
        if (isPreOfCode(at))
            return at;
    return {};
}

// A paragraph that is all bold serves as a heading.
bool isBoldOnly(Node paragraph) {
    const std::vector<Node> content = contentOf(paragraph);
    if (content.empty() || !content.front().hasTag({"strong", "b"}))
        return false;
    return content.size() == 1 || (content.size() == 2 && trimmed(content[1].ownText()) == ":");
}

// "(Source code, png, pdf)" and the like: nothing but links in brackets.
bool isLinksInBrackets(Node paragraph) {
    const std::vector<Node> content = contentOf(paragraph);
    if (content.size() < 3 || !trimmed(content.front().ownText()).starts_with('(') ||
        !trimmed(content.back().ownText()).ends_with(')'))
        return false;
    return std::ranges::all_of(content, [](Node node) {
        if (node.isElement())
            return node.tag() == "a" && !node.hasClass("internal");
        return node.ownText().find_first_not_of(" \t\r\n(),") == std::string_view::npos;
    });
}

// The text with every line indented, the first one only if `setsFirst`. Empty lines are indented,
// too: an empty line would end the block.
std::string setIn(const std::string& text, std::size_t width, bool setsFirst) {
    const std::string space(width, ' ');
    return (setsFirst ? space : std::string()) + withSetLines(text, space);
}

// Adds an item to the text of a list. `mark` is what it begins with, "- " for example; `lead` is
// what stands before its blocks, such as the term of a definition.
void addItem(const std::string& mark, const std::string& lead,
             const std::vector<std::string>& blocks, std::string& list) {
    std::string item = joined(blocks, "\n");
    if (!lead.empty())
        item = item.empty() ? lead : withLead(lead + ":", item);
    if (!item.empty())
        list += (list.empty() ? "" : "\n") + mark + setIn(item, mark.size(), false);
}

int firstNumberOf(Node list) {
    const std::string_view text = list.attribute("start").value_or("1");
    int number = 1;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

}  // namespace

bool isInline(Node node) {
    if (!node.isElement())
        return true;
    return node.hasTag({"a",      "abbr", "b",    "bdi",  "big", "br",   "cite",  "code",
                        "del",    "dfn",  "em",   "font", "i",   "img",  "ins",   "kbd",
                        "label",  "mark", "math", "q",    "s",   "samp", "small", "span",
                        "strong", "sub",  "sup",  "time", "tt",  "u",    "var",   "wbr"});
}

std::vector<Node> contentOf(Node container) {
    std::vector<Node> content;
    for (const Node child : container)
        if (!child.isBlank())
            content.push_back(child);
    return content;
}

std::string proseOf(const std::vector<Node>& nodes) {
    BlockReader reader;
    reader.readNodes(nodes);
    return reader.prose();
}

std::string proseWithin(Node container) {
    BlockReader reader;
    reader.readChildren(container);
    return reader.prose();
}

std::string BlockReader::prose() const {
    return joined(m_blocks, "\n\n");
}

void BlockReader::readChildren(Node container) {
    readNodes({container.begin(), container.end()});
}

void BlockReader::readNodes(const std::vector<Node>& nodes) {
    InlineText running;
    const auto endRunning = [&] {
        if (!running.empty())
            onParagraph(running, {});
        running = {};
    };
    // What belongs to an object with a place of its own, although it stands here.
    std::vector<Node> others;
    for (const Node node : nodes) {
        if (std::ranges::find(others, node) != others.end())
            continue;
        if (isInline(node)) {
            running.add(node);
            continue;
        }
        endRunning();
        if (isOwnObject(node))
            others = followingProse(node);
        else
            readBlock(node);
    }
    endRunning();
}

void BlockReader::addBlock(std::string text) {
    if (text.empty())
        return;
    if (isNested())
        m_blocks.push_back(std::move(text));
    else
        onBlock(std::move(text));
}

std::vector<std::string> BlockReader::capture(const std::function<void()>& read) {
    std::vector<std::string> outer = std::exchange(m_blocks, {});
    ++m_depth;
    read();
    --m_depth;
    return std::exchange(m_blocks, std::move(outer));
}

void BlockReader::onBlock(std::string text) {
    keep(std::move(text));
}

void BlockReader::onParagraph(const InlineText& text, Node) {
    addBlock(text.text());
}

void BlockReader::onHeading(const std::string& text, bool) {
    addBlock(text);
}

void BlockReader::onCode(const Code& code) {
    constexpr std::size_t codeIndent = 4;
    addBlock(setIn(code.text, codeIndent, true));
}

void BlockReader::onSeeAlso(Node box) {
    readAdmonition(box);
}

void BlockReader::onFieldList(Node list) {
    for (const Field& field : readFieldList(list))
        addBlock(fieldText(field));
}

void BlockReader::onVersionBox(Node box) {
    for (std::string& block : capture([&] { readChildren(box); }))
        addBlock(std::move(block));
}

// Tables that list members only repeat what the members' own descriptions say.
void BlockReader::onTable(Node table) {
    if (table.hasAnyClass({"autosummary", "indextable"}))
        return;
    // Older pages set footnotes as tables.
    addBlock(table.hasAnyClass({"footnote", "citation"}) ? inlineText(table) : tableText(table));
}

// Looks for the more special kinds of block first.
void BlockReader::readBlock(Node node) {
    if (isPassedOver(node))
        return;
    if (isVersionBox(node))
        onVersionBox(node);
    else if (isHeading(node))
        onHeading(inlineText(node), false);
    else if (node.tag() == "p")
        readParagraph(node);
    else if (node.hasClass("seealso"))
        onSeeAlso(node);
    else if (node.hasClass("admonition"))
        readAdmonition(node);
    else if (isCode(node))
        readCode(node);
    else if (isFieldList(node))
        onFieldList(node);
    else if (node.hasClass("math"))
        addBlock(formulaText(node));
    else if (isFootnote(node))
        readNote(node);
    else if (node.hasTag({"ul", "ol"}))
        readList(node);
    else if (node.tag() == "dl")
        readDefinitions(node);
    else if (node.tag() == "table")
        onTable(node);
    else if (node.hasClass("line-block"))
        readLines(node);
    else
        readChildren(node);
}

void BlockReader::readParagraph(Node node) {
    if (isLinksInBrackets(node))
        return;
    // Displayed formulas are blocks, but some pages put them within a paragraph.
    const InlineText text(node);
    if (text.empty())
        return;
    if (isBoldOnly(node))
        onHeading(withoutColon(text.text()), true);
    else
        onParagraph(text, node);
}

void BlockReader::readCode(Node node) {
    const Node pre = preWithin(node);
    if (!pre)
        return;
    Code code;
    code.text = codeText(pre);
    if (const Node caption = node.findClass("caption-text"))
        code.caption = inlineText(caption);
    code.isLiteral = node.tag() == "pre" ||
                     node.hasAnyClass({"highlight-none", "highlight-text"}) ||
                     node.findClass("highlight-none") || node.findClass("highlight-text");
    if (!code.text.empty())
        onCode(code);
}

void BlockReader::readList(Node list) {
    std::string text;
    int number = firstNumberOf(list);
    for (Node item = list.firstElement(); item; item = item.nextElement()) {
        const std::string mark = list.tag() == "ol" ? std::to_string(number++) + ". " : "- ";
        addItem(mark, {}, capture([&] { readChildren(item); }), text);
    }
    addBlock(std::move(text));
}

void BlockReader::readDefinitions(Node list) {
    std::string text;
    std::string term;
    for (Node node = list.firstElement(); node; node = node.nextElement()) {
        if (node.tag() == "dt") {
            term += (term.empty() ? "" : ", ") + withoutColon(inlineText(node));
        } else {
            addItem("- ", std::exchange(term, {}), capture([&] { readChildren(node); }), text);
        }
    }
    addItem("- ", term, {}, text);
    addBlock(std::move(text));
}

void BlockReader::readAdmonition(Node box) {
    std::string title;
    std::vector<Node> content;
    for (const Node child : box) {
        if (child.hasClass("admonition-title"))
            title = withoutColon(inlineText(child));
        else
            content.push_back(child);
    }
    const std::vector<std::string> blocks = capture([&] { readNodes(content); });
    if (blocks.empty())
        return;
    const std::string text = joined(blocks, "\n\n");
    addBlock(title.empty() ? text : withLead(title + ":", text));
}

// A footnote or a reference: its label, then its text.
void BlockReader::readNote(Node note) {
    std::vector<Node> content;
    std::string label;
    for (const Node child : note) {
        if (child.hasClass("label"))
            label = inlineText(child);
        else
            content.push_back(child);
    }
    const std::string text = joined(capture([&] { readNodes(content); }), "\n\n");
    if (!label.empty() && !label.starts_with('['))
        label = "[" + label + "]";
    addBlock(label.empty() || text.empty() ? label + text : label + " " + text);
}

void BlockReader::readLines(Node block) {
    std::vector<std::string> lines;
    for (Node line = block.firstElement(); line; line = line.nextElement())
        lines.push_back(inlineText(line));
    addBlock(joined(lines, "\n"));
}

std::vector<std::string> codeWithin(Node container) {
    std::vector<std::string> code;
    for (Node at = container; at; at = at.next(container, isPageFurniture(at)))
        if (isPreOfCode(at))
            code.push_back(codeText(at));
    return code;
}

}  // namespace reference::importers::sphinx
