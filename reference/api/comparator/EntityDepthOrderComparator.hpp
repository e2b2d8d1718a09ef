#pragma once

#include "reference/api/ReferenceData.hpp"
#include "reference/api/export.hpp"

namespace reference::api::comparator {

// Puts less qualified names first: results are ranked by the smallest number of dots in the name of
// an entity, and results without entities go last. Stateless; any thread.
class VELTRA_REFERENCE_API EntityDepthOrderComparator {
  public:
    // Whether a goes before b.
    [[nodiscard]] bool operator()(const ReferenceData& a, const ReferenceData& b) const;

    [[nodiscard]] static const char* getZORBClassName() noexcept;
    [[nodiscard]] static const char* getZORBPackageName() noexcept;
};

}  // namespace reference::api::comparator
