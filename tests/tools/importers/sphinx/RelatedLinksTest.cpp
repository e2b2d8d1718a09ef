#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BuiltTree.hpp"

namespace reference::importers::sphinx {
namespace VELTRA_TEST_FILE {

using tests::readBody;

std::string seeAlsoOf(const DescriptionFacts& facts) {
    std::string result;
    for (const LinkFacts& link : facts.seeAlso)
        result +=
            link.name + "=" + link.href + (link.text.empty() ? "" : " (" + link.text + ")") + ";";
    return result;
}

TEST(RelatedLinksTest, AreFoundInAllFormsWithWhatIsSaidOfThem) {
    const std::string box =
        "<div class=\"admonition seealso\"><p class=\"admonition-title\">See also</p>";
    const struct {
        const char* name;
        std::string html;
        const char* expected;
    } rows[] = {
        {"definitions",
         box + "<dl><dt><a href=\"n.html#n.g\"><code>g</code></a></dt><dd><p>Like <a href=\"z\">z"
               "</a>.</p></dd></dl></div>",
         "g=api/n.html#n.g (Like z.);"},
        {"several in a term",
         box + "<dl><dt><a href=\"#a\">a</a>, <a href=\"#b\">b</a></dt><dd></dd></dl></div>",
         "a=api/m.html#a;b=api/m.html#b;"},
        {"a term that says more than the name",
         box + "<dl><dt><a href=\"#p\">P 8</a> - Style</dt><dd>Of code.</dd>"
               "<dt>Module <a href=\"#s\">s</a></dt><dd></dd></dl></div>",
         "P 8=api/m.html#p (Style: Of code.);s=api/m.html#s (Module s);"},
        {"links",
         box + "<p><a href=\"../n.html\">n</a>, and <a href=\"https://e.org/\">e</a></p></div>",
         "n=n.html;e=https://e.org/;"},
        {"a name and what it is",
         box + "<p><a href=\"#a\">a</a> – does <a href=\"#b\">b</a></p></div>",
         "a=api/m.html#a (does b);b=api/m.html#b;"},
        {"a sentence", box + "<p>The function <a href=\"#a\">a</a> is better.</p></div>",
         "a=api/m.html#a (The function a is better.);"},
        {"not linked",
         box + "<dl><dt><code class=\"xref py\">numpy.f</code></dt><dd></dd></dl></div>",
         "numpy.f=;"},
        {"link in the definition",
         box + "<dl><dt>The guide</dt><dd><p>In <a href=\"g.html\">g</a></p></dd></dl></div>",
         "g=api/g.html (The guide: In g);"},
        {"no link at all", box + "<p>The manual.</p><dl><dt>Book</dt><dd>By A.</dd></dl></div>",
         "The manual.=;Book= (By A.);"},
        {"a list", box + "<ul><li><p><a href=\"#a\">a</a>: first</p></li></ul></div>",
         "a=api/m.html#a (first);"},
        {"section", "<p class=\"rubric\">See also</p><p><a href=\"n.html\">n</a></p>",
         "n=api/n.html;"},
    };
    for (const auto& row : rows) {
        const DescriptionFacts facts = readBody("<p>P.</p>" + row.html);
        EXPECT_EQ(seeAlsoOf(facts), row.expected) << row.name;
        EXPECT_EQ(facts.description, "") << row.name;
    }
}

TEST(RelatedLinksTest, GiveReadersTheNameAndWhatIsSaidOfIt) {
    tests::BuiltTree tree;
    tree.object("m.f", "py:function", "m.html#$")
        .page("m.html", tests::described("py", "function", "m.f", "m.f",
                                         "<p>Does.</p><div class=\"admonition seealso\"><dl><dt><a "
                                         "href=\"n.html\">g</a></dt><dd>Like it.</dd><dt><a "
                                         "href=\"o.html\">h</a></dt><dd></dd></dl></div>"));
    EXPECT_THAT(tests::itemAt(tree.import(), u"m.html").getSeeAlsoInfo(),
                testing::ElementsAre(property::SeeAlso(u"n.html", u"g – Like it."),
                                     property::SeeAlso(u"o.html", u"h")));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::importers::sphinx
