#include "sphinx/FieldItems.hpp"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "sphinx/BlockReader.hpp"
#include "sphinx/InlineText.hpp"
#include "sphinx/Signature.hpp"
#include "sphinx/Text.hpp"

namespace reference::importers::sphinx {
namespace {

void appendText(std::string& text, const std::string& more) {
    if (!more.empty())
        text += (text.empty() ? "" : "\n\n") + more;
}

// Takes "–", "—", "--", "-" or ":" off the front; tells whether there was one.
bool takeSeparator(std::string_view& text) {
    text = trimmed(text);
    for (const std::string_view separator : {"–", "—", "--", "-", ":"})
        if (text.starts_with(separator)) {
            text = trimmed(text.substr(separator.size()));
            return true;
        }
    return false;
}

// Takes a leading "(…)" off the front and returns what is within the brackets.
std::string takeBracketed(std::string_view& text) {
    if (!text.starts_with('('))
        return {};
    int depth = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        depth += text[at] == '(' ? 1 : text[at] == ')' ? -1 : 0;
        if (depth > 0)
            continue;
        std::string inner(trimmed(text.substr(1, at - 1)));
        text = trimmed(text.substr(at + 1));
        return inner;
    }
    return {};
}

// "x, y" gives two names; a name that holds spaces is not taken apart.
std::vector<std::string> splitNames(const std::string& names) {
    std::vector<std::string> parts = splitAtCommas(names);
    const bool areNames = std::ranges::all_of(
        parts, [](const std::string& part) { return part.find(' ') == std::string::npos; });
    if (parts.empty() || !areNames)
        return {names};
    return parts;
}

void addParts(const NamedPart& joint, Field& field) {
    for (std::string& name : splitNames(joint.name)) {
        if (field.role == FieldRole::Properties)
            name = lastComponent(name);
        field.parts.push_back({std::move(name), joint.classifier, joint.text});
    }
}

// The term of a definition: a name and a classifier, in one of two notations. A returned value may
// have a classifier alone.
NamedPart readTerm(Node term, FieldRole role) {
    NamedPart part;
    InlineText name;
    bool hasMarkedName = false;
    for (const Node child : term) {
        if (child.hasClass("classifier")) {
            part.classifier += (part.classifier.empty() ? "" : " : ") + inlineText(child);
        } else if (!child.hasClass("classifier-delimiter")) {
            name.add(child);
            hasMarkedName = hasMarkedName || child.hasTag({"strong", "b"});
        }
    }
    part.name = name.text();
    if (const std::size_t colon = part.name.find(" : ");
        part.classifier.empty() && colon != std::string::npos) {
        part.classifier = part.name.substr(colon + 3);
        part.name.resize(colon);
        hasMarkedName = true;
    }
    while (part.name.ends_with(':') || part.name.ends_with(' '))
        part.name.pop_back();
    if (role == FieldRole::Outputs && part.classifier.empty() && !hasMarkedName)
        std::swap(part.name, part.classifier);
    return part;
}

void readDefinitions(Node list, Field& field) {
    std::vector<NamedPart> terms;
    for (Node node = list.firstElement(); node; node = node.nextElement()) {
        if (node.tag() == "dt") {
            terms.push_back(readTerm(node, field.role));
            continue;
        }
        const std::string text = proseWithin(node);
        for (NamedPart& term : terms) {
            term.text = text;
            addParts(term, field);
        }
        terms.clear();
    }
    for (const NamedPart& term : terms)
        addParts(term, field);
}

bool isNameElement(Node node) {
    return node.hasTag({"strong", "b"});
}

// Names that are set as code or links count only where a type or a separator follows, since prose
// may begin with them, too.
bool mayBeName(Node node) {
    return node.hasTag({"code", "tt", "a"}) || node.hasClass("xref");
}

// One item, "name (classifier) – text", from running content. Nothing where it does not begin with
// a name.
std::optional<NamedPart> readItem(const std::vector<Node>& head, FieldRole role) {
    if (role == FieldRole::OutputType || role == FieldRole::Type)
        return std::nullopt;
    const auto lead = std::ranges::find_if(
        head, [](Node node) { return !node.isBlank() && !inlineText(node).empty(); });
    if (lead == head.end() || !lead->isElement())
        return std::nullopt;
    InlineText rest;
    std::for_each(lead + 1, head.end(), [&](Node node) { rest.add(node); });
    std::string_view text = rest.text();
    NamedPart part;
    part.name = inlineText(*lead);
    if (isNameElement(*lead)) {
        // The separator after a name in bold may itself be bold.
        while (part.name.ends_with(':'))
            part.name.pop_back();
        part.classifier = takeBracketed(text);
        takeSeparator(text);
    } else if (role == FieldRole::Outputs && lead->tag() == "em") {
        if (!takeSeparator(text))
            return std::nullopt;
        part.classifier = std::exchange(part.name, {});
    } else if (mayBeName(*lead) && role != FieldRole::Outputs) {
        part.classifier = takeBracketed(text);
        if (!takeSeparator(text) && !text.empty())
            return std::nullopt;
    } else {
        return std::nullopt;
    }
    part.text = std::string(text);
    return part;
}

// The item that a block container (<li>, <dd>) holds: its first paragraph or its leading running
// content gives name and classifier, everything after it is text.
std::optional<NamedPart> readItemWithin(Node container, FieldRole role) {
    std::vector<Node> content = contentOf(container);
    if (content.empty())
        return std::nullopt;
    std::vector<Node> head;
    auto rest = content.begin();
    if (content.front().tag() == "p") {
        head = {content.front().begin(), content.front().end()};
        ++rest;
    } else {
        // Blank text counts here: it separates the words.
        for (const Node child : container) {
            if (!isInline(child))
                break;
            head.push_back(child);
        }
        rest = std::ranges::find_if_not(content, isInline);
    }
    std::optional<NamedPart> part = readItem(head, role);
    if (part)
        appendText(part->text, proseOf({rest, content.end()}));
    return part;
}

// The items of a list, or nothing where one of them is not of that form.
std::vector<NamedPart> readItems(Node list, FieldRole role) {
    std::vector<NamedPart> parts;
    for (Node item = list.firstElement(); item; item = item.nextElement()) {
        std::optional<NamedPart> part = readItemWithin(item, role);
        if (!part)
            return {};
        parts.push_back(std::move(*part));
    }
    return parts;
}

}  // namespace

void readFieldBody(Node body, Field& field) {
    // Blocks that follow an item given as a paragraph belong to it.
    bool belongsToItem = false;
    const auto addProse = [&](const std::vector<Node>& nodes) {
        appendText(belongsToItem ? field.parts.back().text : field.prose, proseOf(nodes));
    };
    const auto addRunning = [&](const std::vector<Node>& head, const std::vector<Node>& nodes) {
        if (const auto part = readItem(head, field.role)) {
            addParts(*part, field);
            belongsToItem = true;
        } else {
            addProse(nodes);
        }
    };
    std::vector<Node> running;
    const auto endRunning = [&] {
        const std::vector<Node> nodes = std::exchange(running, {});
        if (!std::ranges::all_of(nodes, &Node::isBlank))
            addRunning(nodes, nodes);
    };
    for (const Node child : body) {
        if (isInline(child)) {
            running.push_back(child);
            continue;
        }
        endRunning();
        const bool takesItems =
            field.role != FieldRole::OutputType && field.role != FieldRole::Type && !belongsToItem;
        if (child.tag() == "dl" && takesItems && !isObjectDescription(child)) {
            readDefinitions(child, field);
        } else if (child.hasTag({"ul", "ol"}) && takesItems) {
            const std::vector<NamedPart> parts = readItems(child, field.role);
            for (const NamedPart& part : parts)
                addParts(part, field);
            if (parts.empty())
                addProse({child});
        } else if (child.tag() == "p") {
            addRunning({child.begin(), child.end()}, {child});
        } else {
            addProse({child});
        }
    }
    endRunning();
}

}  // namespace reference::importers::sphinx
