// What the match comparators have in common. Internal: no public header includes it.
#pragma once

#include <string>

#include "reference/api/EntityCaseSensitivity.hpp"
#include "reference/api/ReferenceData.hpp"
#include "reference/utils/toLowerCopy.hpp"

namespace reference::api::comparator {

// Whether a goes before b when matching results go before those that do not match, and each of the
// two classes is tied in itself. b is looked at only when a matches.
template <typename Matches>
[[nodiscard]] bool matchGoesFirst(const ReferenceData& a, const ReferenceData& b, Matches matches) {
    return matches(a) && !matches(b);
}

// Only Sensitive makes letter case count.
[[nodiscard]] inline bool isCaseSensitive(EntityCaseSensitivity::Value value) {
    return value == EntityCaseSensitivity::Sensitive;
}

// The form in which two names are compared: lower case, or as it stands where case counts.
[[nodiscard]] inline std::u16string comparedForm(const std::u16string& name,
                                                 EntityCaseSensitivity::Value value) {
    return isCaseSensitive(value) ? name : utils::toLowerCopy(name);
}

// Whether an entity's name is the compared one, `compareName` being in its compared form already.
[[nodiscard]] inline bool isComparedName(const std::u16string& name,
                                         const std::u16string& compareName,
                                         EntityCaseSensitivity::Value value) {
    return isCaseSensitive(value) ? name == compareName : utils::toLowerCopy(name) == compareName;
}

}  // namespace reference::api::comparator
