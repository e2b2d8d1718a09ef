#include <new>
#include <string>

#include <gtest/gtest.h>

#include "foundation/core/TextStream.hpp"
#include "support/LiveAllocations.hpp"

namespace foundation::core {
namespace VELTRA_TEST_FILE {

using reference::tests::FailingAllocation;

TEST(TextStreamTest, IsWholeOrThrowsWhicheverAllocationFails) {
    const std::string line(100, 'x');
    std::string whole;
    for (int count = 0; count < 50; ++count)
        whole += line + "7\n";
    long failures = 0;
    for (long number = 1;; ++number) {
        TextStream text;
        bool hasThrown = false;
        bool hasFailed = false;
        {
            const FailingAllocation failing(number);
            try {
                for (int count = 0; count < 50; ++count)
                    text << line << 7 << '\n';
            } catch (const std::bad_alloc&) {
                hasThrown = true;
            }
            hasFailed = FailingAllocation::hasFailed();
        }
        EXPECT_EQ(hasThrown, hasFailed) << "allocation " << number;
        if (!hasFailed) {
            EXPECT_EQ(text.str(), whole);
            break;
        }
        ++failures;
    }
    EXPECT_GT(failures, 0);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace foundation::core
