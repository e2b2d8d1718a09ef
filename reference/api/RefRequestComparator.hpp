#pragma once

#include <functional>

namespace reference::api {

class ReferenceData;

// Orders results: true means that the first goes before the second. It is a strict weak ordering:
// never true for a result and itself, and never true both ways. False both ways is a tie; tied
// results keep the order in which they were found. Held by value: a copy copies the comparators
// inside it. Any thread may call it, several at once on one object.
//
// The const of the answer is part of the type that the environment's other libraries are built
// with, although it has no effect on a caller, as compilers warn.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wignored-qualifiers"
using RefRequestComparator = std::function<const bool(const ReferenceData&, const ReferenceData&)>;
#pragma GCC diagnostic pop

}  // namespace reference::api
