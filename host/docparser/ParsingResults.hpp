#pragma once

#include <map>
#include <string>

#include "docparser/DocResource.hpp"
#include "property/RefItemLookup.hpp"

namespace reference::docparser {

// Lookup resources by product short name.
using LookupResources = std::map<std::u16string, DocResource<property::RefItemLookup>>;

// What the lookup files of all known products hold.
struct ParsingResults {
    LookupResources installed;
    LookupResources uninstalled;
};

}  // namespace reference::docparser
