#pragma once

#include <iosfwd>
#include <span>
#include <string>

#include "reference/api/ReferenceData.hpp"

namespace reference::tools {

// Writes the results as one JSON array and a line end. Each element has "product", "helpFolder" and
// "href", then the item's members; every member is there, empty or not, always in the same order.
//
// `notes` are empty, or as many as there are results: then each is the element's last member,
// "note".
void writeJson(std::ostream& out, std::span<const api::ReferenceData> results,
               std::span<const std::string> notes);

}  // namespace reference::tools
