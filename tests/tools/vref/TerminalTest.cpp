#include <gtest/gtest.h>

#include "vref/Terminal.hpp"

namespace reference::tools {
namespace {

TEST(TerminalTest, StylesOnlyWhereThereAreColours) {
    const Terminal colours(true, true, 80);
    const Terminal plain(true, false, 80);
    EXPECT_EQ(colours.styled(Style::Name, "x"), "\033[1mx\033[0m");
    EXPECT_EQ(plain.styled(Style::Name, "x"), "x");
    EXPECT_EQ(colours.styled(Style::Plain, "x"), "x");
    EXPECT_EQ(colours.styled(Style::Name, ""), "");
}

}  // namespace
}  // namespace reference::tools
