#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>

#include "sphinx/HtmlError.hpp"
#include "sphinx/Node.hpp"

namespace reference::importers::sphinx {

// The storage that the tree of one page lives in. Reusing one arena for many pages saves most of
// the cost of allocation. Not to be used by two threads at a time.
class HtmlArena {
  public:
    HtmlArena();
    ~HtmlArena();
    HtmlArena(const HtmlArena&) = delete;
    HtmlArena& operator=(const HtmlArena&) = delete;

  private:
    friend class HtmlDocument;
    class Storage;
    std::unique_ptr<Storage> m_storage;
};

// One page, parsed as a browser would parse it. One at a time may exist in an arena; its nodes live
// as long as the document, the arena and the text.
//
// Its depth is bounded, so that it can be walked by recursion.
class HtmlDocument {
  public:
    // How deeply elements may be nested.
    static constexpr int maxDepth = 512;
    // How many attributes an element may have: the parser compares each with all others.
    static constexpr int maxAttributes = 500;
    // How many steps from node to node the reading may take for each node of the page.
    static constexpr std::size_t maxStepsForNode = 250;

    // Parses well-formed UTF-8. Throws HtmlError where elements are nested deeper than `maxDepth`,
    // one has more than `maxAttributes`, or the tree would take more than 512 MiB: no honest page
    // comes near that. Throws std::bad_alloc where the system has no more memory, which is no fault
    // of the page. From then on its nodes throw HtmlError once reading them has taken more than
    // `maxStepsForNode` steps for each of them. To be destroyed by the thread that made it.
    HtmlDocument(HtmlArena& arena, std::string_view text);
    ~HtmlDocument();
    HtmlDocument(const HtmlDocument&) = delete;
    HtmlDocument& operator=(const HtmlDocument&) = delete;

    // The element <html>.
    [[nodiscard]] Node root() const noexcept { return m_root; }

  private:
    HtmlArena& m_arena;
    Node m_root;
    std::optional<NodeSteps> m_steps;
};

}  // namespace reference::importers::sphinx
