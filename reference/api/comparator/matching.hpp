// What the match comparators have in common. Internal: no public header includes it.
#pragma once

#include "reference/api/ReferenceData.hpp"

namespace reference::api::comparator {

// Whether a goes before b if matching results go before the others; two that match, or two that do
// not, are tied. b is looked at only if a matches.
template <typename Matches>
[[nodiscard]] bool matchGoesFirst(const ReferenceData& a, const ReferenceData& b, Matches matches) {
    return matches(a) && !matches(b);
}

}  // namespace reference::api::comparator
