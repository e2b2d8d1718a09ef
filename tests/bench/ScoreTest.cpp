#include <gtest/gtest.h>

#include "relevance/Score.hpp"

namespace reference::bench {
namespace VELTRA_TEST_FILE {

TEST(ScoreTest, CountsFirstPlacesFivePlacesAndReciprocals) {
    Score score;
    score.add(1, 30);
    score.add(5, 10);
    score.add(6, 20);
    score.add(0, 40);
    EXPECT_EQ(score.count(), 4U);
    EXPECT_DOUBLE_EQ(score.first(), 0.25);
    EXPECT_DOUBLE_EQ(score.amongFive(), 0.5);
    EXPECT_DOUBLE_EQ(score.meanReciprocalRank(), (1 + 1.0 / 5 + 1.0 / 6) / 4);
}

TEST(ScoreTest, TellsTheTimesInOrder) {
    Score score;
    for (const double time : {30.0, 10.0, 20.0})
        score.add(1, time);
    EXPECT_DOUBLE_EQ(score.time(0), 10);
    EXPECT_DOUBLE_EQ(score.time(0.5), 20);
    EXPECT_DOUBLE_EQ(score.time(1), 30);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::bench
