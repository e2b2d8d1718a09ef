// What the tool does where ICU gets no memory.
#include <cstddef>
#include <cstdlib>
#include <new>
#include <string>
#include <unistd.h>
#include <vector>

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

enum Outcome { OutOfMemory, Wrapped, Wrong };

// Wraps a text where ICU may allocate so often. Ends the process, as does SIGALRM what waits for
// ever.
[[noreturn]] void wrapWithSoMuch(std::size_t allocations) {
    ::alarm(20);
    UErrorCode error = U_ZERO_ERROR;
    u_setMemoryFunctions(nullptr, &allocate, &allocateAgain, &release, &error);
    if (U_FAILURE(error))
        std::exit(Wrong);
    // Longer than what ICU keeps without an allocation.
    const std::vector<std::string> words = {std::string(100, 'a'), std::string(100, 'b')};
    allocationsLeft = allocations;
    try {
        tools::prepareDefaultLocale();
        const auto lines = tools::wrapToWidth(words[0] + " " + words[1], 100);
        std::exit(lines == words ? Wrapped : Wrong);
    } catch (const std::bad_alloc&) {
        std::exit(OutOfMemory);
    }
}

TEST(WantOfMemoryTest, TextIsWrappedOrThatIsToldAndIcuNeverWaitsForItself) {
    // Runs the program anew, in which ICU has not been used.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    constexpr std::size_t enough = 60;
    for (std::size_t allocations = 0; allocations < enough; ++allocations)
        EXPECT_EXIT(
            wrapWithSoMuch(allocations),
            [](int status) {
                return testing::ExitedWithCode(OutOfMemory)(status) ||
                       testing::ExitedWithCode(Wrapped)(status);
            },
            "")
            << allocations;
    EXPECT_EXIT(wrapWithSoMuch(0), testing::ExitedWithCode(OutOfMemory), "");
    EXPECT_EXIT(wrapWithSoMuch(enough), testing::ExitedWithCode(Wrapped), "");
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
