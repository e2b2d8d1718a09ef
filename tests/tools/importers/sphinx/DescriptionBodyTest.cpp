#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "BuiltTree.hpp"
#include "sphinx/DescriptionBody.hpp"

namespace reference::importers::sphinx {
namespace VELTRA_TEST_FILE {

using tests::readBody;

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
        {"nested list", "<ol><li>a<ul><li>b</li></ul></li></ol>", "1. a\n   - b"},
        {"numbered list", "<ol start=\"3\"><li><p>a</p><p>b</p></li><li>c</li></ol>",
         "3. a\n   b\n4. c"},
        {"list in a definition",
         "<dl class=\"simple\"><dt>t</dt><dd><ul><li>a</li><li>b</li></ul></dd></dl>",
         "- t:\n  - a\n  - b"},
        {"list in a note",
         "<div class=\"admonition note\"><p class=\"admonition-title\">Note</p>"
         "<ul><li>a</li></ul></div>",
         "Note:\n- a"},
        {"definitions", "<dl class=\"simple\"><dt>t</dt><dd><p>d</p></dd></dl>", "- t: d"},
        {"note",
         "<div class=\"admonition note\"><p class=\"admonition-title\">Note</p>"
         "<p>Beware.</p><p>Twice.</p></div>",
         "Note: Beware.\n\nTwice."},
        {"section", "<p class=\"rubric\">Notes</p><p>n</p>", "Notes\n-----\n\nn"},
        {"empty section", "<p class=\"rubric\">Methods</p><p class=\"rubric\">Notes</p><p>n</p>",
         "Notes\n-----\n\nn"},
        {"literal block", "<pre class=\"literal-block\">a\n  b\n</pre>", "    a\n      b"},
        {"formula", "<div class=\"math\">\\[x^2\\]</div>", "x²"},
        {"formula as a picture",
         "<div class=\"math\"><p><img alt=\"y^2\" src=\"y.png\"/></p></div>", "y²"},
        {"formula in a sentence", "<p>Of <span class=\"math\">\\(a_1\\)</span>.</p>", "Of a₁."},
        {"table", "<table><tr><th>a</th><th>b</th></tr><tr><td>1</td><td>2</td></tr></table>",
         "| a | b |\n|---|---|\n| 1 | 2 |"},
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
        {"member",
         "<dl class=\"py method\"><dt class=\"sig\" id=\"g\">g()</dt><dd><p>Of g.</p></dd></dl>",
         ""},
        {"member with prose after it",
         "<dl class=\"py method\"><dt class=\"sig\" id=\"g\">g()</dt><dd></dd></dl><p>Of g.</p>",
         ""},
        {"what is described without a place of its own",
         "<dl class=\"describe\"><dt class=\"sig sig-object\"><span class=\"sig-name "
         "descname\">d[key]</span></dt><dd><p>The item.</p><p>More.</p></dd></dl>",
         "- d[key]: The item.\n  More."},
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

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::importers::sphinx
