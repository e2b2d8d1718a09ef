#pragma once

#include <map>
#include <string>
#include <string_view>

#include "sphinx/HtmlDocument.hpp"

namespace reference::importers::sphinx {

// The one-line summaries that a tree's module index (py-modindex.html) gives, by module name;
// modules without one are left out. `html` is the page's content. Throws HtmlError where it cannot
// be parsed. May be called from any thread, each with an arena of its own.
[[nodiscard]] std::map<std::string, std::string> readModuleIndex(HtmlArena& arena,
                                                                 std::string_view html);

}  // namespace reference::importers::sphinx
