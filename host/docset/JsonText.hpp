// JSON laid out for a person to read. For this project's own programs; not installed.
#pragma once

#include <iosfwd>
#include <string>

#include <boost/json/fwd.hpp>

#include "foundation/core/export.hpp"

namespace reference::docset {

// `value` on one line. What a terminal might obey (control characters, also those beyond ASCII, and
// what changes the direction of text) is written as \uXXXX.
[[nodiscard]] VELTRA_HOST_API std::string toJsonText(const boost::json::value& value);

// Writes `value` with each member and element on a line of its own, indented by two spaces a level;
// empty objects and lists, and lists of short texts, stay on one line. UTF-8 with the same escapes,
// members in their order. No line end after the value.
VELTRA_HOST_API void writeJson(std::ostream& out, const boost::json::value& value);

}  // namespace reference::docset
