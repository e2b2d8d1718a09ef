#include "reference/api/comparator/PreferredOrderComparator.hpp"

#include "reference/api/comparator/preferredOrder.hpp"
#include "reference/api/hostNames.hpp"

namespace reference::api::comparator {

// The answer of a CompoundReferenceComparator over the same keys, without the vector and the
// functions that one is made of: a sort asks this n log n times.
bool PreferredOrderComparator::operator()(const ReferenceData& a, const ReferenceData& b) const {
    for (const auto& key : preferredOrder) {
        if (key.goesBefore(b, a))
            return false;
        if (key.goesBefore(a, b))
            return true;
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
