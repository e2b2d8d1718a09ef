#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/Items.hpp"
#include "vref/ItemPage.hpp"

namespace reference::tools {
namespace VELTRA_TEST_FILE {

std::string page(const api::ReferenceData& result, std::size_t width = 60,
                 const std::vector<MemberGroup>& members = {}) {
    std::ostringstream out;
    writePage(out, Terminal(false, false, width), result, {.address = {}, .members = members});
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

TEST(ItemPageTest, PutsSectionsBeforeThePropertiesAndMembersAfterThem) {
    const api::ReferenceData result(
        property::HeaderInfo(),
        tests::makeItem(
            {.href = u"C",
             .description = u"First.\n\nRaises\n------\n\n- E – if so.\n\nNotes\n-----\n\nNote it.",
             .inputs = {property::Input(u"x", u"In.", u"", {u"int"})},
             .classPropertyGroups = {property::ClassPropertyGroup(
                 u"Attributes", {property::ClassProperty(u"a", u"The a.", u"", {u"int = 5"})})},
             .seeAlso = {property::SeeAlso(u"d.html", u"D – does it, too")}}));
    EXPECT_EQ(page(result, 60, {{"Methods", {{u"go", u"Goes."}, {u"run", u""}}}}),
              "C\n\n    /C\n\n"
              "DESCRIPTION\n    First.\n\n"
              "INPUTS\n    x : int\n        In.\n\n"
              "RAISES\n    - E – if so.\n\n"
              "NOTES\n    Note it.\n\n"
              "ATTRIBUTES\n    a : int = 5\n        The a.\n\n"
              "METHODS\n    go\n        Goes.\n    run\n\n"
              "SEE ALSO\n    D  d.html\n        does it, too\n");
}

TEST(ItemPageTest, MarksMembersThatAreNotToBeUsed) {
    const api::ReferenceData result(property::HeaderInfo(), tests::makeItem({.href = u"C"}));
    EXPECT_EQ(page(result, 60,
                   {{"Methods",
                     {{u"old", u"Was.", property::DeprecationStatus::Deprecated}, {u"run", u""}}}}),
              "C\n\n    /C\n\nMETHODS\n    old  (deprecated)\n        Was.\n    run\n");
}

TEST(ItemPageTest, OfAPropertyTheListHasTheFirstParagraph) {
    const api::ReferenceData result(
        property::HeaderInfo(),
        tests::makeItem(
            {.href = u"C",
             .classPropertyGroups = {property::ClassPropertyGroup(
                 u"", {property::ClassProperty(u"a", u"The a.\n\nMore of it.", u"", {})})}}));
    EXPECT_EQ(page(result), "C\n\n    /C\n\nPROPERTIES\n    a\n        The a.\n");
}

TEST(ItemPageTest, TellsWhatALinkPointsAtUnlessItSaysSo) {
    const api::ReferenceData result(
        property::HeaderInfo(),
        tests::makeItem({.href = u"f",
                         .seeAlso = {property::SeeAlso(u"g.html", u"g"),
                                     property::SeeAlso(u"", u"h – and a remark"),
                                     property::SeeAlso(u"", u"unknown")}}));
    std::ostringstream out;
    writePage(out, Terminal(true, true, 60, 24, true), result,
              {.address = "file:///f.html",
               .seeAlso = {{u"Does g.", "file:///g.html"}, {u"Does h.", ""}, {}}});
    EXPECT_NE(out.str().find("\033]8;;file:///g.html\033\\\033[1mg\033[0m\033]8;;\033\\"),
              std::string::npos);
    EXPECT_EQ(withoutEscapes(out.str()),
              "f\n\n    /f\n    file:///f.html\n\nSEE ALSO\n    g  g.html\n        Does g.\n"
              "    h\n        and a remark\n    unknown\n");
}

TEST(ItemPageTest, ShowsASinglePropertyAsIfItHadAnItemOfItsOwn) {
    const property::ClassProperty single(u"p", u"The p.\n\nNew in version 1.5.", u"C#p", {u"int"});
    const api::ReferenceData result(
        property::HeaderInfo(u"f", u"help", u"tools", u"", u""),
        tests::makeItem(
            {.href = u"C#p",
             .entities = {property::RefEntity(property::RefEntityType::Property, u"m.C.p",
                                              property::FunctionType::Property)},
             .purpose = single.getPurpose(),
             .introduced = u"0.9",
             .classPropertyGroups = {property::ClassPropertyGroup(u"Attributes", {single})},
             .seeAlso = {property::SeeAlso(u"C", u"m.C")}}));
    EXPECT_EQ(page(result),
              "m.C.p\n    The p.\n\n    property, tools\n    help/C#p\n\n"
              "SYNTAX\n    p : int\n\n"
              "DESCRIPTION\n    New in version 1.5.\n\n"
              "SEE ALSO\n    m.C  C\n");
}

TEST(ItemPageTest, BreaksALongSyntaxAfterACommaWithinItsBrackets) {
    const api::ReferenceData result(
        property::HeaderInfo(),
        tests::makeItem({.href = u"f",
                         .syntaxGroups = {property::SyntaxGroup(
                             u"", {u"function(first, second=(1, 2), third)"})}}));
    const std::string text = page(result, 36);
    EXPECT_NE(text.find("    function(first, second=(1, 2),\n        third)\n"), std::string::npos)
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

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tools
