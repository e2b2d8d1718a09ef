#pragma once

#include "reference/api/ReferenceData.hpp"
#include "reference/api/export.hpp"

namespace reference::api::comparator {

// The usual ranking of help results. Each rule decides only what the rules before it tie: results
// that are still to be used (DeprecatedOrderComparator), those of the help folder "veltra", those
// of the help folder "pendrake", the smaller entity type, the smaller function type. Stateless; a
// comparison allocates nothing; any thread.
class VELTRA_REFERENCE_API PreferredOrderComparator {
  public:
    // Whether a goes before b.
    [[nodiscard]] bool operator()(const ReferenceData& a, const ReferenceData& b) const;

    [[nodiscard]] static const char* getZORBClassName() noexcept;
    [[nodiscard]] static const char* getZORBPackageName() noexcept;
};

}  // namespace reference::api::comparator
