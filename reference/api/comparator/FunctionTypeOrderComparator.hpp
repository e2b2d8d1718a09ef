#pragma once

#include "reference/api/ReferenceData.hpp"
#include "reference/api/export.hpp"

namespace reference::api::comparator {

// Ranks results by the smallest function type number of their entities, as a signed 32-bit integer;
// results without entities go last. Stateless; any thread.
class VELTRA_REFERENCE_API FunctionTypeOrderComparator {
  public:
    // Whether a goes before b.
    [[nodiscard]] bool operator()(const ReferenceData& a, const ReferenceData& b) const;

    [[nodiscard]] static const char* getZORBClassName() noexcept;
    [[nodiscard]] static const char* getZORBPackageName() noexcept;
};

}  // namespace reference::api::comparator
