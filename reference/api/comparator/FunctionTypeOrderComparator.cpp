#include "reference/api/comparator/FunctionTypeOrderComparator.hpp"

#include <cstdint>

#include "reference/api/comparator/smallestKey.hpp"
#include "reference/api/hostNames.hpp"

namespace reference::api::comparator {

bool FunctionTypeOrderComparator::operator()(const ReferenceData& a, const ReferenceData& b) const {
    return smallestKeyGoesFirst(a, b, [](const property::RefEntity& entity) {
        return static_cast<std::int32_t>(entity.getFunctionType());
    });
}

const char* FunctionTypeOrderComparator::getZORBClassName() noexcept {
    return "FunctionTypeOrderComparator";
}

const char* FunctionTypeOrderComparator::getZORBPackageName() noexcept {
    return comparatorPackageName;
}

}  // namespace reference::api::comparator
