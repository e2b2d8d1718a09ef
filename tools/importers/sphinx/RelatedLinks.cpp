#include "sphinx/RelatedLinks.hpp"

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>

#include "sphinx/BlockReader.hpp"
#include "sphinx/InlineText.hpp"
#include "sphinx/Text.hpp"

namespace reference::importers::sphinx {
namespace {

using Links = std::vector<LinkFacts>;

void append(Links& links, Links more) {
    std::ranges::move(more, std::back_inserter(links));
}

Links linksWithin(Node container) {
    Links links;
    for (Node node = container; node;) {
        const bool isLink = node.tag() == "a" && !isPageFurniture(node);
        if (isLink) {
            std::string href(node.attribute("href").value_or(std::string_view()));
            if (std::string name = inlineText(node); !name.empty())
                links.push_back({std::move(href), std::move(name), {}});
        }
        node = node.next(container, isLink);
    }
    return links;
}

// A text without the name that it begins with, if it does, and without what separates the two.
std::string besideName(std::string_view text, std::string_view name) {
    if (!text.starts_with(name))
        return std::string(text);
    text = trimmed(text.substr(name.size()));
    for (const std::string_view separator : {"–", "—", "--", "-", ":", ",", "."})
        if (text.starts_with(separator))
            return std::string(trimmed(text.substr(separator.size())));
    return std::string(text);
}

// Whether a text consists of the names of the links and of what commonly stands between them.
bool isNamesOnly(std::string text, const Links& links) {
    for (const LinkFacts& link : links)
        if (const std::size_t at = text.find(link.name); at != std::string::npos)
            text.replace(at, link.name.size(), " ");
    std::string words;
    for (const char c : text)
        words += std::string_view(",.;:()&/|").find(c) == std::string_view::npos ? c : ' ';
    const std::string rest = collapsed(words);
    return rest.empty() || rest == "and" || rest == "or";
}

Links readParagraph(Node paragraph) {
    Links links = linksWithin(paragraph);
    const std::string text = inlineText(paragraph);
    if (links.empty())
        return text.empty() ? links : Links{{{}, text, {}}};
    if (isNamesOnly(text, links))
        return links;
    links.front().text = besideName(text, links.front().name);
    return links;
}

// A term and its definition, which may be null.
Links readTerm(Node term, Node definition) {
    const std::string text = definition ? inlineText(definition) : std::string();
    Links links = linksWithin(term);
    if (const Node name = term.findClass("xref"); links.empty() && name)
        links.push_back({{}, inlineText(name), {}});
    if (!links.empty()) {
        for (LinkFacts& link : links)
            link.text = text;
        // "Module string", "PEP 8 - Style": the term itself may say more than the name.
        std::string termText = inlineText(term);
        while (termText.ends_with(':') || termText.ends_with(' '))
            termText.pop_back();
        if (!isNamesOnly(termText, links) && links.size() == 1) {
            termText = besideName(termText, links.front().name);
            links.front().text =
                text.empty() ? std::move(termText) : withLead(termText + ":", text);
        }
        return links;
    }
    std::string lead = inlineText(term);
    while (lead.ends_with(':') || lead.ends_with(' '))
        lead.pop_back();
    if (definition)
        links = linksWithin(definition);
    if (links.empty())
        return lead.empty() ? links : Links{{{}, std::move(lead), text}};
    links.front().text = withLead(lead + ":", text);
    return links;
}

Links readDefinitions(Node list) {
    Links links;
    for (Node term = list.firstElement(); term; term = term.nextElement()) {
        if (term.tag() != "dt")
            continue;
        const Node next = term.nextElement();
        append(links, readTerm(term, next.tag() == "dd" ? next : Node()));
    }
    return links;
}

}  // namespace

std::vector<LinkFacts> readRelatedLinks(Node block) {
    if (block.hasClass("admonition-title") || isPageFurniture(block))
        return {};
    if (block.tag() == "dl")
        return readDefinitions(block);
    if (block.hasTag({"p", "td", "dt"}))
        return readParagraph(block);
    Links links;
    bool hasBlocks = false;
    for (Node child = block.firstElement(); child; child = child.nextElement()) {
        if (isInline(child))
            continue;
        hasBlocks = true;
        append(links, readRelatedLinks(child));
    }
    return hasBlocks ? links : readParagraph(block);
}

}  // namespace reference::importers::sphinx
