// Requests by the kind of search that a test names.
#pragma once

#include <vector>

#include "reference/api/ReferenceData.hpp"
#include "reference/api/ReferenceRequest.hpp"
#include "support/LookupModel.hpp"

namespace reference::tests {

// What the retriever of that kind of search returns; throws what it throws.
[[nodiscard]] std::vector<api::ReferenceData> retrieveBy(Search search,
                                                         const api::ReferenceRequest& request);

}  // namespace reference::tests
