// What the tool does where ICU gets no memory.
#include <cstddef>
#include <cstdlib>
#include <new>
#include <unistd.h>

#include <gtest/gtest.h>
#include <unicode/uclean.h>

#include "vref/DisplayText.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

// How often ICU may still allocate.
std::size_t allocationsLeft = 0;

bool mayAllocate() {
    if (allocationsLeft == 0)
        return false;
    --allocationsLeft;
    return true;
}

void* allocate(const void* /*context*/, std::size_t size) {
    return mayAllocate() ? std::malloc(size) : nullptr;
}

void* allocateAgain(const void* /*context*/, void* memory, std::size_t size) {
    return mayAllocate() ? std::realloc(memory, size) : nullptr;
}

void release(const void* /*context*/, void* memory) {
    std::free(memory);
}

// Wraps a text with so much memory as ICU needs, tried from none up. Ends the process: 0 for a text
// that was wrapped in the end; a wait for ever is ended by SIGALRM.
[[noreturn]] void wrapWithTooLittleMemory() {
    ::alarm(20);
    UErrorCode error = U_ZERO_ERROR;
    u_setMemoryFunctions(nullptr, &allocate, &allocateAgain, &release, &error);
    bool isPrepared = false;
    for (std::size_t most = 0; most < 2000; ++most) {
        allocationsLeft = most;
        try {
            // The tool ends where this fails.
            if (!isPrepared)
                tools::prepareDefaultLocale();
            isPrepared = true;
            if (tools::wrapToWidth("one two", 4).size() == 2)
                std::exit(U_FAILURE(error) || most == 0 ? 1 : 0);
        } catch (const std::bad_alloc&) {
            continue;
        }
    }
    std::exit(2);
}

TEST(WantOfMemoryTest, IcuNeverWaitsForItself) {
    // Runs the program anew, in which ICU has not been used.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(wrapWithTooLittleMemory(), testing::ExitedWithCode(0), "");
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
