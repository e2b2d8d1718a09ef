#pragma once

#include <iosfwd>
#include <span>
#include <string>

#include "reference/api/ReferenceData.hpp"
#include "vref/Terminal.hpp"

namespace reference::tools {

// The names of a result's entities, divided by commas; its href where it has none. UTF-8.
[[nodiscard]] std::string namesOf(const api::ReferenceData& result);

// The kinds of a result's entities, each once ("class", "function, method"). UTF-8.
[[nodiscard]] std::string kindsOf(const api::ReferenceData& result);

// Writes a line for each result: names, kind, product, whether it is deprecated or removed, and
// purpose; names, kinds and products stand under each other. On a terminal a line is cut to its
// width, elsewhere it is whole. With `hrefs`, a second line has the page.
void writeList(std::ostream& out, const Terminal& terminal,
               std::span<const api::ReferenceData> results, bool hrefs);

}  // namespace reference::tools
