#pragma once

#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <optional>
#include <string_view>

struct GumboInternalNode;

namespace reference::importers::sphinx {

// How many steps from node to node this thread may still take while it reads a page. Some ways
// through a page that no honest author writes would take time that grows with the square of its
// size; this is what ends them. One at a time in a thread; without one, steps are not counted.
class NodeSteps {
  public:
    explicit NodeSteps(std::size_t allowed) noexcept;
    ~NodeSteps();
    NodeSteps(const NodeSteps&) = delete;  // the thread counts down one number
    NodeSteps& operator=(const NodeSteps&) = delete;
};

// One node of a parsed page: a light handle, to be copied freely, that may be null. Handles and the
// texts they return live as long as their document; any thread may read a document. What leads to
// another node throws HtmlError where the thread's NodeSteps are used up.
class Node {
  public:
    // Null.
    Node() = default;
    explicit Node(const GumboInternalNode* node) noexcept : m_node(node) {}

    [[nodiscard]] explicit operator bool() const noexcept { return m_node != nullptr; }
    [[nodiscard]] bool isElement() const noexcept;

    // The element's name in lower case ("dl"); empty for other nodes and for elements that HTML
    // does not know.
    [[nodiscard]] std::string_view tag() const noexcept;
    [[nodiscard]] bool hasTag(std::initializer_list<std::string_view> tags) const noexcept;

    // The content of a text node; empty for every other node.
    [[nodiscard]] std::string_view ownText() const noexcept;
    // Whether this is a text node of nothing but white space, or a comment.
    [[nodiscard]] bool isBlank() const noexcept;

    [[nodiscard]] std::optional<std::string_view> attribute(const char* name) const noexcept;
    [[nodiscard]] bool hasClass(std::string_view name) const noexcept;
    [[nodiscard]] bool hasAnyClass(std::initializer_list<std::string_view> names) const noexcept;

    // How many bytes stand before the element's start tag in the page's text.
    [[nodiscard]] std::size_t offset() const noexcept;

    // Null where there is none. Siblings are of every kind, including texts and comments.
    [[nodiscard]] Node parent() const noexcept;
    [[nodiscard]] Node firstChild() const;
    [[nodiscard]] Node nextSibling() const;
    [[nodiscard]] Node firstElement() const;
    [[nodiscard]] Node nextElement() const;
    [[nodiscard]] Node previousElement() const;

    // The node that follows this one in page order within `root`, this one's children first; with
    // `passOver`, the node that follows after its children. Null at the end.
    [[nodiscard]] Node next(Node root, bool passOver = false) const;

    // The first element within this one, in page order, that has the class; null: none.
    [[nodiscard]] Node findClass(std::string_view name) const;
    // Likewise by element name.
    [[nodiscard]] Node findTag(std::string_view name) const;

    friend bool operator==(Node, Node) = default;

    // For loops over the children: `for (const Node child : node)`.
    class Iterator {
      public:
        using iterator_category = std::input_iterator_tag;
        using value_type = Node;
        using difference_type = std::ptrdiff_t;
        using pointer = void;
        using reference = Node;

        explicit Iterator(const void* const* place) noexcept : m_place(place) {}
        [[nodiscard]] Node operator*() const noexcept {
            return Node(static_cast<const GumboInternalNode*>(*m_place));
        }
        Iterator& operator++() noexcept {
            ++m_place;
            return *this;
        }
        Iterator operator++(int) noexcept { return Iterator(m_place++); }
        friend bool operator==(Iterator, Iterator) = default;

      private:
        const void* const* m_place;
    };
    [[nodiscard]] Iterator begin() const;
    [[nodiscard]] Iterator end() const noexcept;

  private:
    const GumboInternalNode* m_node = nullptr;
};

}  // namespace reference::importers::sphinx
