#pragma once

#include <chrono>
#include <ctime>

namespace reference::bench {

// The processor time of the whole process, all threads together. Other processes on the machine
// change it little, and no thread is left out.
[[nodiscard]] inline double processorSeconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

[[nodiscard]] inline double wallSeconds() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

}  // namespace reference::bench
