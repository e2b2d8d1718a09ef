#include "reference/api/comparator/IndexOrderComparator.hpp"

#include "reference/api/hostNames.hpp"

namespace reference::api::comparator {

bool IndexOrderComparator::operator()(const ReferenceData& /*a*/,
                                      const ReferenceData& /*b*/) const {
    return false;
}

const char* IndexOrderComparator::getZORBClassName() noexcept {
    return "IndexOrderComparator";
}

const char* IndexOrderComparator::getZORBPackageName() noexcept {
    return comparatorPackageName;
}

}  // namespace reference::api::comparator
