#pragma once

#include "reference/api/ReferenceData.hpp"
#include "reference/api/export.hpp"

namespace reference::api::comparator {

// Puts current results before deprecated and removed ones: the lower number of the deprecation
// status, as a signed 32-bit integer, goes first. Stateless; any thread.
class VELTRA_REFERENCE_API DeprecatedOrderComparator {
  public:
    // Whether a goes before b.
    [[nodiscard]] bool operator()(const ReferenceData& a, const ReferenceData& b) const;

    [[nodiscard]] static const char* getZORBClassName() noexcept;
    [[nodiscard]] static const char* getZORBPackageName() noexcept;
};

}  // namespace reference::api::comparator
