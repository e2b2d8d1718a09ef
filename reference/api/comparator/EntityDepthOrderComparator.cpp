#include "reference/api/comparator/EntityDepthOrderComparator.hpp"

#include <algorithm>

#include "reference/api/comparator/smallestKey.hpp"
#include "reference/api/hostNames.hpp"

namespace reference::api::comparator {

bool EntityDepthOrderComparator::operator()(const ReferenceData& a, const ReferenceData& b) const {
    const auto depth = [](const property::RefEntity& entity) {
        return std::ranges::count(entity.getName(), u'.');
    };
    return smallestKey(a, depth) < smallestKey(b, depth);
}

const char* EntityDepthOrderComparator::getZORBClassName() noexcept {
    return "EntityDepthOrderComparator";
}

const char* EntityDepthOrderComparator::getZORBPackageName() noexcept {
    return comparatorPackageName;
}

}  // namespace reference::api::comparator
