#include <string>

#include <gtest/gtest.h>

#include "BuiltTree.hpp"
#include "sphinx/DescriptionBody.hpp"

namespace reference::importers::sphinx {
namespace VELTRA_TEST_FILE {

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
              "[Add one: it is easy. Really.] f(1)\n");
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
              "Notes\n-----\n\nThe factor is:\n\n    n**(-1./(d+4))");
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
    EXPECT_EQ(examplesOf("<dl class=\"py method\"><dt class=\"sig\" id=\"g\">g</dt><dd>" +
                         code("a") + "</dd></dl>"),
              "");
}

TEST(ExamplesTest, TakeTheirProseOutOfTheDescription) {
    const DescriptionFacts facts = readBody("<p>P.</p><p>Q.</p>" + heading + "<p>Lead.</p>" +
                                            code("a") + "<p class=\"rubric\">Notes</p><p>N.</p>");
    EXPECT_EQ(facts.description, "Q.\n\nNotes\n-----\n\nN.");
}

TEST(ExamplesTest, TakeTheSentenceThatAnnouncesThem) {
    const struct {
        const char* name;
        std::string html;
        const char* description;
        const char* examples;
    } rows[] = {
        {"own paragraph", "<p>Q.</p><p>E.g.:</p>" + code("a"), "Q.", "[E.g.] a\n"},
        {"end of a paragraph", "<p>Q. It (e.g. this) is so. For example:</p>" + code("a"),
         "Q. It (e.g. this) is so.", "[For example] a\n"},
        {"in a list item", "<ul><li><p>Q.</p><p>So:</p>" + code("a") + "</li></ul>", "- Q.",
         "[So] a\n"},
        {"announces a list", "<p>Either:</p><ul><li>b</li></ul>" + code("a"), "Either:\n\n- b",
         "[] a\n"},
        {"announces nothing", "<p>Quick. Rest.</p>" + code("a"), "Quick. Rest.", "[Quick.] a\n"},
        {"plain text", "<p>Prints:</p><div class=\"highlight-none\"><pre>o</pre></div>",
         "Prints:\n\n    o", ""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(readBody("<p>P.</p>" + row.html).description, row.description) << row.name;
        EXPECT_EQ(examplesOf(row.html), row.examples) << row.name;
    }
}

TEST(ExamplesTest, LeaveAPurposeThatStandsAlone) {
    const DescriptionFacts facts = readBody("<p>Gives the name:</p>" + code("a"));
    EXPECT_EQ(facts.purpose, "Gives the name.");
    EXPECT_EQ(facts.description, "");
    ASSERT_EQ(facts.examples.size(), 1u);
    EXPECT_EQ(facts.examples.front().title, "Gives the name");
    const DescriptionFacts longer = readBody("<p>Does it. Like this:</p>" + code("a"));
    EXPECT_EQ(longer.purpose, "Does it.");
    EXPECT_EQ(longer.purposeParagraphRest, "");
    EXPECT_EQ(longer.description, "");
}

TEST(ExamplesTest, KeepAllThatIsSaidBetweenThem) {
    EXPECT_EQ(examplesOf(heading + "<p>One. Two.</p><ul><li>a</li></ul>" + code("a")),
              "[One. Two.\n\n- a] a\n");
    EXPECT_EQ(readBody("<p>P.</p>" + heading + code("a") + "<p>It is so.</p>").description,
              "Examples\n--------\n\nIt is so.");
}

TEST(ExamplesTest, LeaveASectionWithoutCodeInTheDescription) {
    EXPECT_EQ(readBody("<p>P.</p>" + heading + "<p>See there.</p>").description,
              "Examples\n--------\n\nSee there.");
}

TEST(ExamplesTest, TakePlainTextOnlyUnderTheirHeading) {
    const std::string plain =
        "<div class=\"highlight-none\"><div class=\"highlight\"><pre>out\n</pre></div></div>";
    EXPECT_EQ(examplesOf(plain), "");
    EXPECT_EQ(readBody("<p>P.</p>" + plain).description, "    out");
    EXPECT_EQ(examplesOf(heading + plain), "[Examples] out\n");
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::importers::sphinx
