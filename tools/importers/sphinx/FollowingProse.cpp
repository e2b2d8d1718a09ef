#include "sphinx/FollowingProse.hpp"

#include <string>
#include <string_view>

#include "sphinx/InlineText.hpp"
#include "sphinx/Signature.hpp"
#include "sphinx/Text.hpp"

namespace reference::importers::sphinx {
namespace {

bool startsSection(Node node) {
    return node.hasTag({"h1", "h2", "h3", "h4", "h5", "h6"}) ||
           (node.tag() == "p" && node.hasClass("rubric"));
}

bool endsProse(Node node) {
    return isObjectDescription(node) || startsSection(node) || node.tag() == "section" ||
           node.hasClass("section") ||
           node.attribute("id").value_or(std::string_view()).starts_with("module-");
}

// Whether the node shows anything.
bool showsSomething(Node node) {
    for (Node at = node; at; at = at.next(node, isPageFurniture(at)))
        if (!isPageFurniture(at) && (at.tag() == "img" || !trimmed(at.ownText()).empty()))
            return true;
    return false;
}

bool isEmptyDescription(Node node) {
    if (!isObjectDescription(node))
        return false;
    for (const Node child : node)
        if (child.tag() == "dd" && showsSomething(child))
            return false;
    return true;
}

// The next sibling that shows something or is a description; null: none.
Node nextShown(Node node) {
    do
        node = node.nextSibling();
    while (node && !endsProse(node) && !showsSomething(node));
    return node;
}

bool introducesNext(Node paragraph) {
    const std::string text = inlineText(paragraph);
    return paragraph.tag() == "p" &&
           (text.ends_with(':') || text.ends_with("\uFF1A") || text.starts_with("The following"));
}

// Whether prose comes before what it describes in the place that holds the description.
bool setsProseFirst(Node description) {
    Node first = description.parent().firstChild();
    while (first && (startsSection(first) || (!endsProse(first) && !showsSomething(first))))
        first = first.nextSibling();
    if (endsProse(first))
        return false;
    Node last = description;
    for (Node node = description; node; node = nextShown(node)) {
        if (node.tag() == "section" || node.hasClass("section"))
            break;
        last = node;
    }
    return isEmptyDescription(last);
}

}  // namespace

std::vector<Node> followingProse(Node description) {
    if (!isEmptyDescription(description))
        return {};
    Node node = nextShown(description);
    while (node && isEmptyDescription(node))
        node = nextShown(node);
    std::vector<Node> prose;
    for (; node && !endsProse(node); node = nextShown(node))
        prose.push_back(node);
    if (!prose.empty() && isObjectDescription(node) && introducesNext(prose.back()))
        prose.pop_back();
    if (prose.empty() || setsProseFirst(description))
        return {};
    return prose;
}

}  // namespace reference::importers::sphinx
