#pragma once

#include "reference/api/ReferenceData.hpp"
#include "reference/api/export.hpp"

namespace reference::api::comparator {

// Ties every pair, so a stable sort leaves the results as they were found. Requests order with it
// until another comparator is set. Stateless; any thread.
class VELTRA_REFERENCE_API IndexOrderComparator {
  public:
    [[nodiscard]] bool operator()(const ReferenceData& a, const ReferenceData& b) const;

    [[nodiscard]] IndexOrderComparator copy() const { return {}; }

    [[nodiscard]] static const char* getZORBClassName() noexcept;
    [[nodiscard]] static const char* getZORBPackageName() noexcept;
};

}  // namespace reference::api::comparator
