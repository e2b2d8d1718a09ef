// A shared pointer that several threads read and replace. Internal: no public header includes it.
#pragma once

#include <atomic>
#include <memory>
#include <thread>
#include <utility>

namespace reference::search {

// What std::atomic<std::shared_ptr<T>> is meant to be: in GCC 12's library its load() is a data
// race with a later store (it lets go of the pointer with relaxed order), and the older functions
// for shared pointers lock one of a few mutexes that the whole process shares. Here a flag is
// raised for the length of a copy.
template <typename T>
class AtomicShared {
  public:
    using Value = std::shared_ptr<T>;

    explicit AtomicShared(Value value) : m_value(std::move(value)) {}

    [[nodiscard]] Value load() const {
        const Raised raised(m_flag);
        return m_value;
    }

    // Stores `value` and returns what was there, which dies where the caller lets it.
    [[nodiscard]] Value exchange(Value value) {
        const Raised raised(m_flag);
        m_value.swap(value);
        return value;
    }

    // Stores `value` if `expected` is there, and swaps the old value into `value`; otherwise sets
    // `expected` to what is there.
    [[nodiscard]] bool exchangeIf(Value& expected, Value& value) {
        Value dropped;  // dies after the flag is lowered
        const Raised raised(m_flag);
        if (m_value == expected) {
            m_value.swap(value);
            return true;
        }
        dropped = std::exchange(expected, m_value);
        return false;
    }

  private:
    class Raised {
      public:
        explicit Raised(std::atomic_flag& flag) : m_flag(flag) {
            while (m_flag.test_and_set(std::memory_order_acquire))
                std::this_thread::yield();
        }
        Raised(const Raised&) = delete;  // bound to its scope
        Raised& operator=(const Raised&) = delete;
        ~Raised() { m_flag.clear(std::memory_order_release); }

      private:
        std::atomic_flag& m_flag;
    };

    mutable std::atomic_flag m_flag;
    Value m_value;
};

}  // namespace reference::search
