#include <algorithm>
#include <string>

#include <gtest/gtest.h>

#include "sphinx/HtmlDocument.hpp"
#include "sphinx/Tables.hpp"

namespace reference::importers::sphinx {
namespace VELTRA_TEST_FILE {

std::string textOf(const std::string& rows) {
    HtmlArena arena;
    const HtmlDocument document(arena, "<table>" + rows + "</table>");
    return tableText(document.root().findTag("table"));
}

TEST(TablesTest, HaveALineForEachRow) {
    EXPECT_EQ(textOf("<tr><td>1</td><td>2\n 3</td></tr><tr><td></td><td>4</td></tr>"),
              "| 1 | 2 3 |\n| | 4 |");
    EXPECT_EQ(textOf("<thead><tr><th>a</th><th>b</th></tr></thead><tbody><tr><th>1</th><td>2</td>"
                     "</tr></tbody>"),
              "| a | b |\n|---|---|\n| 1 | 2 |");
    EXPECT_EQ(textOf("<tr><th>only</th></tr>"), "| only |");
    EXPECT_EQ(textOf("<tr><td> </td></tr>"), "");
    EXPECT_EQ(textOf("<tr><td>a | b</td><td>||</td></tr>"), "| a \\| b | \\|\\| |");
}

TEST(TablesTest, HaveAllColumnsInEveryRow) {
    EXPECT_EQ(textOf("<tr><td colspan=\"2\">w</td><td>x</td></tr><tr><td>1</td></tr>"),
              "| w | | x |\n| 1 | | |");
    EXPECT_EQ(textOf("<tr><td rowspan=\"2\">t</td><td>1</td></tr><tr><td>2</td></tr>"
                     "<tr><td>u</td><td>3</td></tr>"),
              "| t | 1 |\n| | 2 |\n| u | 3 |");
}

TEST(TablesTest, HaveSoManyColumns) {
    const auto columns = [](const std::string& text) {
        return std::count(text.begin(), text.begin() + static_cast<long>(text.find('\n')), '|') - 1;
    };
    const std::string below = "<tr><td>y</td></tr>";
    const std::string wide = "<td colspan=\"100\">x</td>";
    EXPECT_EQ(columns(textOf("<tr>" + wide + wide + "</tr>" + below)), 200);
    EXPECT_EQ(columns(textOf("<tr>" + wide + wide + wide + "</tr>" + below)), 200);
    EXPECT_EQ(columns(textOf("<tr><td colspan=\"101\">x</td></tr>" + below)), 100);
    // A number of columns that no table has is not believed.
    EXPECT_LT(textOf("<tr><td colspan=\"999999999\">x</td></tr>").size(), 1000u);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::importers::sphinx
