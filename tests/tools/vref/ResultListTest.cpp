#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/Items.hpp"
#include "vref/ResultList.hpp"

namespace reference::tools {
namespace VELTRA_TEST_FILE {

using api::ReferenceData;
using property::DeprecationStatus;
using property::FunctionType;
using property::RefEntity;
using property::RefEntityType;
using tests::makeItem;

std::vector<ReferenceData> results() {
    const auto header = [](std::u16string name) {
        return property::HeaderInfo({}, name, name, {}, {});
    };
    std::vector<ReferenceData> all;
    all.emplace_back(
        header(u"veltra"),
        makeItem({.href = u"ref/plot.html",
                  .entities = {RefEntity(RefEntityType::Function, u"plot", FunctionType::Function)},
                  .purpose = u"Draw lines in a plane"}));
    all.emplace_back(
        header(u"qix"),
        makeItem({.href = u"ref/round.html",
                  .entities = {RefEntity(RefEntityType::Method, u"pkg.floor", FunctionType::Method),
                               RefEntity(RefEntityType::Function, u"ceil", FunctionType::Function)},
                  .purpose = u"Round\nnumbers",
                  .deprecationStatus = DeprecationStatus::Deprecated}));
    return all;
}

std::string listed(const Terminal& terminal, bool hrefs = false) {
    std::ostringstream out;
    writeList(out, terminal, results(), {.hrefs = hrefs, .notes = {}});
    return out.str();
}

TEST(ResultListTest, ColumnsStandUnderEachOther) {
    EXPECT_EQ(listed(Terminal(false, false, 80)),
              "plot             function          veltra  Draw lines in a plane\n"
              "pkg.floor, ceil  method, function  qix     (deprecated) Round numbers\n");
}

TEST(ResultListTest, ATerminalsWidthIsRespected) {
    EXPECT_EQ(listed(Terminal(true, false, 56)),
              "plot             function          veltra  Draw lines i…\n"
              "pkg.floor, ceil  method, function  qix     (deprecated) \n");
}

TEST(ResultListTest, NamesStandOutAndDeprecatedOnesAreMarkedInColour) {
    const std::string text = listed(Terminal(true, true, 100));
    EXPECT_NE(text.find("\033[1mplot\033[0m             function"), std::string::npos) << text;
    EXPECT_NE(text.find("\033[33m(deprecated) \033[0mRound numbers"), std::string::npos) << text;
}

TEST(ResultListTest, LinksTakeNoRoom) {
    const std::vector<std::string> addresses{"file:///plot.html", ""};
    std::ostringstream out;
    writeList(out, Terminal(true, true, 56, 0, true), results(), {.addresses = addresses});
    EXPECT_EQ(withoutEscapes(out.str()), listed(Terminal(true, false, 56)));
    EXPECT_NE(out.str().find("\033]8;;file:///plot.html\033\\\033[1mplot\033[0m\033]8;;\033\\  "),
              std::string::npos);
}

TEST(ResultListTest, PagesAreShownWhenWanted) {
    EXPECT_EQ(listed(Terminal(false, false, 80), true),
              "plot             function          veltra  Draw lines in a plane\n"
              "    ref/plot.html\n"
              "pkg.floor, ceil  method, function  qix     (deprecated) Round numbers\n"
              "    ref/round.html\n");
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tools
