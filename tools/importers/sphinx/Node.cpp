#include "sphinx/Node.hpp"

#include <algorithm>
#include <limits>

#include <gumbo.h>

#include "sphinx/HtmlError.hpp"
#include "sphinx/Text.hpp"

namespace reference::importers::sphinx {
namespace {

const GumboVector* childrenOf(const GumboNode* node) noexcept {
    if (node == nullptr)
        return nullptr;
    if (node->type == GUMBO_NODE_ELEMENT || node->type == GUMBO_NODE_TEMPLATE)
        return &node->v.element.children;
    return node->type == GUMBO_NODE_DOCUMENT ? &node->v.document.children : nullptr;
}

// Not counted outside a NodeSteps.
thread_local std::size_t stepsLeft = std::numeric_limits<std::size_t>::max();

void takeSteps(std::size_t count) {
    if (count > stepsLeft)
        throw HtmlError("Its elements are put together in a way that would take too long to read.");
    stepsLeft -= count;
}

const GumboNode* childAt(const GumboNode* node, std::size_t index) {
    takeSteps(1);
    const GumboVector* children = childrenOf(node);
    return children != nullptr && index < children->length
               ? static_cast<const GumboNode*>(children->data[index])
               : nullptr;
}

}  // namespace

NodeSteps::NodeSteps(std::size_t allowed) noexcept {
    stepsLeft = allowed;
}

NodeSteps::~NodeSteps() {
    stepsLeft = std::numeric_limits<std::size_t>::max();
}

bool Node::isElement() const noexcept {
    return m_node != nullptr &&
           (m_node->type == GUMBO_NODE_ELEMENT || m_node->type == GUMBO_NODE_TEMPLATE);
}

std::string_view Node::tag() const noexcept {
    return isElement() ? gumbo_normalized_tagname(m_node->v.element.tag) : std::string_view();
}

bool Node::hasTag(std::initializer_list<std::string_view> tags) const noexcept {
    return isElement() && std::ranges::find(tags, tag()) != tags.end();
}

std::string_view Node::ownText() const noexcept {
    if (m_node == nullptr ||
        (m_node->type != GUMBO_NODE_TEXT && m_node->type != GUMBO_NODE_WHITESPACE &&
         m_node->type != GUMBO_NODE_CDATA))
        return {};
    return m_node->v.text.text;
}

bool Node::isBlank() const noexcept {
    if (m_node == nullptr || isElement())
        return false;
    return m_node->type == GUMBO_NODE_WHITESPACE || m_node->type == GUMBO_NODE_COMMENT ||
           trimmed(ownText()).empty();
}

std::optional<std::string_view> Node::attribute(const char* name) const noexcept {
    if (!isElement())
        return std::nullopt;
    const GumboAttribute* found = gumbo_get_attribute(&m_node->v.element.attributes, name);
    if (found == nullptr)
        return std::nullopt;
    return std::string_view(found->value);
}

bool Node::hasClass(std::string_view name) const noexcept {
    std::string_view classes = attribute("class").value_or(std::string_view());
    while (!classes.empty()) {
        const std::size_t end = std::min(classes.find_first_of(" \t\r\n\f"), classes.size());
        if (classes.substr(0, end) == name)
            return true;
        classes.remove_prefix(std::min(end + 1, classes.size()));
    }
    return false;
}

bool Node::hasAnyClass(std::initializer_list<std::string_view> names) const noexcept {
    return std::ranges::any_of(names, [this](auto name) { return hasClass(name); });
}

std::size_t Node::offset() const noexcept {
    return isElement() ? m_node->v.element.start_pos.offset : 0;
}

Node Node::parent() const noexcept {
    return Node(m_node != nullptr ? m_node->parent : nullptr);
}

Node Node::firstChild() const {
    return Node(childAt(m_node, 0));
}

Node Node::nextSibling() const {
    return m_node != nullptr ? Node(childAt(m_node->parent, m_node->index_within_parent + 1))
                             : Node();
}

Node Node::firstElement() const {
    const Node child = firstChild();
    return !child || child.isElement() ? child : child.nextElement();
}

Node Node::nextElement() const {
    Node sibling = nextSibling();
    while (sibling && !sibling.isElement())
        sibling = sibling.nextSibling();
    return sibling;
}

Node Node::previousElement() const {
    if (m_node == nullptr)
        return {};
    for (std::size_t index = m_node->index_within_parent; index-- > 0;)
        if (const Node sibling(childAt(m_node->parent, index)); sibling.isElement())
            return sibling;
    return {};
}

Node Node::next(Node root, bool passOver) const {
    if (const Node child = firstChild(); child && !passOver)
        return child;
    for (Node node = *this; node && node != root; node = node.parent())
        if (const Node sibling = node.nextSibling())
            return sibling;
    return {};
}

Node Node::findClass(std::string_view name) const {
    for (Node node = next(*this); node; node = node.next(*this))
        if (node.hasClass(name))
            return node;
    return {};
}

Node Node::findTag(std::string_view name) const {
    for (Node node = next(*this); node; node = node.next(*this))
        if (node.tag() == name)
            return node;
    return {};
}

Node::Iterator Node::begin() const {
    const GumboVector* children = childrenOf(m_node);
    takeSteps(children != nullptr ? children->length : 0);
    return Iterator(children != nullptr ? children->data : nullptr);
}

Node::Iterator Node::end() const noexcept {
    const GumboVector* children = childrenOf(m_node);
    return Iterator(children != nullptr && children->data != nullptr
                        ? children->data + children->length
                        : nullptr);
}

}  // namespace reference::importers::sphinx
