#pragma once

#include <functional>
#include <string>
#include <vector>

#include "sphinx/InlineText.hpp"
#include "sphinx/Node.hpp"

namespace reference::importers::sphinx {

// Walks the blocks of a page (paragraphs, lists, admonitions, tables, code) and turns them into
// prose. It passes over tables of contents, pictures, and the descriptions of objects with a place
// of their own, together with the prose that belongs to them. A derived class can handle some kinds
// of block itself; by default everything becomes text:
//   - the items of a list begin with "- " or a number, and everything else in an item is indented
//     to where the item's text begins;
//   - the lines of code are indented by four spaces;
//   - tables have the form that Tables.hpp describes.
//
// Not to be used by two threads at a time.
class BlockReader {
  public:
    BlockReader() = default;
    virtual ~BlockReader() = default;
    BlockReader(const BlockReader&) = delete;
    BlockReader& operator=(const BlockReader&) = delete;

    // Reads the nodes in order. Running content between blocks counts as paragraphs.
    void readNodes(const std::vector<Node>& nodes);
    void readChildren(Node container);

    // What was read so far: paragraphs separated by an empty line.
    [[nodiscard]] std::string prose() const;

  protected:
    struct Code {
        // Without a line feed at the end.
        std::string text;
        std::string caption;
        // Whether the page shows it as plain text, in no programming language.
        bool isLiteral = false;
    };

    // Each of these is called for one block; the base class makes prose of it.
    virtual void onParagraph(const InlineText& text, Node paragraph);
    // `isParagraph`: the heading is a paragraph all of which is set in bold.
    virtual void onHeading(const std::string& text, bool isParagraph);
    virtual void onCode(const Code& code);
    virtual void onSeeAlso(Node box);
    virtual void onFieldList(Node list);
    virtual void onVersionBox(Node box);
    virtual void onTable(Node table);
    // A finished block of prose that stands in no list or admonition.
    virtual void onBlock(std::string text);

    // Adds a block of prose where the reader stands.
    void addBlock(std::string text);
    // Adds a block of prose, whatever `onBlock` does.
    void keep(std::string text) { m_blocks.push_back(std::move(text)); }
    // The block that was added last where the reader stands, which may be changed or taken away;
    // nothing where there is none.
    [[nodiscard]] std::string* lastBlock() { return m_blocks.empty() ? nullptr : &m_blocks.back(); }
    void dropLastBlock() { m_blocks.pop_back(); }
    // The blocks that `read` yields, taken out of the prose.
    [[nodiscard]] std::vector<std::string> capture(const std::function<void()>& read);
    // Whether the reader stands within a list, an admonition or the like.
    [[nodiscard]] bool isNested() const noexcept { return m_depth > 0; }

  private:
    void readBlock(Node node);
    void readParagraph(Node node);
    void readCode(Node node);
    void readList(Node list);
    void readDefinitions(Node list);
    void readAdmonition(Node box);
    void readNote(Node note);
    void readLines(Node block);

    std::vector<std::string> m_blocks;
    int m_depth = 0;
};

// The prose of some nodes, or of everything within one.
[[nodiscard]] std::string proseOf(const std::vector<Node>& nodes);
[[nodiscard]] std::string proseWithin(Node container);

// The text of each block of code within a node as it is, without line numbers.
[[nodiscard]] std::vector<std::string> codeWithin(Node container);

// Whether the node is part of running content rather than a block.
[[nodiscard]] bool isInline(Node node);

// The children of a node that are neither white space nor comments.
[[nodiscard]] std::vector<Node> contentOf(Node container);

}  // namespace reference::importers::sphinx
