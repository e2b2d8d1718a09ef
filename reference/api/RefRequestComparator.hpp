#pragma once

#include <functional>

namespace reference::api {

class ReferenceData;

// Orders results: true means that the first goes before the second. A strict weak ordering: never
// true of a result and itself, never true both ways; false both ways is a tie, which leaves the
// order in which the results were found. Held by value: a copy copies the comparators inside it.
// A call may come from any thread, several at once on one object.
//
// The const of the answer is part of the type that the environment's other libraries are built
// with; compilers rightly remark that it has no effect on a caller.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wignored-qualifiers"
using RefRequestComparator = std::function<const bool(const ReferenceData&, const ReferenceData&)>;
#pragma GCC diagnostic pop

}  // namespace reference::api
