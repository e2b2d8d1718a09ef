// How the results of a search are put in order. Internal: no public header includes it.
#pragma once

#include <vector>

#include "reference/api/RefRequestComparator.hpp"
#include "reference/api/ReferenceData.hpp"

namespace reference::api::comparator {

// A stable sort by the comparator. Where it is one that the library knows, its keys are worked out
// once for each result. Throws what the comparator throws; the results are then as they were.
void sortResults(std::vector<ReferenceData>& results, const RefRequestComparator& comparator);

}  // namespace reference::api::comparator
