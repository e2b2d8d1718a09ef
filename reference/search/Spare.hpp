#pragma once

#include <memory>
#include <new>
#include <utility>

namespace reference::search {

// An empty object that is kept at hand, so that putting it in the place of a full one needs no
// memory. One thread at a time.
template <typename T>
class Spare {
  public:
    // A new object, that nobody else has. Throws std::bad_alloc only if memory has been short for
    // two calls in a row.
    [[nodiscard]] std::shared_ptr<T> take() {
        auto taken = m_spare ? std::move(m_spare) : std::make_shared<T>();
        try {
            m_spare = std::make_shared<T>();
        } catch (const std::bad_alloc&) {
            // It is empty now, and the next call tries again.
        }
        return taken;
    }

  private:
    std::shared_ptr<T> m_spare = std::make_shared<T>();
};

}  // namespace reference::search
