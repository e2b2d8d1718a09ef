#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "BuiltTree.hpp"
#include "sphinx/FieldLists.hpp"
#include "sphinx/HtmlDocument.hpp"

namespace reference::importers::sphinx {
namespace VELTRA_TEST_FILE {

using tests::BuiltTree;
using tests::described;
using tests::itemAt;

// "title[name|classifier|text;…]prose" for each field, which a failing test shows whole.
std::string read(const std::string& html) {
    HtmlArena arena;
    const HtmlDocument document(arena, html);
    const Node list = document.root().findTag("body").firstElement();
    EXPECT_TRUE(isFieldList(list)) << html;
    std::string result;
    for (const Field& field : readFieldList(list)) {
        result += field.title + "[";
        for (const NamedPart& part : field.parts)
            result += part.name + "|" + part.classifier + "|" + part.text + ";";
        result += "]" + field.prose;
    }
    return result;
}

std::string fieldList(const std::string& title, const std::string& body) {
    return "<dl class=\"field-list simple\"><dt class=\"field-odd\">" + title +
           "<span class=\"colon\">:</span></dt><dd class=\"field-odd\">" + body + "</dd></dl>";
}

TEST(FieldListsTest, ReadParametersInAllTheirForms) {
    const struct {
        const char* name;
        std::string html;
        const char* expected;
    } rows[] = {
        {"nested definitions",
         fieldList("Parameters",
                   "<dl><dt><strong>x</strong><span class=\"classifier\">int</span></dt>"
                   "<dd><p>First.</p><p>More.</p></dd><dt><strong>y</strong></dt><dd></dd></dl>"),
         "Parameters[x|int|First.\n\nMore.;y||;]"},
        {"joint names",
         fieldList("Parameters",
                   "<dl><dt><strong>x, y</strong><span class=\"classifier\">array</span></dt>"
                   "<dd><p>Both.</p></dd></dl>"),
         "Parameters[x|array|Both.;y|array|Both.;]"},
        {"classifier after a colon",
         fieldList("Parameters", "<dl><dt><strong>x</strong> : int, optional</dt><dd>T</dd></dl>"),
         "Parameters[x|int, optional|T;]"},
        {"list of items",
         fieldList("Parameters",
                   "<ul class=\"simple\"><li><p><strong>x</strong> (<em>int</em>) – first</p></li>"
                   "<li><p><strong>*args</strong> – second (or not)</p></li></ul>"),
         "Parameters[x|int|first;*args||second (or not);]"},
        {"single item",
         fieldList("Parameters", "<p><strong>x</strong> (Dict(str) or <em>None</em>) – text</p>"),
         "Parameters[x|Dict(str) or None|text;]"},
        {"single item with blocks",
         fieldList("Parameters", "<p><strong>x</strong> – text</p><ul><li>a</li><li>b</li></ul>"),
         "Parameters[x||text\n\n- a\n- b;]"},
        {"item without text", fieldList("Parameters", "<p><strong>x</strong> (<em>int</em>)</p>"),
         "Parameters[x|int|;]"},
        {"names as code",
         fieldList("Parameters", "<ul><li><code>e</code>: an expression</li></ul>"),
         "Parameters[e||an expression;]"},
        {"table",
         "<table class=\"docutils field-list\"><tbody><tr class=\"field-odd field\">"
         "<th class=\"field-name\">Parameters:</th><td class=\"field-body\">"
         "<strong>x</strong> (<em>int</em>) – text</td></tr></tbody></table>",
         "Parameters[x|int|text;]"},
        {"table with a long heading",
         "<table class=\"field-list\"><tr><th class=\"field-name\" colspan=\"2\">Other Parameters:"
         "</th></tr><tr><td>&nbsp;</td><td class=\"field-body\"><ul><li><strong>x</strong> – t</li>"
         "</ul></td></tr></table>",
         "Other Parameters[x||t;]"},
        {"unmarked list",
         "<dl class=\"simple\"><dt><strong>Parameters</strong></dt><dd><ul class=\"simple\">"
         "<li><p><code>x</code>: t</p></li></ul></dd><dt><strong>Return</strong></dt>"
         "<dd><p>a thing</p></dd></dl>",
         "Parameters[x||t;]Return[||a thing;]"},
        {"prose", fieldList("Parameters", "<p>Those of the other.</p>"),
         "Parameters[]Those of the other."},
        {"names that hold spaces stay whole",
         fieldList("Parameters",
                   "<dl><dt><strong>any of these, or none</strong></dt><dd>t</dd></dl>"),
         "Parameters[any of these, or none||t;]"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(read(row.html), row.expected) << row.name;
}

TEST(FieldListsTest, ReadReturnedValuesInAllTheirForms) {
    const struct {
        const char* name;
        std::string html;
        const char* expected;
    } rows[] = {
        {"plain", fieldList("Returns", "<p>The <em>sum</em>.</p>"), "Returns[||The sum.;]"},
        {"named",
         fieldList("Returns",
                   "<dl><dt><strong>out</strong><span class=\"classifier\">int</span>"
                   "</dt><dd><p>T.</p></dd></dl>"),
         "Returns[out|int|T.;]"},
        {"type alone", fieldList("Returns", "<dl><dt>ndarray</dt><dd><p>T.</p></dd></dl>"),
         "Returns[|ndarray|T.;]"},
        {"classifier alone",
         fieldList("Yields", "<dl><dt><span class=\"classifier\">int</span></dt><dd>T.</dd></dl>"),
         "Yields[|int|T.;]"},
        {"type and text", fieldList("Returns", "<ul><li><p><em>int</em> – the one</p></li></ul>"),
         "Returns[|int|the one;]"},
        {"values", fieldList("Return values", "<ul><li><strong>0</strong> – success</li></ul>"),
         "Return values[0||success;]"},
        {"type field", fieldList("Return type", "<p><a href=\"x\"><code>str</code></a></p>"),
         "Return type[]str"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(read(row.html), row.expected) << row.name;
}

TEST(FieldListsTest, TellRolesByHeading) {
    EXPECT_EQ(fieldRoleOf("Parameters:"), FieldRole::Inputs);
    EXPECT_EQ(fieldRoleOf("TEMPLATE PARAMETERS"), FieldRole::Inputs);
    EXPECT_EQ(fieldRoleOf("Keyword Arguments"), FieldRole::Inputs);
    EXPECT_EQ(fieldRoleOf("Paramètres :"), FieldRole::Inputs);
    EXPECT_EQ(fieldRoleOf("パラメータ："), FieldRole::Inputs);
    EXPECT_EQ(fieldRoleOf("Yields"), FieldRole::Outputs);
    EXPECT_EQ(fieldRoleOf("Return type"), FieldRole::OutputType);
    EXPECT_EQ(fieldRoleOf("Variables"), FieldRole::Properties);
    EXPECT_EQ(fieldRoleOf("Raises"), FieldRole::Raises);
    EXPECT_EQ(fieldRoleOf("Author"), FieldRole::Prose);
}

TEST(FieldListsTest, GiveFieldsAsText) {
    Field field{.title = "Raises", .role = FieldRole::Prose, .parts = {}, .prose = {}};
    EXPECT_EQ(fieldText(field), "");
    field.parts = {{"ValueError", "", "If so."}};
    EXPECT_EQ(fieldText(field), "Raises: ValueError – If so.");
    field.parts.push_back({"KeyError", "", ""});
    EXPECT_EQ(fieldText(field), "Raises:\n- ValueError – If so.\n- KeyError");
    EXPECT_EQ(sectionText(field), "Raises\n------\n\n- ValueError – If so.\n- KeyError");
    field.parts = {{"ValueError", "", "If:\n\n- a"}, {"KeyError", "", "- b"}};
    EXPECT_EQ(sectionText(field),
              "Raises\n------\n\n- ValueError – If:\n  \n  - a\n- KeyError –\n  - b");
    field = {.title = "Lève", .role = FieldRole::Raises, .parts = {}, .prose = "Rien."};
    EXPECT_EQ(sectionText(field), "Lève\n----\n\nRien.");
    field.prose.clear();
    EXPECT_EQ(sectionText(field), "");
}

TEST(FieldListsTest, PutWhatMayBeRaisedIntoASectionAtTheEnd) {
    BuiltTree tree;
    tree.object("m.f", "py:function", "m.html#$")
        .page("m.html",
              described("py", "function", "m.f", "m.f",
                        "<p>Does. Text.</p><dl class=\"field-list\"><dt>Raises</dt><dd><p><strong>E"
                        "</strong> – if.</p></dd></dl><p>After.</p>"));
    const auto item = itemAt(tree.import(), u"m.html");
    EXPECT_EQ(item.getDescription(), u"Text.\n\nAfter.\n\nRaises\n------\n\n- E – if.");
    EXPECT_TRUE(item.getInputs().empty());
}

TEST(FieldListsTest, AreToldFromOtherDefinitionLists) {
    HtmlArena arena;
    const std::string html =
        "<dl class=\"simple\"><dt>Parameters</dt><dd>x</dd><dt>Apples</dt>"
        "<dd>y</dd></dl>";
    const HtmlDocument document(arena, html);
    EXPECT_FALSE(isFieldList(document.root().findTag("dl")));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::importers::sphinx
