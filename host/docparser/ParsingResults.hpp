#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "docimage/JoinedNames.hpp"
#include "docimage/QuestionIndex.hpp"
#include "docparser/DocResource.hpp"
#include "docset/Fault.hpp"
#include "property/RefItemLookup.hpp"

namespace reference::docparser {

// Lookup resources by product short name.
using LookupResources = std::map<std::u16string, DocResource<property::RefItemLookup>>;

// What finds the names of all installed products, in the order of the products. Null members: the
// source has no such index, and one is made when it is needed.
struct InstalledIndex {
    std::shared_ptr<const docimage::JoinedNames> names;
    std::shared_ptr<const docimage::QuestionIndex> questions;
};

// What the lookup files of all known products hold.
struct ParsingResults {
    LookupResources installed;
    LookupResources uninstalled;
    InstalledIndex installedIndex = {};
    // Why products that are listed are not among them: a fault for each of their files. They are
    // looked for again only when the lookup files are read again.
    std::vector<docset::Fault> leftOut = {};
};

}  // namespace reference::docparser
