#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "reference/api/ReferenceData.hpp"
#include "vref/Members.hpp"
#include "vref/SeeAlsoTargets.hpp"
#include "vref/Terminal.hpp"

namespace reference::tools {

// What is known about a result besides the result itself.
struct PageDetails {
    // The address of the page's file; empty where there is none. UTF-8.
    std::string address;
    // What belongs to the class or package that the result documents.
    std::vector<MemberGroup> members = {};
    // What the item's "See also" entries point at; empty, or one for each.
    std::vector<SeeAlsoTarget> seeAlso = {};
};

// Writes one result as a manual page: name and purpose, where it belongs and whether it is still to
// be used, then what the page has of syntaxes, description, inputs, outputs, parameters, further
// sections of the description, properties, members of the class or package, examples and links to
// other pages. Of a property there is its first paragraph, because its own page has the rest; of a
// link, its remark or else the purpose of what it points at. Prose is wrapped to the terminal's
// width.
//
// The entry of a single property, which the library makes from its class's item, is shown as if it
// had an item of its own: the text of its property group is the purpose and the description, and
// the version that introduced the class is left out, since it says nothing about the property.
void writePage(std::ostream& out, const Terminal& terminal, const api::ReferenceData& result,
               const PageDetails& details = {});

}  // namespace reference::tools
