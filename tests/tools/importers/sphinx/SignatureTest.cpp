#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sphinx/HtmlDocument.hpp"
#include "sphinx/Signature.hpp"

namespace reference::importers::sphinx {
namespace VELTRA_TEST_FILE {

using testing::ElementsAre;

SignatureFacts read(const std::string& content, const std::string& classes = "py function") {
    HtmlArena arena;
    const std::string page =
        "<dl class=\"" + classes + "\"><dt class=\"sig\" id=\"i\">" + content + "</dt></dl>";
    const HtmlDocument document(arena, page);
    return readSignature(document.root().findTag("dt"));
}

TEST(SignatureTest, IsShownWithoutTheMarksOfThePage) {
    const struct {
        const char* name;
        const char* html;
        const char* text;
    } rows[] = {
        {"permalink",
         "<span class=\"sig-name\">f</span>(x)<a class=\"headerlink\" href=\"#\">¶</a>", "f(x)"},
        {"source link",
         "<span class=\"sig-name\">f</span>(x)<a class=\"reference internal\" href=\"s\"><span "
         "class=\"viewcode-link\">[source]</span></a>",
         "f(x)"},
        {"external source link",
         "<span class=\"sig-name\">f</span>()<a class=\"reference external\" href=\"s\">\n<span "
         "class=\"viewcode-link\"><span class=\"pre\">[source]</span></span></a>",
         "f()"},
        {"old form",
         "<tt class=\"descclassname\">m.</tt><tt class=\"descname\">f</tt><big>(</big><em>x</em>"
         "<span class=\"optional\">[</span>, <em>y</em><span class=\"optional\">]</span>"
         "<big>)</big>",
         "m.f(x[, y])"},
        {"white space", "<em class=\"property\">class\n  </em><span class=\"sig-name\">C</span>",
         "class C"},
        {"line break", "template&lt;T&gt;<br/>void <span class=\"sig-name\">f</span>()",
         "template<T> void f()"},
        {"several lines",
         "<span class=\"sig-name\">f</span><span "
         "class=\"sig-paren\">(</span>\n<dl>\n<dd><em>a</em>,"
         "</dd>\n<dd><em>b=1</em>,</dd>\n</dl>\n<span class=\"sig-paren\">)</span>",
         "f(a, b=1,)"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(read(row.html).text, row.text) << row.name;
}

TEST(SignatureTest, GivesPrefixesAndParameters) {
    const SignatureFacts facts = read(
        "<em class=\"property\">async classmethod </em><span class=\"sig-name\">f</span>"
        "<span class=\"sig-paren\">(</span><em>x: Dict[int, str]</em>, <em>*args</em>"
        "<span class=\"sig-paren\">)</span>");
    EXPECT_EQ(facts.name, "f");
    EXPECT_THAT(facts.prefixes, ElementsAre("async", "classmethod"));
    EXPECT_THAT(facts.parameters, ElementsAre("x: Dict[int, str]", "*args"));
}

TEST(SignatureTest, GivesTheTypeWhereTheDomainPutsIt) {
    EXPECT_EQ(read("<span class=\"sig-name\">p</span><em class=\"property\">: int</em>").type,
              "int");
    EXPECT_EQ(read("<span class=\"sig-name\">p</span><em class=\"property\">: int</em>"
                   "<em class=\"property\"> = 3</em>")
                  .type,
              "int");
    EXPECT_EQ(read("<span class=\"sig-name\">p</span><em class=\"property\"> = 3</em>").type, "");
    EXPECT_EQ(read("unsigned int <span class=\"sig-prename\">S.</span>"
                   "<span class=\"sig-name\">m</span>",
                   "c member")
                  .type,
              "unsigned int");
}

TEST(SignatureTest, KnowsAllIdsOnItsLine) {
    EXPECT_THAT(read("<span id=\"old\"></span><span class=\"sig-name\">f</span>").anchors,
                ElementsAre("i", "old"));
}

TEST(SignatureTest, TellsDescriptionsOfObjectsFromOtherLists) {
    const struct {
        const char* html;
        bool describes;
    } rows[] = {
        {"<dl class=\"py function\"><dt class=\"sig\">f</dt></dl>", true},
        {"<dl class=\"function\"><dt id=\"f\"><code class=\"descname\">f</code></dt></dl>", true},
        {"<dl class=\"describe\"><dt><tt class=\"descname\">f</tt></dt></dl>", true},
        {"<dl class=\"simple\"><dt>term</dt></dl>", false},
        {"<dl class=\"field-list\"><dt>Parameters</dt></dl>", false},
        {"<dl><dt>term</dt></dl>", false},
        {"<dl></dl>", false},
        {"<p>text</p>", false},
    };
    for (const auto& row : rows) {
        HtmlArena arena;
        const std::string page = row.html;
        const HtmlDocument document(arena, page);
        EXPECT_EQ(isObjectDescription(document.root().findTag("body").firstElement()),
                  row.describes)
            << row.html;
    }
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::importers::sphinx
