#pragma once

#include <map>
#include <memory>
#include <string>

#include "docimage/JoinedNames.hpp"
#include "docparser/DocResource.hpp"
#include "property/RefItemLookup.hpp"

namespace reference::docparser {

// Lookup resources by product short name.
using LookupResources = std::map<std::u16string, DocResource<property::RefItemLookup>>;

// What the lookup files of all known products hold.
struct ParsingResults {
    LookupResources installed;
    LookupResources uninstalled;
    // The names of all installed products, in their order; null where the source has no such index.
    std::shared_ptr<const docimage::JoinedNames> installedNames = nullptr;
};

}  // namespace reference::docparser
