// What the match comparators have in common. Internal: no public header includes it.
#pragma once

#include "reference/api/ReferenceData.hpp"

namespace reference::api::comparator {

// Whether a goes before b when matching results go before those that do not match, and each of the
// two classes is tied in itself. b is looked at only when a matches.
template <typename Matches>
[[nodiscard]] bool matchGoesFirst(const ReferenceData& a, const ReferenceData& b, Matches matches) {
    return matches(a) && !matches(b);
}

}  // namespace reference::api::comparator
