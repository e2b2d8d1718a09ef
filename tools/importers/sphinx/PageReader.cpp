#include "sphinx/PageReader.hpp"

#include <algorithm>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <unordered_map>
#include <utility>

#include "sphinx/CodeNames.hpp"
#include "sphinx/DescriptionBody.hpp"
#include "sphinx/FollowingProse.hpp"
#include "sphinx/Hrefs.hpp"
#include "sphinx/InlineText.hpp"
#include "sphinx/Signature.hpp"
#include "sphinx/Text.hpp"

namespace reference::importers::sphinx {
namespace {

bool isHtmlHeading(Node node) {
    return node.hasTag({"h1", "h2", "h3", "h4", "h5", "h6"});
}

bool isSection(Node node) {
    return node.tag() == "section" || (node.tag() == "div" && node.hasClass("section"));
}

bool isGlossary(Node node) {
    return node.tag() == "dl" && node.hasClass("glossary");
}

bool isModuleTarget(Node node) {
    return node.attribute("id").value_or(std::string_view()).starts_with("module-");
}

// The elements of a page that have one of the wanted ids, the first for each.
class Anchors {
  public:
    Anchors(Node root, const std::vector<WantedObject>& wanted) {
        for (const WantedObject& each : wanted) {
            m_elements.try_emplace(each.anchor);
            if (each.anchor.find('%') != std::string::npos)
                m_elements.try_emplace(percentDecoded(each.anchor));
        }
        for (Node node = root; node; node = node.next(root)) {
            note(node, node.attribute("id"));
            if (node.tag() == "a")
                note(node, node.attribute("name"));
        }
    }

    [[nodiscard]] Node find(const std::string& anchor) const {
        if (const Node element = at(anchor))
            return element;
        return anchor.find('%') != std::string::npos ? at(percentDecoded(anchor)) : Node();
    }

  private:
    void note(Node node, std::optional<std::string_view> id) {
        if (!id || id->empty())
            return;
        const auto found = m_elements.find(std::string(*id));
        if (found != m_elements.end() && !found->second)
            found->second = node;
    }

    [[nodiscard]] Node at(const std::string& anchor) const {
        const auto found = m_elements.find(anchor);
        return found != m_elements.end() ? found->second : Node();
    }

    std::unordered_map<std::string, Node> m_elements;
};

// The first signature line of an object's description, which something else may stand before.
Node firstLineIn(Node description) {
    Node child = description.firstElement();
    while (child && child.tag() != "dt")
        child = child.nextElement();
    return child;
}

// The signature line that an id belongs to: the line itself has it, something within the line has
// it, or a mark that stands before the description has it. Null: none.
Node signatureLineOf(Node element) {
    for (Node node = element; node; node = node.parent()) {
        if (node.tag() == "dt" && (isObjectDescription(node.parent()) || isGlossary(node.parent())))
            return node;
        if (node.hasTag({"dd", "div", "section", "body", "li", "td"}))
            break;
    }
    Node following = element;
    while (following && following.hasTag({"span", "a"}))
        following = following.nextElement();
    if (following != element && following && isObjectDescription(following))
        return firstLineIn(following);
    if (isObjectDescription(element))
        return firstLineIn(element);
    return {};
}

// Signature lines follow one another without a definition between them; the first of them stands
// for all.
Node firstLineOf(Node dt) {
    for (Node before = dt.previousElement(); before && before.tag() == "dt";
         before = dt.previousElement())
        dt = before;
    return dt;
}

bool isWithinDescription(Node dt) {
    for (Node node = dt.parent().parent(); node; node = node.parent())
        if (isObjectDescription(node))
            return true;
    return false;
}

// Whether the object may turn out to be a property of a class.
bool mayBeProperty(Node description, const DescriptionFacts& facts) {
    return description.hasAnyClass({"attribute", "property", "member"}) ||
           std::ranges::any_of(facts.signatures, [](const SignatureFacts& signature) {
               return std::ranges::find(signature.prefixes, "property") != signature.prefixes.end();
           });
}

using ObjectsOfLine = std::map<std::size_t, std::pair<Node, std::vector<std::size_t>>>;

DescriptionFacts readDescription(Node firstLine, const ObjectsOfLine& objects) {
    DescriptionFacts facts;
    facts.isNested = isWithinDescription(firstLine);
    Node node = firstLine;
    for (; node && node.tag() == "dt"; node = node.nextElement()) {
        SignatureFacts signature = readSignature(node);
        // A term is a name and no signature.
        if (isGlossary(node.parent()))
            signature.name = std::exchange(signature.text, {});
        if (const auto found = objects.find(node.offset()); found != objects.end())
            signature.objects = found->second.second;
        facts.names.push_back(signature.name);
        facts.signatures.push_back(std::move(signature));
    }
    std::vector<Node> body;
    for (; node && node.tag() == "dd"; node = node.nextElement())
        body.insert(body.end(), node.begin(), node.end());
    if (const std::vector<Node> prose = followingProse(firstLine.parent()); !prose.empty())
        body = prose;
    readDescriptionBody(body, facts);
    if (mayBeProperty(firstLine.parent(), facts))
        facts.explanation = readExplanation(body);
    return facts;
}

// The part of a section that speaks of the module itself: what follows the module's mark, up to
// the first description, subsection or other module.
std::vector<Node> moduleIntroduction(Node target, DescriptionFacts& facts) {
    const bool isWhole = isSection(target);
    const Node section = isWhole ? target : target.parent();
    for (Node node = section.firstElement(); node && facts.title.empty(); node = node.nextElement())
        if (isHtmlHeading(node))
            facts.title = inlineText(node);
    std::vector<Node> nodes;
    bool follows = isWhole;
    for (const Node node : section) {
        if (node == target) {
            follows = true;
            continue;
        }
        if (!follows || isHtmlHeading(node))
            continue;
        if (isSection(node) || isObjectDescription(node) || isModuleTarget(node))
            break;
        nodes.push_back(node);
    }
    return nodes;
}

DescriptionFacts readModule(Node target, std::size_t object) {
    DescriptionFacts facts;
    facts.isModule = true;
    if (const auto id = target.attribute("id"); id && id->starts_with("module-"))
        facts.names.emplace_back(id->substr(id->find('-') + 1));
    // A mark before a section speaks of the section.
    Node following = target;
    while (following.hasTag({"span"}) && following.nextElement())
        following = following.nextElement();
    if (isSection(following))
        target = following;
    facts.signatures.emplace_back().objects = {object};
    readDescriptionBody(moduleIntroduction(target, facts), facts);
    // The mark may stand below the text that introduces the module.
    const Node section = target.parent();
    if (facts.purpose.empty() && isSection(section) && !isSection(target)) {
        std::vector<Node> before;
        for (Node node = section.firstElement(); node && node != target; node = node.nextElement())
            if (node.tag() == "p")
                before.push_back(node);
        readDescriptionBody(before, facts);
    }
    return facts;
}

// The section that a mark names: one that has the id itself, one that follows the mark, even if the
// mark is the last thing in the section before, or one whose heading follows the mark. Null: none.
Node sectionOf(Node mark) {
    if (isSection(mark))
        return mark;
    Node following = mark;
    while (following && following.hasTag({"span", "a"})) {
        Node last = following;
        while (!last.nextElement() && isSection(last.parent()))
            last = last.parent();
        following = last.nextElement();
    }
    if (!following || isSection(following))
        return following;
    return isHtmlHeading(following) && isSection(mark.parent()) ? mark.parent() : Node();
}

// Some projects begin a setting's section with its default value. What the setting is for comes
// after it and becomes the purpose.
void putDefaultSecond(std::vector<Node>& nodes) {
    const auto isParagraph = [](Node node) { return node.tag() == "p"; };
    const auto first = std::ranges::find_if(nodes, isParagraph);
    if (first == nodes.end() || !inlineText(*first).starts_with("Default:"))
        return;
    const auto second = std::find_if(first + 1, nodes.end(), isParagraph);
    if (second != nodes.end())
        std::iter_swap(first, second);
}

// Settings, commands and the like have a section of their own in some projects. It describes them
// up to the first thing that has a description of its own; a subsection without one belongs to it.
DescriptionFacts readSection(Node section, const std::vector<std::size_t>& objects,
                             const std::set<std::size_t>& places) {
    const auto isOther = [&](Node node) {
        return isObjectDescription(node) || isGlossary(node) || isModuleTarget(node) ||
               (node.isElement() && places.contains(node.offset()));
    };
    const auto holdsOther = [&](Node node) {
        for (Node each = node; each; each = each.next(node))
            if (isOther(each))
                return true;
        return false;
    };
    DescriptionFacts facts;
    std::vector<Node> nodes;
    bool isBelowHeading = false;
    for (const Node node : section) {
        if (isHtmlHeading(node) && !isBelowHeading) {
            isBelowHeading = true;
            facts.title = inlineText(node);
        } else if (isBelowHeading && holdsOther(node)) {
            break;
        } else if (isBelowHeading) {
            nodes.push_back(node);
        }
    }
    facts.names.push_back(facts.title);
    facts.signatures.emplace_back().objects = objects;
    putDefaultSecond(nodes);
    readDescriptionBody(nodes, facts);
    return facts;
}

void resolveLinks(DescriptionFacts& facts, std::string_view page) {
    for (std::vector<LinkFacts>* const links : {&facts.seeAlso, &facts.replacements})
        for (LinkFacts& link : *links)
            if (!link.href.empty())
                link.href = resolvedHref(page, link.href);
}

std::vector<DescriptionFacts> readDescriptions(Node root, const std::vector<WantedObject>& wanted) {
    const Anchors anchors(root, wanted);
    ObjectsOfLine objectsOfLine;
    ObjectsOfLine objectsOfSection;
    std::set<std::size_t> places;
    std::map<std::size_t, Node> firstLines;
    std::multimap<std::size_t, DescriptionFacts> found;
    for (const WantedObject& each : wanted) {
        const Node element = anchors.find(each.anchor);
        if (!element)
            continue;
        if (each.isModule) {
            found.emplace(element.offset(), readModule(element, each.object));
            continue;
        }
        const Node line = signatureLineOf(element);
        if (!line) {
            places.insert(element.offset());
            if (const Node section = sectionOf(element)) {
                objectsOfSection[section.offset()].first = section;
                objectsOfSection[section.offset()].second.push_back(each.object);
            }
            continue;
        }
        objectsOfLine[line.offset()].first = line;
        objectsOfLine[line.offset()].second.push_back(each.object);
        const Node first = firstLineOf(line);
        firstLines.emplace(first.offset(), first);
    }
    for (const auto& [offset, line] : firstLines)
        found.emplace(offset, readDescription(line, objectsOfLine));
    for (const auto& [offset, section] : objectsOfSection)
        found.emplace(offset, readSection(section.first, section.second, places));
    std::vector<DescriptionFacts> descriptions;
    std::ranges::transform(found, std::back_inserter(descriptions),
                           [](auto& each) { return std::move(each.second); });
    return descriptions;
}

}  // namespace

PageFacts readPage(HtmlArena& arena, std::string_view html, std::string_view page,
                   const std::vector<WantedObject>& wanted) {
    PageFacts facts;
    std::string repaired;
    if (!isWellFormed(html)) {
        repaired = toWellFormed(html);
        html = repaired;
        facts.fault = "It is not well-formed UTF-8; the bytes at fault were replaced.";
    }
    if (trimmed(html).empty()) {
        facts.fault = "The file is empty.";
        facts.isMissing = true;
        return facts;
    }
    try {
        const HtmlDocument document(arena, html);
        facts.descriptions = readDescriptions(document.root(), wanted);
        facts.codeNames = codeNamesOf(document.root());
    } catch (const HtmlError& error) {
        facts.fault = error.what();
        facts.isMissing = true;
    }
    for (DescriptionFacts& each : facts.descriptions)
        resolveLinks(each, page);
    return facts;
}

}  // namespace reference::importers::sphinx
