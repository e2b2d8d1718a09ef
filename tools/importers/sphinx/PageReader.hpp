#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "sphinx/Facts.hpp"
#include "sphinx/HtmlDocument.hpp"

namespace reference::importers::sphinx {

// An object that a page is said to document.
struct WantedObject {
    // The object's position in the caller's own list; it comes back in SignatureFacts::objects.
    std::size_t object = 0;
    // The id on the page.
    std::string anchor;
    bool isModule = false;
};

// Finds the descriptions of the wanted objects in one page and reads them, and what all code of the
// page calls things.
//
// `html` is the page's content; bytes that are not well-formed UTF-8 are replaced and reported as a
// fault. `page` is the page's name, which relative links are resolved against. A page that cannot
// be parsed gives a fault and no descriptions; objects whose id the page does not have are in none
// of the descriptions. Throws nothing but std::bad_alloc. May be called from any thread, each with
// an arena of its own.
[[nodiscard]] PageFacts readPage(HtmlArena& arena, std::string_view html, std::string_view page,
                                 const std::vector<WantedObject>& wanted);

}  // namespace reference::importers::sphinx
