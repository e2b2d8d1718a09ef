// The parts of an identifier: what a person who remembers a name roughly remembers of it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/core/export.hpp"

namespace reference::docimage {

// A part begins after everything that is neither a letter nor a digit, at a capital letter after a
// small one, at the last of several capitals before a small letter, and between letters and digits:
// "read_csv" has read, csv; "HTTPServer2" has HTTP, Server, 2. A part is given as its search form.
// A text without letters and digits, such as the name of an operator, is one part as it stands.
[[nodiscard]] VELTRA_HOST_API std::vector<std::string> nameParts(std::u16string_view identifier);

// All parts in a row: "readcsv". Two identifiers that differ only in case and in underscores have
// the same.
[[nodiscard]] VELTRA_HOST_API std::string joinedParts(std::u16string_view identifier);

// Identifiers of more parts are cut off, so that no name costs more than its share of an index.
inline constexpr std::size_t maxParts = 24;

// Calls `visit(begin, end)` for each run of parts, by numbers, that can be looked up: up to three
// parts in a row, and all of them.
template <typename Visit>
void forEachRun(std::size_t parts, Visit visit) {
    constexpr std::size_t longestRun = 3;
    for (std::size_t begin = 0; begin < parts; ++begin)
        for (std::size_t end = begin + 1; end <= parts && end - begin <= longestRun; ++end)
            visit(begin, end);
    if (parts > longestRun)
        visit(std::size_t{0}, parts);
}

}  // namespace reference::docimage
