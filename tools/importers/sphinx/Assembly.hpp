#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <vector>

#include "docset/ProductDocumentation.hpp"
#include "sphinx/Gathered.hpp"

namespace reference::importers::sphinx {

struct Assembled {
    // Without a header.
    docset::ProductDocumentation documentation;
    // The keys of its entities that are further names.
    std::set<std::u16string> furtherNames;
    // Positions of the objects that nothing was found about, in the order of the list.
    std::vector<std::size_t> undescribed;
};

// Makes a product's documentation from what was gathered.
//
// Each object gets a lookup record under its name. A property whose class is in the list is filed
// with its class's item; every other object has an item of its own, which it shares with the
// objects that are described together with it. An item's href is the page where the page documents
// nothing else at its top level, the page with the object's anchor otherwise; descriptions of one
// page with the same name and kind are filed together. Properties that only a class's field list
// names get a lookup record, too, unless another entity has the name. Under a further name the
// object's record is filed again. A further name of a class also renames the class's members: if
// "a.impl.Box" is a further name of "a.Box", then "a.impl.Box.open" is one of "a.Box.open". A
// further name that is some object's own name is not used.
//
// The result depends on nothing but the argument. May be called from any thread.
[[nodiscard]] Assembled assemble(const Gathered& gathered);

}  // namespace reference::importers::sphinx
