#pragma once

#include <vector>

#include "sphinx/Facts.hpp"
#include "sphinx/Node.hpp"

namespace reference::importers::sphinx {

// What a see-also box, or one block of a see-also section, points to, in page order, with what is
// said of each:
//   - a definition list names the related entities in its terms, linked or not, and describes them
//     in its definitions; where a term holds no name of an entity, the links of its definition
//     count;
//   - of a paragraph that is more than links, the first link gets the text, without the link itself
//     where the text begins with it;
//   - what has no link at all is an entry without a target.
// Links are left as the page has them. May be called from any thread.
[[nodiscard]] std::vector<LinkFacts> readRelatedLinks(Node block);

}  // namespace reference::importers::sphinx
