#pragma once

#include <iosfwd>
#include <span>
#include <string>
#include <vector>

#include "reference/api/ReferenceData.hpp"
#include "vref/Terminal.hpp"

namespace reference::tools {

// The names of a result's entities, separated by commas; its href if it has none. UTF-8.
[[nodiscard]] std::string namesOf(const api::ReferenceData& result);

// The kinds of a result's entities, each once ("class", "function, method"). UTF-8.
[[nodiscard]] std::string kindsOf(const api::ReferenceData& result);

// The names of what to use instead of a deprecated result, separated by commas; usually empty.
// UTF-8.
[[nodiscard]] std::string replacementsOf(const api::ReferenceData& result);

// What else a list shows.
struct ListDetails {
    // A line with the page of each result.
    bool hrefs = false;
    // A line with a note on each result; empty, or one per result.
    std::span<const std::string> notes;
    // A line before a result, where its text is not empty; none, or one per result.
    std::vector<std::string> headings = {};
    // What the names lead to on a terminal with links; empty, or one per result, which may be
    // empty.
    std::span<const std::string> addresses = {};
};

// Writes a line for each result: names, kind, product, whether it is deprecated or removed, and
// purpose; names, kinds and products are aligned in columns. On a terminal a line is cut to the
// terminal's width, elsewhere it is whole.
void writeList(std::ostream& out, const Terminal& terminal,
               std::span<const api::ReferenceData> results, const ListDetails& details);

}  // namespace reference::tools
