#include <fstream>
#include <stdexcept>

#include <gmock/gmock.h>

#include "relevance/Question.hpp"
#include "support/TempFolder.hpp"

namespace reference::bench {
namespace VELTRA_TEST_FILE {

using testing::ElementsAre;
using testing::SizeIs;

TEST(QuestionTest, TheFirstRightAnswerCounts) {
    const Question question{.text = "sort", .kind = "name", .right = {"a:b", "a:c"}};
    EXPECT_EQ(question.rankIn({"a:c", "a:b"}), 1U);
    EXPECT_EQ(question.rankIn({"a:x", "b:b", "a:b"}), 3U);
    EXPECT_EQ(question.rankIn({"a:x"}), 0U);
    EXPECT_EQ(question.rankIn({}), 0U);
}

TEST(QuestionTest, AListIsReadInItsOrder) {
    const tests::TempFolder folder;
    const auto file = folder.path() / "list.json";
    std::ofstream(file) << R"([{"question": "é", "kind": "name", "right": ["a:b", "a:c"]},
                               {"question": "x", "kind": "slip", "right": []}])";
    const auto questions = readQuestions(file);
    ASSERT_THAT(questions, SizeIs(2));
    EXPECT_EQ(questions[0].text, "é");
    EXPECT_EQ(questions[0].kind, "name");
    EXPECT_THAT(questions[0].right, ElementsAre("a:b", "a:c"));
    EXPECT_EQ(questions[1].kind, "slip");
}

TEST(QuestionTest, AListThatIsNotThereIsAnError) {
    EXPECT_THROW(static_cast<void>(readQuestions("/nowhere/list.json")), std::runtime_error);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::bench
