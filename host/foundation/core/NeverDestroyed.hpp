#pragma once

#include <cstddef>
#include <new>
#include <type_traits>
#include <utility>

namespace foundation::core {

// An object that lives from its construction to the end of the process: its destructor is never
// run. All state of the process is held in one of these. While main() returns, other threads may
// still search, log and clear caches, and static objects of other libraries may do so from their
// destructors; what they use must still be there.
//
//     NeverDestroyed<std::map<Key, Value>> s_byKey;          // made when the library is loaded
//     static const NeverDestroyed<Registry> s_registry;      // made on first use
//
// Which threads may use the object is for T to say; making it in a function is safe from several.
// Clang rejects any other static object of the libraries that has a destructor
// (-Wexit-time-destructors).
template <typename T>
class NeverDestroyed {
  public:
    // Constructs the T from these arguments. Throws what its constructor throws.
    template <typename... Arguments>
    explicit NeverDestroyed(Arguments&&... arguments) {
        ::new (static_cast<void*>(m_storage)) T(std::forward<Arguments>(arguments)...);
    }
    NeverDestroyed(const NeverDestroyed&) = delete;  // bound to its place
    NeverDestroyed& operator=(const NeverDestroyed&) = delete;

    [[nodiscard]] T& operator*() noexcept { return *get(); }
    [[nodiscard]] const T& operator*() const noexcept { return *get(); }
    [[nodiscard]] T* operator->() noexcept { return get(); }
    [[nodiscard]] const T* operator->() const noexcept { return get(); }

  private:
    [[nodiscard]] T* get() noexcept { return std::launder(reinterpret_cast<T*>(m_storage)); }
    [[nodiscard]] const T* get() const noexcept {
        return std::launder(reinterpret_cast<const T*>(m_storage));
    }

    alignas(T) std::byte m_storage[sizeof(T)];
};

static_assert(std::is_trivially_destructible_v<NeverDestroyed<int>>);

}  // namespace foundation::core
