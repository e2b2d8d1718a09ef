#pragma once

#include <vector>

#include "reference/api/ReferenceData.hpp"
#include "vref/Documentation.hpp"
#include "vref/Query.hpp"

namespace reference::tools {

// What the query's name means, by the narrowest reading that finds something: the exact name, a
// page (an href, with or without the help folder before it), and then, for people who type from
// memory, the name without its package, then also in any case, and the page of a property. Entries
// that share a name are in the order in which "vref find" lists them. If nothing is found, a
// message on the standard error stream says so. Throws what toRequest() throws, and UnusableError
// if something that was found could not be read.
[[nodiscard]] std::vector<api::ReferenceData> entriesNamed(const QueryOptions& query,
                                                           const Documentation& documentation);

// Lists all results but the first on the standard error stream, and how to tell them apart.
void tellOthers(const std::vector<api::ReferenceData>& results);

}  // namespace reference::tools
