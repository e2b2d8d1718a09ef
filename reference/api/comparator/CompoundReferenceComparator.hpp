#pragma once

#include <vector>

#include "reference/api/RefRequestComparator.hpp"
#include "reference/api/ReferenceData.hpp"
#include "reference/api/export.hpp"
#include "vq/vqArray.hpp"

namespace reference::api::comparator {

// A chain of comparators: the first decides, and each later one only breaks the ties of all those
// before it. An empty chain ties every pair. Comparing changes nothing and may run on any number of
// threads at once, as far as the comparators in the chain allow.
class VELTRA_REFERENCE_API CompoundReferenceComparator {
  public:
    // An empty chain.
    CompoundReferenceComparator();

    // `comparators` in order of precedence. An empty function among them is not noticed until a
    // comparison reaches it.
    explicit CompoundReferenceComparator(std::vector<RefRequestComparator> comparators);

    // Whether a goes before b. Throws std::bad_function_call when the walk reaches an empty
    // function, and what the comparators throw.
    [[nodiscard]] bool operator()(const ReferenceData& a, const ReferenceData& b) const;

    // The chain as the scripting language sees it: the cell array that a script last set, or null;
    // a chain that was given natively is not shown. Valid until this object is changed or
    // destroyed. The setter ignores null. It copies one comparator from each cell. It throws
    // "VELTRA:referenceapi:ExpectedComparatorCellArray" and
    // "VELTRA:referenceapi:InvalidComparator"; nothing is changed then. One thread at a time.
    [[nodiscard]] const vqArray* getComparatorsProperty() const noexcept {
        return m_comparatorsCache.get();
    }
    void setComparatorsProperty(const vqArray* value);

    [[nodiscard]] static const char* getZORBClassName() noexcept;
    [[nodiscard]] static const char* getZORBPackageName() noexcept;

  private:
    std::vector<RefRequestComparator> m_comparators;
    vqArrayPtr m_comparatorsCache;
};

}  // namespace reference::api::comparator
