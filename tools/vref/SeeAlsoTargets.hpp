#pragma once

#include <string>
#include <vector>

#include "reference/api/ReferenceData.hpp"
#include "vref/PageAddresses.hpp"

namespace reference::tools {

// What a "See also" entry of an item points at.
struct SeeAlsoTarget {
    std::u16string purpose;  // empty where it is not known
    std::string address;     // of its page, for a link; may be empty
};

// What stands before the remark on a "See also" entry ("f – does it, too"): its name.
[[nodiscard]] std::u16string nameOf(const property::SeeAlso& entry);

// The targets of the result's "See also" entries, in their order: the entity of this page,
// which may be another product's, or of this name in the result's product. They have addresses if
// `addresses` is not null. Queries the library.
[[nodiscard]] std::vector<SeeAlsoTarget> seeAlsoTargets(const api::ReferenceData& result,
                                                        PageAddresses* addresses = nullptr);

}  // namespace reference::tools
