#pragma once

#include <iosfwd>
#include <span>
#include <string>

#include <boost/json/array.hpp>

#include "reference/api/ReferenceData.hpp"

namespace reference::tools {

// The results as one JSON array. Each element has "product", "helpFolder" and "href", then the
// item's members; every member is there, empty or not, always in the same order.
//
// `notes` is empty or has one note per result, which becomes the element's last member, "note".
[[nodiscard]] boost::json::array toJson(std::span<const api::ReferenceData> results,
                                        std::span<const std::string> notes);

// Writes the array, laid out for a person to read, and a line end.
void writeJson(std::ostream& out, std::span<const api::ReferenceData> results,
               std::span<const std::string> notes);

}  // namespace reference::tools
