#pragma once

#include <map>
#include <string>

#include "docimage/Aliases.hpp"
#include "docset/ProductDocumentation.hpp"
#include "sphinx/Facts.hpp"

namespace reference::importers::sphinx {

// What the examples of a product call modules and classes, from what its pages' code says.
//
// A name that is imported under another one has that alias: "np", of "numpy". A variable is an
// alias of a class where examples mostly make it one: "df", of "pandas.DataFrame", after `df =
// pd.DataFrame(…)`. It is one where the class is among `entities`, is called at least 10 times and
// in more than 80 % of the variable's assignments. No more are given than a documentation set
// takes, those that are seen most often. May be called from any thread.
[[nodiscard]] docimage::Aliases exampleAliases(
    const std::map<std::string, PageFacts>& pages,
    const std::map<std::u16string, std::vector<property::RefItemLookup>>& entities);

}  // namespace reference::importers::sphinx
