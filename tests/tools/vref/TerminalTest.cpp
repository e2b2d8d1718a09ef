#include <string>

#include <gtest/gtest.h>

#include "vref/Terminal.hpp"

namespace reference::tools {
namespace VELTRA_TEST_FILE {

TEST(TerminalTest, StylesOnlyWhereThereAreColours) {
    const Terminal colours(true, true, 80);
    const Terminal plain(true, false, 80);
    EXPECT_EQ(colours.styled(Style::Name, "x"), "\033[1mx\033[0m");
    EXPECT_EQ(plain.styled(Style::Name, "x"), "x");
    EXPECT_EQ(colours.styled(Style::Plain, "x"), "x");
    EXPECT_EQ(colours.styled(Style::Name, ""), "");
}

TEST(TerminalTest, LinksOnlyWhereThereAreLinks) {
    const Terminal links(true, true, 80, 24, true);
    const Terminal plain(true, true, 80);
    EXPECT_EQ(links.linked("file:///a", "x"), "\033]8;;file:///a\033\\x\033]8;;\033\\");
    EXPECT_EQ(plain.linked("file:///a", "x"), "x");
    EXPECT_EQ(links.linked("", "x"), "x");
    EXPECT_EQ(links.linked("file:///a", ""), "");
}

TEST(TerminalTest, KnowsItsOwnSequences) {
    const Terminal links(true, true, 80, 24, true);
    const std::string styled = links.styled(Style::Name, "m");
    const std::string text = "a " + links.linked("file:///m", styled) + " z";
    EXPECT_EQ(withoutLinks(text), "a " + styled + " z");
    EXPECT_EQ(withoutEscapes(text), "a m z");
    EXPECT_EQ(withoutEscapes("plain"), "plain");
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tools
