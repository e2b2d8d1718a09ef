// Scores that were worked out by hand after the rule.
#include <optional>
#include <ostream>
#include <string>

#include <gmock/gmock.h>

#include "relevance/DevDocsRule.hpp"

namespace reference::bench {
namespace VELTRA_TEST_FILE {

using testing::Eq;
using testing::Optional;

TEST(DevDocsRuleTest, NamesAreComparedInLowerCaseWithDotsForSeparators) {
    EXPECT_EQ(normalizedName("Path::Exists()"), "path.exists");
    EXPECT_EQ(normalizedName("a#b->c"), "a.b.c");
    EXPECT_EQ(normalizedName("click event"), "click");
    EXPECT_EQ(normalizedName("open (Python)"), "open");
    EXPECT_EQ(normalizedName("read_csv(...)"), "read_csv");
    EXPECT_EQ(normalizedName("kd tree"), "kd.tree");
    EXPECT_EQ(normalizedName("a..b"), "a.b");
    EXPECT_EQ(normalizedName("a\nb"), "ab");
}

TEST(DevDocsRuleTest, AQuestionMayEndWithinASeparator) {
    EXPECT_EQ(normalizedQuestion("Path:"), "path.");
    EXPECT_EQ(normalizedName("Path:"), "path:");
}

struct Row {
    std::string name;
    std::string question;
    std::optional<int> score;
};

std::ostream& operator<<(std::ostream& stream, const Row& row) {
    return stream << row.question << " in " << row.name;
}

class ContainedTest : public testing::TestWithParam<Row> {};

TEST_P(ContainedTest, HasTheScoreOfTheRule) {
    EXPECT_THAT(containedScore(GetParam().name, GetParam().question), Eq(GetParam().score));
}

INSTANTIATE_TEST_SUITE_P(
    Places, ContainedTest,
    testing::Values(Row{"deque", "deque", 100},
                    // A letter that is left over costs a point.
                    Row{"dequeue", "deque", 98},
                    // At the beginning of a component, as at the beginning of the name, less one.
                    Row{"collections.deque", "deque", 99},
                    // So does each dot but the one before the question.
                    Row{"a.b.deque", "deque", 98},
                    // Each dot after the question costs five more than its letter.
                    Row{"deque.a.b", "deque", 86},
                    // Within a component: three letters left over; the place counts once more, from
                    // the dot; so does what follows.
                    Row{"xdequey", "deque", 95}, Row{"a.xdeque", "deque", 94},
                    // The best place counts.
                    Row{"xdeque.deque", "deque", 99}, Row{"a", "a", 100},
                    Row{"ba", "a", std::nullopt}, Row{"b.a", "a", 99},
                    Row{"deque", "queue", std::nullopt},
                    // No name that contains the question has less than a point.
                    Row{"deque" + std::string(120, 'x'), "deque", 1}));

class ScatteredTest : public testing::TestWithParam<Row> {};

TEST_P(ScatteredTest, HasTheScoreOfTheRule) {
    EXPECT_THAT(scatteredScore(GetParam().name, GetParam().question), Eq(GetParam().score));
}

INSTANTIATE_TEST_SUITE_P(
    Places, ScatteredTest,
    testing::Values(
        // At the beginning of a component, by the length from first letter to last.
        Row{"gaussian", "gan", 92}, Row{"stats.gaussian", "gan", 92},
        Row{"g" + std::string(60, 'x') + "an", "gan", 66},
        // At the end, and in between.
        Row{"xgaussian", "gan", 59}, Row{"xgaussians", "gan", 26},
        // The last component counts for itself where that is better.
        Row{"xg.gaussian", "gan", 92},
        // A name that contains the question has another score.
        Row{"organ", "gan", std::nullopt}, Row{"gaussian", "gna", std::nullopt},
        Row{"gan", "gan", std::nullopt}));

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::bench
