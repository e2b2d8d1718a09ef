#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "support/Items.hpp"
#include "vref/ItemPage.hpp"

namespace reference::tools {
namespace {

std::string page(const api::ReferenceData& result, std::size_t width = 60) {
    std::ostringstream out;
    writePage(out, Terminal(false, false, width), result);
    return out.str();
}

TEST(ItemPageTest, ShowsEverythingThatTheItemSays) {
    const api::ReferenceData result(
        property::HeaderInfo(u"f", u"help", u"tools", u"The Tools", u"2.0"),
        tests::makeFullItem(u"ref/probe.html"));
    EXPECT_EQ(page(result), R"(pkg.Probe, pkg.probe
    deprecated
    use pkg.Sensor
    Measures a "quantity" \ Größe 測定.

    class, function, package pkg, The Tools 2.0, since 9.1
    help/ref/probe.html

SYNTAX
    Creation
    p = Probe()
    p = Probe(rate)

DESCRIPTION
    First paragraph.

    Second paragraph.

REQUIRED
    rate
        Samples a second

OUTPUTS
    p : Probe
        The probe

PARAMETERS
    Gain = 1
        Amplification

TIMING
    Rate : 100
        Samples a second

PROPERTIES
    Name

EXAMPLES
    Measure once
        p = Probe
        read(p)

SEE ALSO
    pkg.Gauge  ref/gauge.html
)");
}

TEST(ItemPageTest, LeavesOutWhatTheItemDoesNotSay) {
    const api::ReferenceData result(
        property::HeaderInfo(u"f", u"help", u"tools", u"", u""),
        tests::makeItem({.href = u"ref/f.html",
                         .entities = {property::RefEntity(property::RefEntityType::Function, u"f",
                                                          property::FunctionType::Function)}}));
    EXPECT_EQ(page(result), "f\n\n    function, tools\n    help/ref/f.html\n");
}

TEST(ItemPageTest, BreaksProseButNotCode) {
    const std::u16string longText = u"many words that do not fit on one line";
    const api::ReferenceData result(
        property::HeaderInfo(), tests::makeItem({.href = u"f",
                                                 .description = longText,
                                                 .examples = {property::Example(u"", longText)}}));
    const std::string text = page(result, 30);
    EXPECT_NE(text.find("    many words that do not fit\n    on one line\n"), std::string::npos)
        << text;
    EXPECT_NE(text.find("        many words that do not fit on one line\n"), std::string::npos)
        << text;
}

TEST(ItemPageTest, TextOfAListsItemStandsUnderItself) {
    const api::ReferenceData result(
        property::HeaderInfo(),
        tests::makeItem(
            {.href = u"f",
             .description = u"Either:\n\n- many words that do not fit on a line\n- few"}));
    const std::string text = page(result, 30);
    EXPECT_NE(
        text.find("    Either:\n\n    - many words that do not\n      fit on a line\n    - few\n"),
        std::string::npos)
        << text;
}

}  // namespace
}  // namespace reference::tools
