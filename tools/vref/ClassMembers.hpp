#pragma once

#include <string>
#include <vector>

#include "reference/api/ReferenceData.hpp"

namespace reference::tools {

// An entity that belongs to a class and has a page of its own: a method, a constructor, an event.
struct ClassMember {
    // Unqualified.
    std::u16string name;
    std::u16string purpose;
};

struct ClassMemberGroup {
    // "Methods", for example. UTF-8.
    std::string title;
    // In the order of their names.
    std::vector<ClassMember> members;
};

// The members of the classes that `result` documents, as the result's product has them, grouped by
// kind. Properties are left out, since the class's own item lists those. Empty if the result
// documents no class. Queries the library.
[[nodiscard]] std::vector<ClassMemberGroup> membersOf(const api::ReferenceData& result);

}  // namespace reference::tools
