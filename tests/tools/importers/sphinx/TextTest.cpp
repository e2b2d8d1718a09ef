#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sphinx/Text.hpp"

namespace reference::importers::sphinx {
namespace VELTRA_TEST_FILE {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(TextTest, CollapsesWhiteSpaceOfAllKinds) {
    EXPECT_EQ(collapsed("  a\n\t b\xC2\xA0\xC2\xA0"
                        "c\xE2\x80\x8B"
                        "d "),
              "a b cd");
    EXPECT_EQ(collapsed(" \n"), "");
    EXPECT_EQ(trimmed("\xC2\xA0 x \xC2\xA0"), "x");
}

TEST(TextTest, ReplacesIllFormedParts) {
    EXPECT_TRUE(isWellFormed("a\u00E4\U0001F600"));
    EXPECT_FALSE(isWellFormed("a\xFF"));
    EXPECT_FALSE(isWellFormed("\xC3"));
    EXPECT_EQ(toWellFormed("a\xFF"
                           "b"),
              "a\uFFFDb");
    EXPECT_EQ(toWellFormed("\u00E4"), "\u00E4");
}

TEST(TextTest, DecodesPercentEscapesAndNothingElse) {
    EXPECT_EQ(percentDecoded("a%20b%2Fc"), "a b/c");
    EXPECT_EQ(percentDecoded("100%"), "100%");
    EXPECT_EQ(percentDecoded("%zz%4"), "%zz%4");
}

TEST(TextTest, SplitsAtCommasOutsideBrackets) {
    EXPECT_THAT(splitAtCommas("a, b=(1, 2), c: D[e, f]"),
                ElementsAre("a", "b=(1, 2)", "c: D[e, f]"));
    EXPECT_THAT(splitAtCommas(" , "), IsEmpty());
    EXPECT_THAT(splitAtCommas("a(, b"), ElementsAre("a(, b"));
}

TEST(TextTest, GivesTheFirstCharacter) {
    EXPECT_EQ(firstCharacter("ab"), "a");
    EXPECT_EQ(firstCharacter("αb"), "α");
    EXPECT_EQ(firstCharacter("測"), "測");
}

TEST(TextTest, PutsALeadBeforeAText) {
    EXPECT_EQ(withLead("Note:", "Text."), "Note: Text.");
    EXPECT_EQ(withLead("Note:", "2022 was."), "Note: 2022 was.");
    EXPECT_EQ(withLead("Note:", "- a"), "Note:\n- a");
    EXPECT_EQ(withLead("Note:", "1. a"), "Note:\n1. a");
    EXPECT_EQ(withLead("Note:", "| a |"), "Note:\n| a |");
    EXPECT_EQ(withLead("Note:", "    code"), "Note:\n    code");
}

TEST(TextTest, GivesTheLastComponent) {
    EXPECT_EQ(lastComponent("a.b.c"), "c");
    EXPECT_EQ(lastComponent("c"), "c");
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::importers::sphinx
