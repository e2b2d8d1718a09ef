#include "docset/LimitedMemory.hpp"

#include <new>

namespace reference::docset {

void* LimitedMemory::do_allocate(std::size_t size, std::size_t alignment) {
    if (size > m_left) {
        m_isExceeded = true;
        throw std::bad_alloc();
    }
    void* const place = ::operator new(size, std::align_val_t(alignment));
    m_left -= size;
    return place;
}

void LimitedMemory::do_deallocate(void* place, std::size_t size, std::size_t alignment) {
    ::operator delete(place, std::align_val_t(alignment));
    m_left += size;
}

}  // namespace reference::docset
