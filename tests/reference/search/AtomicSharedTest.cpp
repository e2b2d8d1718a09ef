// A shared pointer that is read, replaced, and replaced only in place of another.
#include <memory>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "reference/search/AtomicShared.hpp"

namespace reference::search {
namespace VELTRA_TEST_FILE {

using Shared = AtomicShared<const int>;

TEST(AtomicSharedTest, ExchangingStoresTheNewAndReturnsTheOld) {
    const auto first = std::make_shared<const int>(1);
    const auto second = std::make_shared<const int>(2);
    Shared shared(first);
    EXPECT_EQ(shared.load(), first);
    EXPECT_EQ(shared.exchange(second), first);
    EXPECT_EQ(shared.load(), second);
    EXPECT_EQ(shared.exchange(nullptr), second);
    EXPECT_EQ(shared.load(), nullptr);
}

TEST(AtomicSharedTest, AValueIsStoredInPlaceOfTheExpectedOneAlone) {
    const auto first = std::make_shared<const int>(1);
    const auto second = std::make_shared<const int>(1);
    Shared shared(first);
    Shared::Value expected = second;
    Shared::Value value = second;
    EXPECT_FALSE(shared.exchangeIf(expected, value));
    EXPECT_EQ(shared.load(), first);
    EXPECT_EQ(expected, first);
    EXPECT_EQ(value, second);
    EXPECT_TRUE(shared.exchangeIf(expected, value));
    EXPECT_EQ(shared.load(), second);
    EXPECT_EQ(value, first);
}

// Each thread adds one to what is there as often as it takes until nobody was quicker.
TEST(AtomicSharedTest, NoChangeIsLostWhereSeveralThreadsMakeThem) {
    constexpr int each = 2000;
    Shared shared(std::make_shared<const int>(0));
    std::vector<std::thread> threads;
    for (int number = 0; number < 3; ++number)
        threads.emplace_back([&shared] {
            for (int change = 0; change < each; ++change) {
                auto expected = shared.load();
                auto value = std::make_shared<const int>(*expected + 1);
                while (!shared.exchangeIf(expected, value))
                    value = std::make_shared<const int>(*expected + 1);
            }
        });
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(*shared.load(), 3 * each);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::search
