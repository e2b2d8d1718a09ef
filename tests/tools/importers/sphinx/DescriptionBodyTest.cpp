#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "BuiltTree.hpp"
#include "sphinx/DescriptionBody.hpp"

namespace reference::importers::sphinx {
namespace {

using tests::readBody;

std::string seeAlsoOf(const DescriptionFacts& facts) {
    std::string result;
    for (const LinkFacts& link : facts.seeAlso)
        result += link.name + "=" + link.href + ";";
    return result;
}

TEST(DescriptionBodyTest, TakesThePurposeFromTheFirstParagraph) {
    const DescriptionFacts facts = readBody("<p>Adds two. Slowly.</p><p>More.</p>");
    EXPECT_EQ(facts.purpose, "Adds two.");
    EXPECT_EQ(facts.description, "Slowly.\n\nMore.");
}

TEST(DescriptionBodyTest, KeepsProseOfEveryKindInOrder) {
    const struct {
        const char* name;
        const char* html;
        const char* description;
    } rows[] = {
        {"list", "<ul><li><p>a</p></li><li><p>b</p><p>c</p></li></ul>", "- a\n- b\n  c"},
        {"nested list", "<ol><li>a<ul><li>b</li></ul></li></ol>", "- a\n  - b"},
        {"definitions", "<dl class=\"simple\"><dt>t</dt><dd><p>d</p></dd></dl>", "- t: d"},
        {"note",
         "<div class=\"admonition note\"><p class=\"admonition-title\">Note</p>"
         "<p>Beware.</p><p>Twice.</p></div>",
         "Note: Beware.\n\nTwice."},
        {"section", "<p class=\"rubric\">Notes</p><p>n</p>", "Notes\n\nn"},
        {"empty section", "<p class=\"rubric\">Methods</p><p class=\"rubric\">Notes</p><p>n</p>",
         "Notes\n\nn"},
        {"literal block", "<pre class=\"literal-block\">a\n  b\n</pre>", "a\n  b"},
        {"formula", "<div class=\"math\">\\[x^2\\]</div>", "x^2"},
        {"formula as a picture",
         "<div class=\"math\"><p><img alt=\"y^2\" src=\"y.png\"/></p></div>", "y^2"},
        {"formula in a sentence", "<p>Of <span class=\"math\">\\(a_1\\)</span>.</p>", "Of a_1."},
        {"table", "<table><tr><th>a</th><th>b</th></tr><tr><td>1</td><td>2</td></tr></table>",
         "a | b\n1 | 2"},
        {"table of methods", "<table class=\"autosummary\"><tr><td>f</td></tr></table>", ""},
        {"reference", "<div class=\"citation\"><span class=\"label\">[1]</span><p>Book.</p></div>",
         "[1] Book."},
        {"powers", "<p>Up to 10<sup>3</sup> of H<sub>2</sub>.</p>", "Up to 10^3 of H_2."},
        {"text outside of paragraphs", "stray <em>text</em>", "stray text"},
        {"links to downloads",
         "<p>(<a class=\"reference download\" href=\"a.py\">Source code</a>, "
         "<a class=\"reference external\" href=\"a.png\">png</a>)</p>",
         ""},
        {"change",
         "<div class=\"versionchanged\"><p><span class=\"versionmodified\">Changed in "
         "version 2: </span>New.</p></div>",
         "Changed in version 2: New."},
        {"raised",
         "<dl class=\"field-list\"><dt>Raises</dt><dd><p><strong>E</strong> – if.</p></dd>"
         "</dl>",
         "Raises: E – if."},
        {"member", "<dl class=\"py method\"><dt class=\"sig\">g()</dt><dd><p>Of g.</p></dd></dl>",
         ""},
        {"script", "<script>alert()</script>", ""},
    };
    for (const auto& row : rows) {
        const DescriptionFacts facts = readBody("<p>Purpose.</p>" + std::string(row.html));
        EXPECT_EQ(facts.purpose, "Purpose.") << row.name;
        EXPECT_EQ(facts.description, row.description) << row.name;
    }
}

TEST(DescriptionBodyTest, TakesNoPurposeFromBasesOrMarksOrMembers) {
    const DescriptionFacts facts = readBody(
        "<em class=\"mark\">A mark.</em><p>Bases: <a href=\"x\"><code>a.B</code></a>, "
        "<code>c.D</code></p><p>Real purpose.</p>");
    EXPECT_EQ(facts.purpose, "Real purpose.");
    EXPECT_EQ(facts.bases, (std::vector<std::string>{"a.B", "c.D"}));
    EXPECT_EQ(
        readBody("<dl class=\"py method\"><dt class=\"sig\">g</dt><dd><p>G.</p></dd></dl>").purpose,
        "");
}

TEST(DescriptionBodyTest, FindsRelatedEntitiesInAllForms) {
    const std::string box =
        "<div class=\"admonition seealso\"><p class=\"admonition-title\">See "
        "also</p>";
    const struct {
        const char* name;
        std::string html;
        const char* expected;
    } rows[] = {
        {"definitions",
         box + "<dl><dt><a href=\"n.html#n.g\"><code>g</code></a></dt><dd><p>Like <a href=\"z\">z"
               "</a>.</p></dd></dl></div>",
         "g=api/n.html#n.g;"},
        {"several in a term",
         box + "<dl><dt><a href=\"#a\">a</a>, <a href=\"#b\">b</a></dt><dd></dd></dl></div>",
         "a=api/m.html#a;b=api/m.html#b;"},
        {"links",
         box + "<p><a href=\"../n.html\">n</a>, <a href=\"https://e.org/\">e</a></p></div>",
         "n=n.html;e=https://e.org/;"},
        {"not linked",
         box + "<dl><dt><code class=\"xref py\">numpy.f</code></dt><dd></dd></dl></div>",
         "numpy.f=;"},
        {"link in the definition",
         box + "<dl><dt>The guide</dt><dd><p>In <a href=\"g.html\">g</a></p></dd></dl></div>",
         "g=api/g.html;"},
        {"section", "<p class=\"rubric\">See also</p><p><a href=\"n.html\">n</a></p>",
         "n=api/n.html;"},
    };
    for (const auto& row : rows) {
        const DescriptionFacts facts = readBody("<p>P.</p>" + row.html);
        EXPECT_EQ(seeAlsoOf(facts), row.expected) << row.name;
        EXPECT_EQ(facts.description, "") << row.name;
    }
}

TEST(DescriptionBodyTest, CountsVersionBoxesOfTheObjectItselfOnly) {
    const std::string added =
        "<div class=\"versionadded\"><p><span class=\"versionmodified added\">"
        "New in version 3.2.</span></p></div>";
    const std::string deprecated =
        "<div class=\"deprecated\"><p><span class=\"versionmodified\">"
        "Deprecated since version 4.</span></p></div>";
    const struct {
        const char* name;
        std::string html;
        const char* introduced;
        bool isDeprecated;
    } rows[] = {
        {"own", added + deprecated, "3.2", true},
        {"in a list item", "<ul><li>" + added + deprecated + "</li></ul>", "", false},
        {"in a parameter",
         "<dl class=\"field-list\"><dt>Parameters</dt><dd><dl><dt>x</dt><dd>" + added + deprecated +
             "</dd></dl></dd></dl>",
         "", false},
        {"in a note", "<div class=\"admonition note\">" + added + deprecated + "</div>", "", false},
        {"in a member",
         "<dl class=\"py method\"><dt class=\"sig\">g</dt><dd>" + added + deprecated + "</dd></dl>",
         "", false},
        {"of a parameter",
         "<div class=\"versionadded\"><p><span class=\"versionmodified\">New in version 3.3: "
         "</span>"
         "The flag parameter.</p></div><div class=\"deprecated\"><p><span "
         "class=\"versionmodified\">"
         "Deprecated since version 4: </span><em>flag</em> is deprecated.</p></div>",
         "", false},
        {"removed later",
         "<div class=\"deprecated-removed\"><p><span class=\"versionmodified\">Deprecated since "
         "version 3.12, will be removed in version 3.14.</span></p></div>",
         "", true},
        {"as a paragraph",
         "<p class=\"versionadded\"><span class=\"versionmodified\">New in version 0.9.</span></p>",
         "0.9", false},
    };
    for (const auto& row : rows) {
        const DescriptionFacts facts = readBody("<p>P.</p>" + row.html);
        EXPECT_EQ(facts.introduced, row.introduced) << row.name;
        EXPECT_EQ(facts.isDeprecated, row.isDeprecated) << row.name;
    }
}

}  // namespace
}  // namespace reference::importers::sphinx
