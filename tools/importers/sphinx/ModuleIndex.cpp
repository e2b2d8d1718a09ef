#include "sphinx/ModuleIndex.hpp"

#include "sphinx/InlineText.hpp"
#include "sphinx/Text.hpp"

namespace reference::importers::sphinx {
namespace {

// Summaries stand in the index as they were written: ":role:`text`" and "``text``" are reduced to
// their text.
std::string withoutMarkup(const std::string& text) {
    std::string plain;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == ':') {
            const std::size_t end = text.find_first_not_of(
                "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-+_:.", at + 1);
            if (end != std::string::npos && end > at + 2 && text[end] == '`' &&
                text[end - 1] == ':') {
                at = end - 1;
                continue;
            }
        }
        if (text[at] != '`')
            plain += text[at];
    }
    return plain;
}

}  // namespace

std::map<std::string, std::string> readModuleIndex(HtmlArena& arena, std::string_view html) {
    std::map<std::string, std::string> summaries;
    const std::string text = toWellFormed(html);
    const HtmlDocument document(arena, text);
    const Node root = document.root();
    for (Node node = root; node; node = node.next(root)) {
        if (node.tag() != "tr")
            continue;
        Node last;
        for (Node cell = node.firstElement(); cell; cell = cell.nextElement())
            last = cell;
        const Node name = node.findClass("xref");
        const Node summary = last ? last.findTag("em") : Node();
        if (!name || !summary)
            continue;
        if (std::string plain = withoutMarkup(inlineText(summary)); !plain.empty())
            summaries.emplace(inlineText(name), std::move(plain));
    }
    return summaries;
}

}  // namespace reference::importers::sphinx
