#include "reference/api/comparator/DeprecatedOrderComparator.hpp"

#include <cstdint>

#include "reference/api/hostNames.hpp"

namespace reference::api::comparator {

bool DeprecatedOrderComparator::operator()(const ReferenceData& a, const ReferenceData& b) const {
    return static_cast<std::int32_t>(a.getRefItem().getDeprecationStatus()) <
           static_cast<std::int32_t>(b.getRefItem().getDeprecationStatus());
}

const char* DeprecatedOrderComparator::getZORBClassName() noexcept {
    return "DeprecatedOrderComparator";
}

const char* DeprecatedOrderComparator::getZORBPackageName() noexcept {
    return comparatorPackageName;
}

}  // namespace reference::api::comparator
