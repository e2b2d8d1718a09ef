// The comparator classes of the scripting language. Internal: no public header includes it.
#pragma once

#include <span>
#include <string>

#include "reference/api/RefRequestComparator.hpp"
#include "vq/vqArray.hpp"

namespace reference::api::comparator {

// A comparator class, and how an object of it becomes a function that orders results.
struct ComparatorClass {
    // Its qualified name.
    std::string name;
    // A copy of the comparator that an object of this class wraps.
    RefRequestComparator (*copyOf)(const COSInterfacePtr& object);
};

// All of them, in the order in which a value's class is compared with theirs. The first call also
// registers them with the object system, so scripts can set every comparator that they can see.
// They live as long as the process. Any thread.
[[nodiscard]] std::span<const ComparatorClass> comparatorClasses();

}  // namespace reference::api::comparator
