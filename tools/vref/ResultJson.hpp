#pragma once

#include <iosfwd>
#include <span>
#include <string>
#include <string_view>

#include <boost/json/array.hpp>

#include "reference/api/ReferenceData.hpp"

namespace reference::tools {

// The names of an item's members, in the order in which programs read them. Lives as long as the
// process.
[[nodiscard]] std::span<const std::string_view> itemMembers() noexcept;

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
