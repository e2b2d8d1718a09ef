// The rule that orders results by a key of their entities. Internal: no public header includes it.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

#include "property/RefEntity.hpp"
#include "reference/api/ReferenceData.hpp"

namespace reference::api::comparator {

// The smallest key among the entities of a result, below 2^32; a larger number for a result without
// entities, which goes after every result that has one. `keyOf` maps an entity to its key.
// Allocates nothing.
template <typename KeyOf>
[[nodiscard]] std::int64_t smallestKey(const ReferenceData& result, KeyOf keyOf) {
    std::int64_t smallest = std::numeric_limits<std::int64_t>::max();
    for (const auto& entity : result.getRefItem().getRefEntities())
        smallest = std::min(smallest, std::int64_t{keyOf(entity)});
    return smallest;
}

[[nodiscard]] inline std::int64_t entityTypeKey(const ReferenceData& result) {
    return smallestKey(result, [](const property::RefEntity& entity) {
        return static_cast<std::int32_t>(entity.getRefEntityType());
    });
}

[[nodiscard]] inline std::int64_t functionTypeKey(const ReferenceData& result) {
    return smallestKey(result, [](const property::RefEntity& entity) {
        return static_cast<std::int32_t>(entity.getFunctionType());
    });
}

}  // namespace reference::api::comparator
