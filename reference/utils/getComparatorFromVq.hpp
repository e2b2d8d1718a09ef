#pragma once

#include "reference/api/RefRequestComparator.hpp"
#include "reference/api/export.hpp"
#include "vq/vqArray.hpp"

namespace reference::utils {

// The native form of a comparator object of the scripting language: a function that holds a copy of
// the comparator that the first element of `value` wraps. The caller checks how many elements there
// are. Later changes to the object do not reach the copy.
//
// Throws "VELTRA:referenceapi:InvalidComparator", with the name of the value's class ("null" for
// null), unless the value's class is one of the library's comparators: those of the package
// "veltra.internal.reference.api.comparator". One thread at a time for one object.
[[nodiscard]] VELTRA_REFERENCE_API api::RefRequestComparator getComparatorFromVq(
    const vqArray* value);

}  // namespace reference::utils
