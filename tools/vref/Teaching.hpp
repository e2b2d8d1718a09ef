#pragma once

#include <optional>
#include <string>

#include "vref/Documentation.hpp"
#include "vref/Query.hpp"

namespace reference::tools {

// A wider search that finds something when the original one found nothing.
struct Lesson {
    // What it found: "in any case there is: A, B", "of another type there is: A (class)". UTF-8.
    std::string text;
    QueryOptions query;
};

// For a search by name that found nothing: the first of these searches that finds something. It
// looks for the same name in another type or product, then in any case, then without its package,
// then as a part of a name or purpose. At most five results are named. Nothing if none finds
// anything.
[[nodiscard]] std::optional<Lesson> teach(const QueryOptions& asked,
                                          const Documentation& documentation);

}  // namespace reference::tools
