// Numbers come out in ascending order, each once, whether few or many were put in.
#include <algorithm>
#include <cstdint>
#include <vector>

#include <gmock/gmock.h>

#include "docimage/Image.hpp"
#include "reference/search/NumberSet.hpp"

namespace reference::search {
namespace VELTRA_TEST_FILE {

using Numbers = std::vector<std::uint32_t>;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

Numbers collected(const Numbers& numbers, std::size_t limit) {
    NumberSet set(limit);
    for (const std::uint32_t number : numbers)
        set.insert(number);
    const Numbers seen(set.numbers().begin(), set.numbers().end());
    NumberSet other(limit);
    for (const std::uint32_t number : numbers)
        other.insert(number);
    EXPECT_EQ(other.take(), seen);
    return seen;
}

TEST(NumberSetTest, AFewAreSortedAndTakenOnce) {
    EXPECT_THAT(collected({}, 10), IsEmpty());
    EXPECT_THAT(collected({7, 0, 9, 7, 0}, 10), ElementsAre(0, 7, 9));
}

// Around the count from which on bits are kept, and around the ends of the words that hold them.
TEST(NumberSetTest, ManyAreInOrderHoweverTheyCame) {
    for (const std::uint32_t count : {47U, 48U, 49U, 50U, 63U, 64U, 65U, 127U, 128U, 129U, 200U}) {
        Numbers ascending = allNumbers(count);
        ASSERT_EQ(ascending.size(), count);
        ASSERT_EQ(ascending.back(), count - 1);
        Numbers given = ascending;
        std::ranges::reverse(given);
        given.insert(given.end(), ascending.begin(), ascending.end());
        EXPECT_EQ(collected(given, count), ascending) << count;
        // Of each pair one, so that every second bit is left out.
        std::erase_if(given, [](std::uint32_t number) { return number % 2 == 0; });
        std::erase_if(ascending, [](std::uint32_t number) { return number % 2 == 0; });
        EXPECT_EQ(collected(given, count), ascending) << count;
    }
}

TEST(NumberSetTest, TheSameNumberManyTimesIsOne) {
    EXPECT_THAT(collected(Numbers(100, 3), 4), ElementsAre(3));
    EXPECT_THAT(collected(Numbers(100, 0), 1), ElementsAre(0));
}

TEST(NumberSetTest, ANumberThatIsNotBelowTheLimitIsDamage) {
    NumberSet few(5);
    few.insert(4);
    EXPECT_THROW(few.insert(5), docimage::DamagedImage);
    NumberSet many(64);
    for (const std::uint32_t number : allNumbers(64))
        many.insert(number);
    EXPECT_THROW(many.insert(64), docimage::DamagedImage);
    EXPECT_EQ(many.numbers().size(), 64U);
    NumberSet none(0);
    EXPECT_THROW(none.insert(0), docimage::DamagedImage);
}

TEST(NumberSetTest, AllNumbersBeginAtZero) {
    EXPECT_THAT(allNumbers(0), IsEmpty());
    EXPECT_THAT(allNumbers(3), ElementsAre(0, 1, 2));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::search
