// Counts what a program holds on the heap. Linking LiveAllocations.cpp replaces the program's
// operators new and delete, so that it stands in test programs of its own.
#pragma once

#include <cstddef>

namespace reference::tests {

struct LiveAllocations {
    long blocks = 0;
    long bytes = 0;

    // What is held at this moment, by all threads.
    [[nodiscard]] static LiveAllocations now() noexcept;

    // How many allocations this thread has made.
    [[nodiscard]] static long made() noexcept;

    friend bool operator==(const LiveAllocations&, const LiveAllocations&) = default;
};

}  // namespace reference::tests
