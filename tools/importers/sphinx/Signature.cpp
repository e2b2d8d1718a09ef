#include "sphinx/Signature.hpp"

#include <algorithm>
#include <string_view>

#include "sphinx/InlineText.hpp"
#include "sphinx/Text.hpp"

namespace reference::importers::sphinx {
namespace {

// The name that the line defines. Template parameters have the same class, so the last one before
// the opening bracket is meant.
Node definedName(Node dt) {
    Node name;
    for (Node node = dt.next(dt); node; node = node.next(dt)) {
        if (node.hasClass("sig-paren"))
            break;
        if (node.hasAnyClass({"sig-name", "descname"}))
            name = node;
    }
    return name;
}

// A signature set over several lines has its parameters in a list of their own; the brackets and
// commas should read as they would on one line.
std::string signatureText(Node dt) {
    InlineText text;
    for (const Node child : dt)
        text.add(child);
    return dt.findTag("dd") ? withoutGaps(text.text()) : text.text();
}

void addPrefixes(Node dt, Node name, SignatureFacts& facts) {
    for (const Node child : dt) {
        if (child == name || child.hasAnyClass({"sig-prename", "descclassname"}))
            break;
        if (!child.hasAnyClass({"property", "k"}))
            continue;
        const std::string words = inlineText(child);
        std::size_t begin = 0;
        while (begin < words.size()) {
            const std::size_t end = std::min(words.find(' ', begin), words.size());
            facts.prefixes.push_back(words.substr(begin, end - begin));
            begin = end + 1;
        }
    }
}

// What follows the name: ": type", and after it perhaps "= value".
std::string typeAfterName(Node name) {
    std::string rest;
    for (Node node = name.nextSibling(); node; node = node.nextSibling()) {
        if (node.hasTag({"br"}))
            break;
        const std::string text = inlineText(node);
        if (node.isElement() && text.starts_with('='))
            break;
        rest += text;
        rest += node.isElement() ? "" : " ";
    }
    const std::string_view type = trimmed(rest);
    return type.starts_with(':') ? std::string(trimmed(type.substr(1))) : std::string();
}

// What follows "=" after the name.
std::string valueAfterName(Node name) {
    InlineText rest;
    for (Node node = name.nextSibling(); node && !node.hasTag({"br"}); node = node.nextSibling())
        rest.add(node);
    const std::size_t sign = rest.text().find('=');
    return sign == std::string::npos ? std::string()
                                     : std::string(trimmed(rest.text().substr(sign + 1)));
}

bool isFollowedByBracket(Node name) {
    Node node = name.nextSibling();
    while (node && inlineText(node).empty())
        node = node.nextSibling();
    return node && (node.hasClass("sig-paren") || inlineText(node).starts_with('('));
}

// What stands before the name: "type name".
std::string typeBeforeName(Node dt, Node name) {
    InlineText type;
    for (const Node child : dt) {
        if (child == name || child.hasAnyClass({"sig-prename", "descclassname"}))
            break;
        type.add(child);
    }
    return type.text();
}

std::vector<std::string> parametersOf(std::string_view text) {
    const std::size_t open = text.find('(');
    const std::size_t close = text.rfind(')');
    if (open == std::string_view::npos || close == std::string_view::npos || close < open)
        return {};
    return splitAtCommas(text.substr(open + 1, close - open - 1));
}

std::vector<std::string> idsOf(Node dt) {
    std::vector<std::string> ids;
    for (Node node = dt; node; node = node.next(dt))
        if (const auto id = node.attribute("id"); id && !id->empty())
            ids.emplace_back(*id);
    return ids;
}

bool describesObject(Node dt) {
    return dt.hasAnyClass({"sig", "sig-object"}) || dt.findClass("descname") ||
           dt.findClass("sig-name");
}

}  // namespace

bool isObjectDescription(Node node) {
    if (node.tag() != "dl" || node.hasAnyClass({"field-list", "simple", "docutils", "glossary",
                                                "footnote", "citation", "option-list"}))
        return false;
    for (Node child = node.firstElement(); child; child = child.nextElement())
        if (child.tag() == "dt")
            return describesObject(child);
    return false;
}

SignatureFacts readSignature(Node dt) {
    SignatureFacts facts;
    facts.text = signatureText(dt);
    facts.parameters = parametersOf(facts.text);
    facts.anchors = idsOf(dt);
    if (const Node name = definedName(dt)) {
        addPrefixes(dt, name, facts);
        facts.name = inlineText(name);
        const bool isC = dt.parent().hasClass("c") || dt.parent().hasClass("member");
        if (isC && facts.text.find('(') == std::string::npos)
            facts.type = typeBeforeName(dt, name);
        // A value may have brackets, too: only those right after the name hold parameters.
        if (!isC && !isFollowedByBracket(name)) {
            facts.type = typeAfterName(name);
            facts.value = valueAfterName(name);
        }
    }
    return facts;
}

}  // namespace reference::importers::sphinx
