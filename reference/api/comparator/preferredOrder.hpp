// The keys of the preferred order, in one place: PreferredOrderComparator goes through them, and
// the tool tells by them which key decided. Internal: no public header includes it.
#pragma once

#include <string_view>

#include "reference/api/ReferenceData.hpp"
#include "reference/api/comparator/DeprecatedOrderComparator.hpp"
#include "reference/api/comparator/EntityTypeOrderComparator.hpp"
#include "reference/api/comparator/FunctionTypeOrderComparator.hpp"

namespace reference::api::comparator {

struct PreferredKey {
    // As "vref find --order" calls it.
    std::string_view name;
    // Whether a goes before b.
    bool (*goesBefore)(const ReferenceData& a, const ReferenceData& b);
};

template <typename Comparator>
[[nodiscard]] bool comparatorGoesBefore(const ReferenceData& a, const ReferenceData& b) {
    return Comparator()(a, b);
}

// The answer of a ProductMatchComparator, without an object that would be destroyed at the end of
// the process, when other threads may still order results.
[[nodiscard]] inline bool helpFolderGoesBefore(std::u16string_view folder, const ReferenceData& a,
                                               const ReferenceData& b) {
    return a.getHeaderInfo().getHelpFolder() == folder &&
           b.getHeaderInfo().getHelpFolder() != folder;
}

// In precedence: each decides only what those before it tie.
inline constexpr PreferredKey preferredOrder[] = {
    {"deprecated", &comparatorGoesBefore<DeprecatedOrderComparator>},
    {"product=veltra",
     [](const ReferenceData& a, const ReferenceData& b) {
         return helpFolderGoesBefore(u"veltra", a, b);
     }},
    {"product=pendrake",
     [](const ReferenceData& a, const ReferenceData& b) {
         return helpFolderGoesBefore(u"pendrake", a, b);
     }},
    {"type", &comparatorGoesBefore<EntityTypeOrderComparator>},
    {"function-type", &comparatorGoesBefore<FunctionTypeOrderComparator>},
};

}  // namespace reference::api::comparator
