#pragma once

#include <string>
#include <string_view>

namespace reference::importers::sphinx {

// Links between the pages of a tree. All functions may be called from any thread.

// Whether the link has a scheme ("https://…", "mailto:…") or a host.
[[nodiscard]] bool isExternal(std::string_view href);

// What a link on the page `page` leads to, relative to the root of the tree: "." and ".." worked
// out, query left out, fragment kept. An external link is returned as it is, a link that leads out
// of the tree with the ".." that remain.
[[nodiscard]] std::string resolvedHref(std::string_view page, std::string_view href);

// A page with a fragment; the page alone where `anchor` is empty.
[[nodiscard]] std::string hrefOf(std::string_view page, std::string_view anchor);

}  // namespace reference::importers::sphinx
