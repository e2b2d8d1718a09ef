#include "reference/api/comparator/FunctionTypeOrderComparator.hpp"

#include "reference/api/comparator/smallestKey.hpp"
#include "reference/api/hostNames.hpp"

namespace reference::api::comparator {

bool FunctionTypeOrderComparator::operator()(const ReferenceData& a, const ReferenceData& b) const {
    return functionTypeKey(a) < functionTypeKey(b);
}

const char* FunctionTypeOrderComparator::getZORBClassName() noexcept {
    return "FunctionTypeOrderComparator";
}

const char* FunctionTypeOrderComparator::getZORBPackageName() noexcept {
    return comparatorPackageName;
}

}  // namespace reference::api::comparator
