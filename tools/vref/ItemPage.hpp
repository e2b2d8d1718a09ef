#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "reference/api/ReferenceData.hpp"
#include "vref/ClassMembers.hpp"
#include "vref/Terminal.hpp"

namespace reference::tools {

// What is known of a result besides the result itself.
struct PageDetails {
    // The address of the page's file; empty where there is none. UTF-8.
    std::string address;
    // What belongs to the class that the result documents.
    std::vector<ClassMemberGroup> members;
};

// Writes one result as a manual page: name and purpose, where it belongs and whether it is still to
// be used, then what the page has of syntaxes, description, inputs, outputs, parameters, further
// sections of the description, properties, members of the class, examples and pointers elsewhere.
// Prose is laid out in the terminal's width.
//
// The entry of a single property, which the library makes of its class's item, is shown as if it
// had an item of its own: what it says in its group is the purpose and the description, and the
// version that brought the class is not shown, since it says nothing of the property.
void writePage(std::ostream& out, const Terminal& terminal, const api::ReferenceData& result,
               const PageDetails& details = {});

}  // namespace reference::tools
