// The rule that orders results by a key of their entities. Internal: no public header includes it.
#pragma once

#include <algorithm>
#include <vector>

#include "property/RefEntity.hpp"
#include "reference/api/ReferenceData.hpp"

namespace reference::api::comparator {

// Whether a goes before b if results are ranked by the smallest key among their entities. A result
// without entities has no key and goes after every result that has one; two of them are tied.
// `keyOf` maps an entity to its key and is called for every entity. Allocates nothing.
template <typename KeyOf>
[[nodiscard]] bool smallestKeyGoesFirst(const ReferenceData& a, const ReferenceData& b,
                                        KeyOf keyOf) {
    const auto smallestOf = [keyOf](const std::vector<property::RefEntity>& entities) {
        auto smallest = keyOf(entities.front());
        for (const auto& entity : entities)
            smallest = std::min(smallest, keyOf(entity));
        return smallest;
    };
    const auto& entitiesOfA = a.getRefItem().getRefEntities();
    const auto& entitiesOfB = b.getRefItem().getRefEntities();
    if (entitiesOfA.empty())
        return false;
    return entitiesOfB.empty() || smallestOf(entitiesOfA) < smallestOf(entitiesOfB);
}

}  // namespace reference::api::comparator
