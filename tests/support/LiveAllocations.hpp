// Counts what a program holds on the heap, and makes allocations fail. Linking LiveAllocations.cpp
// replaces the program's operators new and delete, so that it stands in test programs of its own.
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

// While it lives, the N-th allocation that this thread makes from now on fails, and with
// `forGood` all that follow. One at a time in a thread.
class FailingAllocation {
  public:
    explicit FailingAllocation(long number, bool forGood = false) noexcept;
    ~FailingAllocation();
    FailingAllocation(const FailingAllocation&) = delete;  // one is in force
    FailingAllocation& operator=(const FailingAllocation&) = delete;

    // Whether an allocation has failed.
    [[nodiscard]] static bool hasFailed() noexcept;
};

}  // namespace reference::tests
