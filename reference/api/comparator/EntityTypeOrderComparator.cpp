#include "reference/api/comparator/EntityTypeOrderComparator.hpp"

#include <cstdint>

#include "reference/api/comparator/smallestKey.hpp"
#include "reference/api/hostNames.hpp"

namespace reference::api::comparator {

bool EntityTypeOrderComparator::operator()(const ReferenceData& a, const ReferenceData& b) const {
    return smallestKeyGoesFirst(a, b, [](const property::RefEntity& entity) {
        return static_cast<std::int32_t>(entity.getRefEntityType());
    });
}

const char* EntityTypeOrderComparator::getZORBClassName() noexcept {
    return "EntityTypeOrderComparator";
}

const char* EntityTypeOrderComparator::getZORBPackageName() noexcept {
    return comparatorPackageName;
}

}  // namespace reference::api::comparator
