#pragma once

#include <iosfwd>
#include <span>

#include "reference/api/ReferenceData.hpp"

namespace reference::tools {

// Writes the results as one JSON array and a line end. Each element has "product", "helpFolder" and
// "href", then the item's members; every member is there, empty or not, always in the same order.
void writeJson(std::ostream& out, std::span<const api::ReferenceData> results);

}  // namespace reference::tools
