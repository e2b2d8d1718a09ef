// Internal: no public header includes it.
#pragma once

#include <cstddef>

#include <boost/json/memory_resource.hpp>

namespace reference::docset {

// Memory for one document, up to a limit: a small file may hold millions of small values, each of
// which takes many times the room that it has in the file. One thread at a time.
class LimitedMemory final : public boost::json::memory_resource {
  public:
    explicit LimitedMemory(std::size_t limit) noexcept : m_left(limit) {}
    LimitedMemory(const LimitedMemory&) = delete;  // what it gave out refers to it
    LimitedMemory& operator=(const LimitedMemory&) = delete;
    ~LimitedMemory() override = default;

    // Whether the limit was what kept something from being allocated.
    [[nodiscard]] bool isExceeded() const noexcept { return m_isExceeded; }

  private:
    // Throws std::bad_alloc past the limit, too.
    void* do_allocate(std::size_t size, std::size_t alignment) override;
    void do_deallocate(void* place, std::size_t size, std::size_t alignment) override;
    [[nodiscard]] bool do_is_equal(const memory_resource& other) const noexcept override {
        return this == &other;
    }

    std::size_t m_left;
    bool m_isExceeded = false;
};

}  // namespace reference::docset
