// The keys of the preferred order, in one place: PreferredOrderComparator goes through them,
// results are sorted by them, and the tool tells by them which key decided. Internal: no public
// header includes it.
#pragma once

#include <cstdint>
#include <string_view>

#include "reference/api/ReferenceData.hpp"
#include "reference/api/comparator/smallestKey.hpp"

namespace reference::api::comparator {

struct PreferredKey {
    // As "vref find --order" calls it.
    std::string_view name;
    // Results with a smaller key go first.
    std::int64_t (*keyOf)(const ReferenceData& result);

    // Whether a goes before b.
    [[nodiscard]] bool goesBefore(const ReferenceData& a, const ReferenceData& b) const {
        return keyOf(a) < keyOf(b);
    }
};

// 0 for a result whose product is matched, as ProductMatchComparator does, else 1.
[[nodiscard]] inline std::int64_t helpFolderKey(std::u16string_view folder,
                                                const ReferenceData& result) {
    return result.getHeaderInfo().getHelpFolder() == folder ? 0 : 1;
}

// In precedence: each decides only what those before it tie.
inline constexpr PreferredKey preferredOrder[] = {
    {"deprecated",
     [](const ReferenceData& result) {
         return std::int64_t{static_cast<std::int32_t>(result.getRefItem().getDeprecationStatus())};
     }},
    {"product=veltra",
     [](const ReferenceData& result) { return helpFolderKey(u"veltra", result); }},
    {"product=pendrake",
     [](const ReferenceData& result) { return helpFolderKey(u"pendrake", result); }},
    {"type", &entityTypeKey},
    {"function-type", &functionTypeKey},
};

}  // namespace reference::api::comparator
