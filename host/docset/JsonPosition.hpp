// Where things stand in the text of a JSON document. Internal: no public header includes it.
//
// A parsed value no longer knows its place, and keeping places for all of them would make the
// reading of sound files pay for the faulty ones. So a place is found by reading the text again,
// when a fault is reported.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace reference::docset {

// From an object to a member, by its name; from an array to an element, by its index.
using JsonStep = std::variant<std::string, std::size_t>;

// The offset, in bytes, of the value that `path` leads to from the top of `text`; nothing when the
// text has no such value. Where a member name is repeated, its last occurrence counts.
[[nodiscard]] std::optional<std::size_t> findJsonValue(std::string_view text,
                                                       const std::vector<JsonStep>& path);

struct RepeatedMember {
    std::vector<JsonStep> path;
    std::size_t offset = 0;
};

// Every object member that repeats an earlier name of the same object, in text order.
[[nodiscard]] std::vector<RepeatedMember> findRepeatedMembers(std::string_view text);

// The path as a person reads it: products[0].pages["ref/plot.html"].
[[nodiscard]] std::string toFieldName(const std::vector<JsonStep>& path);

struct TextPosition {
    std::size_t line = 0;
    std::size_t column = 0;
};

// Line and column of a byte, both counted from 1, the column in bytes.
[[nodiscard]] TextPosition positionOf(std::string_view text, std::size_t offset);

}  // namespace reference::docset
