#include "support/LiveAllocations.hpp"

#include <atomic>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace {

std::atomic<long> blocks{0};
std::atomic<long> bytes{0};
thread_local long madeHere = 0;

// Which of the thread's allocations fail, counted down; 0: none.
thread_local long untilFailure = 0;
thread_local bool failsForGood = false;
thread_local bool hasFailed = false;

bool fails() noexcept {
    if (untilFailure == 0 || --untilFailure > 0)
        return false;
    if (failsForGood)
        untilFailure = 1;
    hasFailed = true;
    return true;
}

// Null stays null.
void* noted(void* memory) noexcept {
    if (memory == nullptr)
        return nullptr;
    ++madeHere;
    ++blocks;
    bytes += static_cast<long>(malloc_usable_size(memory));
    return memory;
}

void release(void* memory) noexcept {
    if (memory == nullptr)
        return;
    --blocks;
    bytes -= static_cast<long>(malloc_usable_size(memory));
    std::free(memory);
}

void* allocate(std::size_t size) noexcept {
    return fails() ? nullptr : noted(std::malloc(size == 0 ? 1 : size));
}

void* allocate(std::size_t size, std::align_val_t alignment) noexcept {
    if (fails())
        return nullptr;
    const auto unit = static_cast<std::size_t>(alignment);
    return noted(std::aligned_alloc(unit, (size + unit - 1) / unit * unit));
}

void* orThrow(void* memory) {
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}

}  // namespace

// All forms: a sanitizer brings its own of each, and what one form allocates another may free.
void* operator new(std::size_t size) {
    return orThrow(allocate(size));
}
void* operator new[](std::size_t size) {
    return orThrow(allocate(size));
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return allocate(size);
}
void* operator new(std::size_t size, std::align_val_t alignment) {
    return orThrow(allocate(size, alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment) {
    return orThrow(allocate(size, alignment));
}
void* operator new(std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    return allocate(size, alignment);
}
void* operator new[](std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    return allocate(size, alignment);
}

void operator delete(void* memory) noexcept {
    release(memory);
}
void operator delete[](void* memory) noexcept {
    release(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    release(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    release(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
    release(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept {
    release(memory);
}
void operator delete(void* memory, std::align_val_t) noexcept {
    release(memory);
}
void operator delete[](void* memory, std::align_val_t) noexcept {
    release(memory);
}
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept {
    release(memory);
}
void operator delete[](void* memory, std::size_t, std::align_val_t) noexcept {
    release(memory);
}
void operator delete(void* memory, std::align_val_t, const std::nothrow_t&) noexcept {
    release(memory);
}
void operator delete[](void* memory, std::align_val_t, const std::nothrow_t&) noexcept {
    release(memory);
}

namespace reference::tests {

LiveAllocations LiveAllocations::now() noexcept {
    return {.blocks = ::blocks, .bytes = ::bytes};
}

long LiveAllocations::made() noexcept {
    return ::madeHere;
}

FailingAllocation::FailingAllocation(long number, bool forGood) noexcept {
    ::untilFailure = number;
    ::failsForGood = forGood;
    ::hasFailed = false;
}

FailingAllocation::~FailingAllocation() {
    ::untilFailure = 0;
}

bool FailingAllocation::hasFailed() noexcept {
    return ::hasFailed;
}

}  // namespace reference::tests
