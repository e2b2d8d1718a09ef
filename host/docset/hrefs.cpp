#include "docset/hrefs.hpp"

#include <algorithm>
#include <cstddef>

namespace reference::docset {
namespace {

bool isControlUnit(char16_t unit) {
    return unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
}

char16_t lowered(char16_t unit) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit - u'A' + u'a') : unit;
}

// The scheme in lower case; empty: none.
std::u16string schemeOf(std::u16string_view href) {
    const std::size_t end = href.find_first_of(u":/?#");
    if (end == std::u16string_view::npos || href[end] != u':')
        return {};
    std::u16string scheme(href.substr(0, end));
    std::ranges::transform(scheme, scheme.begin(), &lowered);
    return scheme;
}

// "..", also where its dots are percent-encoded, as a browser reads it.
bool leadsUp(std::u16string_view part) {
    std::size_t dots = 0;
    while (!part.empty()) {
        const bool isEncoded =
            part.size() >= 3 && part[0] == u'%' && part[1] == u'2' && lowered(part[2]) == u'e';
        if (!isEncoded && part[0] != u'.')
            return false;
        part.remove_prefix(isEncoded ? 3 : 1);
        ++dots;
    }
    return dots == 2;
}

// Whether the path ever stands above the folder that is `depth` folders above where it begins.
bool leadsOut(std::u16string_view path, std::ptrdiff_t depth = 0) {
    while (!path.empty()) {
        const std::size_t end = std::min(path.find(u'/'), path.size());
        const std::u16string_view part = path.substr(0, end);
        depth += leadsUp(part) ? -1 : part.empty() || part == u"." ? 0 : 1;
        if (depth < 0)
            return true;
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return false;
}

std::u16string_view pathOf(std::u16string_view href) {
    return href.substr(0, href.find_first_of(u"?#"));
}

std::optional<std::string> whyNotRelative(std::u16string_view href) {
    if (!schemeOf(href).empty())
        return "It has a scheme; it must be relative to the product's help folder.";
    if (href.starts_with(u'/'))
        return "It is absolute; it must be relative to the product's help folder.";
    if (pathOf(href).find(u'\\') != std::u16string_view::npos)
        return "It holds a backslash; divide folders and file by slashes.";
    return std::nullopt;
}

std::optional<std::string> whyNotText(std::u16string_view href) {
    if (std::ranges::any_of(href, isControlUnit))
        return "It holds a control character.";
    return std::nullopt;
}

}  // namespace

std::optional<std::string> whyNotAPage(std::u16string_view href) {
    if (auto reason = whyNotText(href))
        return reason;
    if (auto reason = whyNotRelative(href))
        return reason;
    if (leadsOut(pathOf(href)))
        return "It leads out of the product's help folder (\"..\").";
    return std::nullopt;
}

std::optional<std::string> whyNotATarget(std::u16string_view href, std::u16string_view helpFolder) {
    if (auto reason = whyNotText(href))
        return reason;
    const std::u16string scheme = schemeOf(href);
    if (scheme == u"http" || scheme == u"https")
        return std::nullopt;
    if (!scheme.empty())
        return "It is neither a page nor an address of the web (http, https).";
    if (auto reason = whyNotRelative(href))
        return reason;
    const auto above = std::ranges::count(helpFolder, u'/') + (helpFolder.empty() ? 0 : 1);
    if (leadsOut(pathOf(href), above))
        return "It leads out of the folder that the help folders are in (\"..\").";
    return std::nullopt;
}

}  // namespace reference::docset
