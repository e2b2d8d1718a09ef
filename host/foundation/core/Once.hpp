#pragma once

#include <atomic>

#include "foundation/core/Mutex.hpp"

namespace foundation::core {

// What is done once, by the first of the threads that need it, while the others wait.
//
// Instead of std::call_once: an exception that leaves that passes through the C library, which must
// load a library for it and ends the process where there is no memory left to do so.
class Once {
  public:
    Once() = default;
    Once(const Once&) = delete;  // threads wait for one place
    Once& operator=(const Once&) = delete;

    // Calls `make()` unless a call of it has returned. What it throws is thrown, and the next
    // caller tries again. Any thread, but not from within `make`.
    template <typename Make>
    void call(Make make) {
        if (m_isDone.load(std::memory_order_acquire))
            return;
        const MutexLock lock(m_mutex);
        if (m_isDone.load(std::memory_order_relaxed))
            return;
        make();
        m_isDone.store(true, std::memory_order_release);
    }

  private:
    std::atomic<bool> m_isDone{false};
    Mutex m_mutex;
};

}  // namespace foundation::core
