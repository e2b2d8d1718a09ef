#include "reference/api/comparator/EntityTypeOrderComparator.hpp"

#include "reference/api/comparator/smallestKey.hpp"
#include "reference/api/hostNames.hpp"

namespace reference::api::comparator {

bool EntityTypeOrderComparator::operator()(const ReferenceData& a, const ReferenceData& b) const {
    return entityTypeKey(a) < entityTypeKey(b);
}

const char* EntityTypeOrderComparator::getZORBClassName() noexcept {
    return "EntityTypeOrderComparator";
}

const char* EntityTypeOrderComparator::getZORBPackageName() noexcept {
    return comparatorPackageName;
}

}  // namespace reference::api::comparator
