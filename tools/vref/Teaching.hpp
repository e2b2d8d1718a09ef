#pragma once

#include <iosfwd>

#include "vref/Documentation.hpp"
#include "vref/Query.hpp"

namespace reference::tools {

// Tells on `out`, for a search by name that found nothing, which wider search would have found
// something: the same name in any case, then without its package, then as a part of a name or
// purpose. Of the first of these that finds something it names at most five results and the
// command. Says nothing when none does.
void teach(std::ostream& out, const QueryOptions& options, const Documentation& documentation);

}  // namespace reference::tools
