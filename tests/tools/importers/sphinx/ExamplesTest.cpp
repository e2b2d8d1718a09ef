#include <string>

#include <gtest/gtest.h>

#include "BuiltTree.hpp"
#include "sphinx/DescriptionBody.hpp"

namespace reference::importers::sphinx {
namespace {

using tests::readBody;

std::string code(const std::string& text) {
    return "<div class=\"doctest highlight-default\"><div class=\"highlight\"><pre><span></span>" +
           text + "\n</pre></div></div>";
}

std::string examplesOf(const std::string& html) {
    std::string result;
    for (const ExampleFacts& example : readBody("<p>P.</p>" + html).examples)
        result += "[" + example.title + "] " + example.code + "\n";
    return result;
}

const std::string heading = "<p class=\"rubric\">Examples</p>";

TEST(ExamplesTest, AreTitledByTheHeadingOrTheParagraphBeforeThem) {
    EXPECT_EQ(examplesOf(heading + code("&gt;&gt;&gt; f(1)")), "[Examples] >>> f(1)\n");
    EXPECT_EQ(examplesOf(heading + "<p>Add one: it is easy. Really.</p>" + code("f(1)")),
              "[Add one: it is easy.] f(1)\n");
    EXPECT_EQ(examplesOf(heading + "<p>Plot the result:</p>" + code("p()")),
              "[Plot the result] p()\n");
    EXPECT_EQ(examplesOf(heading + "<p><strong>Changing</strong></p>" + code("c()")),
              "[Changing] c()\n");
    EXPECT_EQ(examplesOf("<p><strong>Example</strong>:</p>" + code("e()")), "[Example] e()\n");
    EXPECT_EQ(examplesOf(heading +
                         "<div class=\"literal-block-wrapper\"><div "
                         "class=\"code-block-caption\"><span class=\"caption-text\">In a "
                         "file</span></div>" +
                         code("x") + "</div>"),
              "[In a file] x\n");
}

TEST(ExamplesTest, AreNotTheFormulasUnderNotes) {
    const std::string notes = "<p class=\"rubric\">Notes</p><p>The factor is:</p>";
    EXPECT_EQ(examplesOf(notes + code("n**(-1./(d+4))")), "");
    EXPECT_EQ(readBody("<p>P.</p>" + notes + code("n**(-1./(d+4))")).description,
              "Notes\n\nThe factor is:\n\nn**(-1./(d+4))");
    EXPECT_EQ(examplesOf(notes + code("&gt;&gt;&gt; f(1)")), "[The factor is] >>> f(1)\n");
}

TEST(ExamplesTest, StaySeparateWhereProseStandsBetweenThem) {
    EXPECT_EQ(examplesOf(heading + code("a") + "<p>Then.</p>" + code("b")),
              "[Examples] a\n[Then.] b\n");
    EXPECT_EQ(examplesOf(heading + code("a") + code("b")), "[Examples] a\n\nb\n");
}

TEST(ExamplesTest, HoldCodeWithoutGutters) {
    EXPECT_EQ(
        examplesOf("<div class=\"highlight-c\"><table class=\"highlighttable\"><tr><td "
                   "class=\"linenos\"><div class=\"linenodiv\"><pre>1\n2</pre></div></td>"
                   "<td class=\"code\"><div class=\"highlight\"><pre>a\n  b\n</pre></div></td>"
                   "</tr></table></div>"),
        "[P.] a\n  b\n");
    EXPECT_EQ(examplesOf("<div class=\"highlight-c\"><pre><span class=\"linenos\">1 </span>a"
                         "<button class=\"copybtn\">copy</button></pre></div>"),
              "[P.] a\n");
}

TEST(ExamplesTest, AreFoundInListsButNotInFieldsOrMembers) {
    EXPECT_EQ(examplesOf("<ul><li><p>So:</p>" + code("a") + "</li></ul>"), "[So] a\n");
    EXPECT_EQ(examplesOf("<dl class=\"field-list\"><dt>Parameters</dt><dd><dl><dt>x</dt><dd>" +
                         code("a") + "</dd></dl></dd></dl>"),
              "");
    EXPECT_EQ(examplesOf("<dl class=\"py method\"><dt class=\"sig\">g</dt><dd>" + code("a") +
                         "</dd></dl>"),
              "");
}

TEST(ExamplesTest, TakeTheirProseOutOfTheDescription) {
    const DescriptionFacts facts = readBody("<p>P.</p><p>Q.</p>" + heading + "<p>Lead.</p>" +
                                            code("a") + "<p class=\"rubric\">Notes</p><p>N.</p>");
    EXPECT_EQ(facts.description, "Q.\n\nNotes\n\nN.");
}

TEST(ExamplesTest, LeaveASectionWithoutCodeInTheDescription) {
    EXPECT_EQ(readBody("<p>P.</p>" + heading + "<p>See there.</p>").description,
              "Examples\n\nSee there.");
}

TEST(ExamplesTest, TakePlainTextOnlyUnderTheirHeading) {
    const std::string plain =
        "<div class=\"highlight-none\"><div class=\"highlight\"><pre>out\n</pre></div></div>";
    EXPECT_EQ(examplesOf(plain), "");
    EXPECT_EQ(readBody("<p>P.</p>" + plain).description, "out");
    EXPECT_EQ(examplesOf(heading + plain), "[Examples] out\n");
}

}  // namespace
}  // namespace reference::importers::sphinx
