// Reads the lookup files of all products. Internal: no public header includes it.
#pragma once

#include "docparser/Listing.hpp"
#include "docparser/ParsingResults.hpp"

namespace reference::docparser {

// The lookup resources of a listing's products: those that the index of the documentation root is
// of without a look at their files, the others from their images, where these may be used, or
// files, several at a time. A product that cannot be read is logged and left out.
[[nodiscard]] ParsingResults readLookups(const Listing& listing, bool usesImages);

}  // namespace reference::docparser
