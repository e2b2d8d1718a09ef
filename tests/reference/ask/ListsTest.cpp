// Lists of numbers, and the best of many.
#include <cstdint>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "reference/ask/Likeliest.hpp"
#include "reference/ask/keyLists.hpp"

namespace reference::ask {
namespace VELTRA_TEST_FILE {

using Numbers = std::vector<std::uint32_t>;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct Scored {
    char name;
    float score;
};

std::string bestOf(std::size_t count, const std::vector<Scored>& shown) {
    Likeliest<Scored> best(count);
    for (const Scored& one : shown)
        best.add(one);
    std::string names;
    for (const Scored& one : best.take())
        names += one.name;
    return names;
}

TEST(LikeliestTest, KeepsTheBestInOrder) {
    EXPECT_EQ(bestOf(3, {{'a', 1}, {'b', 3}, {'c', 2}}), "bca");
    EXPECT_EQ(bestOf(2, {{'a', 1}, {'b', 3}, {'c', 2}}), "bc");
    EXPECT_EQ(bestOf(2, {{'a', 3}, {'b', 2}, {'c', 1}}), "ab");
    EXPECT_EQ(bestOf(1, {{'a', 1}, {'b', 2}, {'c', 3}}), "c");
    EXPECT_EQ(bestOf(5, {{'a', 1}}), "a");
    EXPECT_EQ(bestOf(0, {{'a', 1}, {'b', 2}}), "");
}

TEST(LikeliestTest, OfEqualOnesKeepsThoseThatAreShownFirst) {
    EXPECT_EQ(bestOf(2, {{'a', 1}, {'b', 1}, {'c', 1}}), "ab");
    EXPECT_EQ(bestOf(3, {{'a', 1}, {'b', 2}, {'c', 1}, {'d', 2}}), "bda");
}

TEST(LikeliestTest, TellsBeforehandWhatItWouldKeep) {
    Likeliest<Scored> best(1);
    EXPECT_TRUE(best.isBetter(-1));
    best.add({.name = 'a', .score = 2});
    EXPECT_FALSE(best.isBetter(2));
    EXPECT_TRUE(best.isBetter(2.5F));
    EXPECT_FALSE(Likeliest<Scored>(0).isBetter(1));
}

TEST(KeyListsTest, NumbersArePutInOrderEachOnceWhetherFewOrMany) {
    // Few of many possible ones are sorted; otherwise they are marked.
    for (const std::size_t end : {130U, 192U, 256U, 1000U}) {
        Numbers numbers = {129, 0, 64, 63, 129, 65, 128, 127, 0};
        putInOrder(numbers, end);
        EXPECT_THAT(numbers, ElementsAre(0, 63, 64, 65, 127, 128, 129)) << end;
    }
    Numbers none;
    putInOrder(none, 0);
    EXPECT_THAT(none, IsEmpty());
    Numbers few = {900, 3, 900};
    putInOrder(few, 1000);
    EXPECT_THAT(few, ElementsAre(3, 900));
}

TEST(KeyListsTest, UnitedListsHaveEachNumberOnce) {
    const struct {
        Numbers all;
        Numbers more;
        Numbers united;
    } cases[] = {{{1, 3}, {2, 3, 4}, {1, 2, 3, 4}}, {{}, {2}, {2}}, {{1}, {}, {1}}, {{}, {}, {}}};
    for (const auto& c : cases) {
        Numbers all = c.all;
        unite(all, c.more);
        EXPECT_EQ(all, c.united);
    }
}

TEST(KeyListsTest, HoldsSaysWhatIsInAList) {
    EXPECT_TRUE(holds({1, 4, 9}, 4));
    EXPECT_FALSE(holds({1, 4, 9}, 5));
    EXPECT_FALSE(holds({}, 0));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::ask
