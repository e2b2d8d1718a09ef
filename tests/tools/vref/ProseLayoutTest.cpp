#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "vref/DisplayText.hpp"
#include "vref/ProseLayout.hpp"

namespace reference::tools {
namespace VELTRA_TEST_FILE {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::string laidOut(const std::string& text, std::size_t width = 30) {
    std::string result;
    for (const std::string& line : layOutProse(text, width))
        result += line + "\n";
    return result;
}

TEST(ProseLayoutTest, BreaksProseAndSetsListsUnderThemselves) {
    const struct {
        const char* name;
        const char* text;
        const char* lines;
    } rows[] = {
        {"nothing", "", ""},
        {"paragraphs", "One paragraph that is too long for it.\n\nTwo.",
         "One paragraph that is too long\nfor it.\n\nTwo.\n"},
        {"item", "- many words that do not fit on a line\n- few",
         "- many words that do not fit\n  on a line\n- few\n"},
        {"number", "9. many words that do not fit on it\n10. few",
         "9. many words that do not fit\n   on it\n10. few\n"},
        {"second paragraph of an item", "- one\n  many words that do not fit on a line",
         "- one\n  many words that do not fit\n  on a line\n"},
        {"nested",
         "- one\n  - many words that do not fit on a line\n    goes on for a long while too",
         "- one\n  - many words that do not fit\n    on a line\n    goes on for a long while\n"
         "    too\n"},
        {"code", "So:\n\n    x = f(one, two, three, four, five)\n    \n      y",
         "So:\n\n    x = f(one, two, three, four, five)\n\n      y\n"},
        {"code in an item", "- one\n      x = f(one, two, three, four, five)",
         "- one\n      x = f(one, two, three, four, five)\n"},
        {"code after a list", "- one\n\n    x = f(one, two, three, four, five)",
         "- one\n\n    x = f(one, two, three, four, five)\n"},
        {"a number within a sentence", "In 2022. There", "In 2022. There\n"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(laidOut(row.text), row.lines) << row.name;
}

TEST(ProseLayoutTest, AlignsTables) {
    EXPECT_EQ(laidOut("See:\n\n| a | long |\n|---|---|\n| 1 \\| 2 | 3 |\n| | 測 |\n\nAfter."),
              "See:\n\na      long\n─────  ────\n1 | 2  3\n       測\n\nAfter.\n");
    EXPECT_EQ(laidOut("- t:\n  | a | b |\n  | c | d |\n- u"), "- t:\n  a  b\n  c  d\n- u\n");
}

TEST(ProseLayoutTest, BreaksTheCellsOfAWideTable) {
    EXPECT_EQ(
        laidOut("| a | b |\n|---|---|\n| 1 | many words that do not fit on a line |\n| 2 | x |"),
        "a  b\n─  ───────────────────────────\n1  many words that do not fit\n   on a line\n\n2  "
        "x\n");
    EXPECT_EQ(laidOut("| name | one | two |\n|---|---|---|\n| first | many words that do not fit "
                      "| other words that do not fit |",
                      28),
              "- first\n  one: many words that do\n  not fit\n  two: other words that do\n"
              "  not fit\n");
}

TEST(ProseLayoutTest, NeverExceedsTheWidthWhereWordsAreShort) {
    const std::string text =
        "Some words here.\n\n- an item of some words\n  - and one in it with some words\n"
        "    1. and deeper\n\n| a b c | d e f | g h i |\n|---|---|---|\n| j k l m n o p q | r s t "
        "u v "
        "w | x y z |\n";
    for (std::size_t width = 30; width < 80; ++width)
        for (const std::string& line : layOutProse(text, width))
            EXPECT_LE(displayWidth(line), width) << line;
}

TEST(ProseLayoutTest, TellsSectionsByTheirUnderlines) {
    const auto dump = [](const std::string& text) {
        std::vector<std::string> result;
        for (const ProseSection& section : sectionsOf(text))
            result.push_back(section.title + "|" + section.text);
        return result;
    };
    EXPECT_THAT(dump(""), IsEmpty());
    EXPECT_THAT(dump("One.\n\nTwo."), ElementsAre("|One.\n\nTwo."));
    EXPECT_THAT(dump("One.\n\nNotes\n-----\n\nTwo.\n\nLève\n----\n\n- E"),
                ElementsAre("|One.", "Notes|Two.", "Lève|- E"));
    EXPECT_THAT(dump("Notes\n-----\n\nTwo."), ElementsAre("Notes|Two."));
    EXPECT_THAT(dump("Notes\n----\n\nTwo."), ElementsAre("|Notes\n----\n\nTwo."));
    EXPECT_THAT(dump("One\nNotes\n-----\nTwo."), ElementsAre("|One\nNotes\n-----\nTwo."));
}

TEST(ProseLayoutTest, BreaksSyntaxesAfterCommas) {
    EXPECT_THAT(layOutSyntax("f(a, b)", 30), ElementsAre("f(a, b)"));
    EXPECT_THAT(layOutSyntax("function(first, second=(1, 2), third, fourth)", 30),
                ElementsAre("function(first, second=(1, 2),", "    third, fourth)"));
    EXPECT_THAT(layOutSyntax("a_name_that_is_much_too_long_for_it = 5", 30),
                ElementsAre("a_name_that_is_much_too_long_for_it = 5"));
    EXPECT_THAT(layOutSyntax("f(a)\ng(b)", 30), ElementsAre("f(a)", "g(b)"));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tools
