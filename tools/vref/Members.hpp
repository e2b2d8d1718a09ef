#pragma once

#include <string>
#include <vector>

#include "property/DeprecationStatus.hpp"
#include "reference/api/ReferenceData.hpp"
#include "vref/PageAddresses.hpp"

namespace reference::tools {

// An entity that belongs to a class or a package and has an item of its own: a method, a function.
struct Member {
    // Unqualified.
    std::u16string name;
    std::u16string purpose;
    property::DeprecationStatus::Value status = property::DeprecationStatus::Current;
    // Of its page, for a link; may be empty.
    std::string address = {};
};

struct MemberGroup {
    // "Methods", for example. UTF-8.
    std::string title;
    // In the order of their names.
    std::vector<Member> members;
};

// The entities directly within the classes and packages that `result` documents, as the result's
// product has them, grouped by type; the types are in the library's order. Properties of a class
// are left out, since the class's own item lists those. Empty if the result documents neither.
// Members have addresses if `addresses` is not null. Queries the library.
[[nodiscard]] std::vector<MemberGroup> membersOf(const api::ReferenceData& result,
                                                 PageAddresses* addresses = nullptr);

}  // namespace reference::tools
