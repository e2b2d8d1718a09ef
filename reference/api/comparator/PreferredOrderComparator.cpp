#include "reference/api/comparator/PreferredOrderComparator.hpp"

#include <cstdint>

#include "reference/api/comparator/preferredOrder.hpp"
#include "reference/api/hostNames.hpp"

namespace reference::api::comparator {

// The answer of a CompoundReferenceComparator over the same keys, without the vector and the
// functions that one is made of: a sort asks this n log n times.
bool PreferredOrderComparator::operator()(const ReferenceData& a, const ReferenceData& b) const {
    for (const auto& key : preferredOrder) {
        const std::int64_t keyOfA = key.keyOf(a);
        const std::int64_t keyOfB = key.keyOf(b);
        if (keyOfA != keyOfB)
            return keyOfA < keyOfB;
    }
    return false;
}

const char* PreferredOrderComparator::getZORBClassName() noexcept {
    return "PreferredOrderComparator";
}

const char* PreferredOrderComparator::getZORBPackageName() noexcept {
    return comparatorPackageName;
}

}  // namespace reference::api::comparator
