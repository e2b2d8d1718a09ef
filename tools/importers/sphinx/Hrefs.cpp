#include "sphinx/Hrefs.hpp"

#include <vector>

#include "sphinx/Text.hpp"

namespace reference::importers::sphinx {

bool isExternal(std::string_view href) {
    if (href.starts_with("//"))
        return true;
    const std::size_t end = href.find_first_of(":/?#");
    return end != std::string_view::npos && end > 0 && href[end] == ':';
}

std::string hrefOf(std::string_view page, std::string_view anchor) {
    std::string href(page.empty() ? "index.html" : page);
    return anchor.empty() ? href : href + "#" + std::string(anchor);
}

std::string resolvedHref(std::string_view page, std::string_view href) {
    href = trimmed(href);
    if (isExternal(href))
        return std::string(href);
    const std::size_t hash = href.find('#');
    const std::string_view anchor =
        hash == std::string_view::npos ? std::string_view() : href.substr(hash + 1);
    std::string_view path = href.substr(0, hash);
    path = path.substr(0, path.find('?'));
    if (path.empty())
        return hrefOf(page, anchor);
    if (path.starts_with('/'))
        return std::string(href);

    std::string whole(
        page.substr(0, page.rfind('/') == std::string_view::npos ? 0 : page.rfind('/') + 1));
    whole += path;
    std::vector<std::string> parts;
    for (std::size_t begin = 0; begin <= whole.size();) {
        const std::size_t end = std::min(whole.find('/', begin), whole.size());
        std::string part = whole.substr(begin, end - begin);
        begin = end + 1;
        if (part == ".." && !parts.empty() && parts.back() != "..")
            parts.pop_back();
        else if (part != "." && !part.empty())
            parts.push_back(std::move(part));
    }
    std::string target = joined(parts, "/");
    if (!target.empty() && (whole.ends_with('/') || whole.ends_with("/.")))
        target += '/';
    return hrefOf(target, anchor);
}

}  // namespace reference::importers::sphinx
