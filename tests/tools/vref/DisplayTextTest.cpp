#include <cstddef>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "vref/DisplayText.hpp"

namespace reference::tools {
namespace VELTRA_TEST_FILE {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(DisplayTextTest, WidthCountsColumnsNotBytes) {
    struct Case {
        std::string text;
        std::size_t width;
    };
    const Case cases[] = {
        {"", 0}, {"abc", 3}, {"Größe", 5}, {"表を作る", 8}, {"e\u0301", 1}, {"ｆ", 2}, {"a\tb", 2},
    };
    for (const auto& c : cases)
        EXPECT_EQ(displayWidth(c.text), c.width) << c.text;
}

TEST(DisplayTextTest, CutsWithAnEllipsisAndNeverExceedsTheWidth) {
    EXPECT_EQ(cutToWidth("short", 5), "short");
    EXPECT_EQ(cutToWidth("longer", 5), "long…");
    EXPECT_EQ(cutToWidth("two words", 5), "two…");
    EXPECT_EQ(cutToWidth("表を作る", 4), "表…");
    EXPECT_EQ(cutToWidth("x", 0), "");
    for (std::size_t width = 0; width < 12; ++width)
        EXPECT_LE(displayWidth(cutToWidth("a表bを c作d", width)), width) << width;
}

TEST(DisplayTextTest, PadsToTheWidth) {
    EXPECT_EQ(padToWidth("ab", 4), "ab  ");
    EXPECT_EQ(padToWidth("表", 4), "表  ");
    EXPECT_EQ(padToWidth("longer", 4), "longer");
}

TEST(DisplayTextTest, WrapsAtWordsAndKeepsLines) {
    EXPECT_THAT(wrapToWidth("", 10), IsEmpty());
    EXPECT_THAT(wrapToWidth("one two three", 8), ElementsAre("one two", "three"));
    EXPECT_THAT(wrapToWidth("unbreakable word", 5), ElementsAre("unbreakable", "word"));
    EXPECT_THAT(wrapToWidth("a\n\nb", 10), ElementsAre("a", "", "b"));
    EXPECT_THAT(wrapToWidth("  - item", 10), ElementsAre("  - item"));
    EXPECT_THAT(wrapToWidth("表を作る人", 6), ElementsAre("表を作", "る人"));
}

TEST(DisplayTextTest, ControlsDoNotReachATerminal) {
    EXPECT_EQ(withoutControls("a\033[31mb\a\r\nc\td"), "a[31mb\nc\td");
    EXPECT_EQ(withoutControls("Größe 表"), "Größe 表");
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tools
