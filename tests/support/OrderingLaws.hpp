#pragma once

#include <span>
#include <string>

#include "reference/api/RefRequestComparator.hpp"
#include "reference/api/ReferenceData.hpp"

namespace reference::tests {

// Checks that a comparator is a strict weak ordering of these results: never true of a result and
// itself, never true both ways, transitive, and transitive in its ties. Returns an empty text if it
// is, otherwise which results break which law.
[[nodiscard]] std::string brokenOrderingLaw(const api::RefRequestComparator& comparator,
                                            std::span<const api::ReferenceData> results);

}  // namespace reference::tests
