#pragma once

#include <vector>

#include "reference/api/ReferenceData.hpp"
#include "reference/api/ReferenceRequest.hpp"

namespace reference::tools {

// The entries of the pages that a request's text names, ordered by its comparator.
//
// The library's page search compares the text with an entry's whole href, and entries that share a
// page have hrefs with a fragment, such as "library/os.html#os.getcwd". A person names the page:
// "library/os.html", "library/os" or, if no page has that whole name, just the end of it:
// "os.html", "os". A text with a "#" names one entry in the same way. The help folder may stand
// before the name. What the library's search finds is found as well.
//
// The request's types, products and letter case apply as in every search. Throws what the library
// throws; a product whose file cannot be read is left out.
[[nodiscard]] std::vector<api::ReferenceData> entriesOfNamedPages(
    const api::ReferenceRequest& request);

}  // namespace reference::tools
