#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BuiltTree.hpp"
#include "sphinx/ClassProperties.hpp"

namespace reference::importers::sphinx {
namespace VELTRA_TEST_FILE {

using property::ClassProperty;
using property::ClassPropertyGroup;
using property::RefEntityType;
using testing::ElementsAre;
using testing::IsEmpty;
using tests::BuiltTree;
using tests::described;
using tests::itemAt;
using tests::recordOf;

const std::string attributesField =
    "<dl class=\"field-list\"><dt>Attributes</dt><dd><dl><dt><strong>a</strong><span "
    "class=\"classifier\">int</span></dt><dd><p>Listed a. More.</p></dd><dt><strong>b</strong>"
    "<span class=\"classifier\">str</span></dt><dd><p>Listed b.</p></dd></dl></dd></dl>";

TEST(ClassPropertiesTest, LiveInTheItemOfTheirClass) {
    BuiltTree tree;
    tree.object("m.C", "py:class", "C.html#$")
        .object("m.C.p", "py:property", "C.html#$")
        .page("C.html", described("py", "class", "m.C", "C()",
                                  "<p>C.</p>" + described("py", "property", "m.C.p", "p",
                                                          "<p>The p. And more.</p>")));
    const ImportResult result = tree.import();
    EXPECT_THAT(
        itemAt(result, u"C.html").getClassPropertyGroups(),
        ElementsAre(ClassPropertyGroup(
            u"Properties", {ClassProperty(u"p", u"The p. And more.", u"C.html#m.C.p", {})})));
    EXPECT_EQ(recordOf(result, u"m.C.p").getHref(), u"C.html");
    EXPECT_EQ(recordOf(result, u"m.C.p").getType(), RefEntityType::Property);
    EXPECT_EQ(recordOf(result, u"m.C.p").getPurpose(), u"The p.");
    EXPECT_FALSE(result.documentation.pages.contains(u"C.html#m.C.p"));
}

TEST(ClassPropertiesTest, MergeFieldsWithDescriptionsOnPagesOfTheirOwn) {
    BuiltTree tree;
    tree.object("m.C", "py:class", "C.html#$")
        .object("m.C.a", "py:property", "C.a.html#$")
        .object("m.C.b", "py:attribute", "C.b.html#$")
        .object("m.C.z", "py:attribute", "C.z.html#$")
        .page("C.html", described("py", "class", "m.C", "C()", "<p>C.</p>" + attributesField))
        .page("C.a.html", described("py", "property", "m.C.a", "a", "<p>Own a.</p>"))
        .page("C.b.html", described("py", "attribute", "m.C.b", "b", ""))
        .page("C.z.html",
              "<dl class=\"py attribute\"><dt class=\"sig\" id=\"m.C.z\"><span "
              "class=\"sig-name\">z</span><em class=\"property\"> = "
              "f(1)</em></dt><dd></dd></dl>");
    const ImportResult result = tree.import();
    EXPECT_THAT(itemAt(result, u"C.html").getClassPropertyGroups(),
                ElementsAre(ClassPropertyGroup(
                    u"Attributes", {ClassProperty(u"a", u"Own a.", u"C.a.html", {u"int"}),
                                    ClassProperty(u"b", u"Listed b.", u"C.b.html", {u"str"}),
                                    ClassProperty(u"z", u"", u"C.z.html", {u"f(1)"})})));
    EXPECT_EQ(recordOf(result, u"m.C.a").getPurpose(), u"Own a.");
    EXPECT_EQ(recordOf(result, u"m.C.b").getPurpose(), u"Listed b.");
    EXPECT_EQ(recordOf(result, u"m.C.b").getHref(), u"C.html");
    // A signature line is no purpose.
    EXPECT_EQ(recordOf(result, u"m.C.z").getPurpose(), u"");
}

TEST(ClassPropertiesTest, KeepVersionsCodeTypesAndValuesInTheirPlaces) {
    BuiltTree tree;
    tree.object("m.C", "py:class", "C.html#$")
        .object("m.C.p", "py:attribute", "C.html#$")
        .page("C.html",
              described("py", "class", "m.C", "C()",
                        "<p>C.</p>"
                        "<dl class=\"py attribute\"><dt class=\"sig\" id=\"m.C.p\"><span "
                        "class=\"sig-name\">p</span><em class=\"property\">: Callable[(int)]</em>"
                        "<em class=\"property\"> = make(5)</em></dt><dd><p>The p. For example:</p>"
                        "<div class=\"highlight-python\"><pre>c.p()\n\nc.p\n</pre></div>"
                        "<div class=\"versionadded\"><p><span class=\"versionmodified\">New in "
                        "version 1.5.</span></p></div></dd></dl>"));
    const ImportResult result = tree.import();
    EXPECT_THAT(
        itemAt(result, u"C.html").getClassPropertyGroups(),
        ElementsAre(ClassPropertyGroup(
            u"Attributes", {ClassProperty(u"p",
                                          u"The p. For example:\n\n    c.p()\n    \n    c.p\n\n"
                                          u"New in version 1.5.",
                                          u"C.html#m.C.p", {u"Callable[(int)] = make(5)"})})));
    EXPECT_EQ(recordOf(result, u"m.C.p").getPurpose(), u"The p.");
}

TEST(ClassPropertiesTest, GetARecordWhereOnlyAFieldNamesThem) {
    BuiltTree tree;
    tree.object("m.C", "py:class", "C.html#$")
        .object("m.C.b", "py:method", "C.b.html#$")
        .page("C.html", described("py", "class", "m.C", "C()", attributesField))
        .page("C.b.html", described("py", "method", "m.C.b", "b()", ""));
    const ImportResult result = tree.import();
    EXPECT_EQ(recordOf(result, u"m.C.a").getHref(), u"C.html");
    EXPECT_EQ(recordOf(result, u"m.C.a").getPurpose(), u"Listed a.");
    EXPECT_EQ(recordOf(result, u"m.C.b").getType(), RefEntityType::Method);
}

TEST(ClassPropertiesTest, AreReadFromTablesUnderTheirHeading) {
    BuiltTree tree;
    tree.object("m.C", "py:class", "C.html#$")
        .page(
            "C.html",
            described("py", "class", "m.C", "C()",
                      "<p>C.</p><p class=\"rubric\">Attributes</p><table class=\"autosummary\">"
                      "<tr><td><p><a href=\"#\"><code>C.a</code></a></p></td><td><p>The a.</p></td>"
                      "</tr></table><p class=\"rubric\">Methods</p><table class=\"autosummary\">"
                      "<tr><td><code>go</code></td><td>Goes.</td></tr></table>"));
    const auto item = itemAt(tree.import(), u"C.html");
    EXPECT_THAT(
        item.getClassPropertyGroups(),
        ElementsAre(ClassPropertyGroup(u"Attributes", {ClassProperty(u"a", u"The a.", u"", {})})));
    EXPECT_EQ(item.getDescription(), u"");
}

TEST(ClassPropertiesTest, BelongToStructuresOfC) {
    BuiltTree tree;
    tree.object("Point", "c:struct", "api.html#c.Point")
        .object("Point.x", "c:member", "api.html#c.Point.x")
        .page(
            "api.html",
            "<dl class=\"c struct\"><dt class=\"sig\" id=\"c.Point\">struct <span "
            "class=\"sig-name\">Point</span></dt><dd><p>P.</p><dl class=\"c member\"><dt "
            "class=\"sig\" id=\"c.Point.x\">double <span class=\"sig-name\">x</span></dt><dd><p>X."
            "</p></dd></dl></dd></dl>");
    const ImportResult result = tree.import();
    EXPECT_EQ(recordOf(result, u"Point.x").getHref(), u"api.html");
    EXPECT_THAT(
        itemAt(result, u"api.html").getClassPropertyGroups(),
        ElementsAre(ClassPropertyGroup(
            u"Attributes", {ClassProperty(u"x", u"X.", u"api.html#c.Point.x", {u"double"})})));
}

TEST(ClassPropertiesTest, HaveItemsOfTheirOwnWhereNoClassIsKnown) {
    BuiltTree tree;
    tree.object("m.Hidden.p", "py:attribute", "m.html#$")
        .object("ns::Box::size", "cpp:member", "cpp.html#_size")
        .object("ns::Box", "cpp:class", "cpp.html#_Box")
        .page("m.html", described("py", "attribute", "m.Hidden.p", "p", "<p>P.</p>"))
        .page("cpp.html",
              described("cpp", "class", "_Box", "Box",
                        described("cpp", "member", "_size", "int size", "<p>Size.</p>")));
    const ImportResult result = tree.import();
    EXPECT_EQ(itemAt(result, u"m.html").getPurpose(), u"P.");
    EXPECT_EQ(recordOf(result, u"m.Hidden.p").getType(), RefEntityType::Property);
    EXPECT_EQ(itemAt(result, u"cpp.html#_size").getPurpose(), u"Size.");
    EXPECT_EQ(recordOf(result, u"ns::Box::size").getType(), RefEntityType::Variable);
    EXPECT_THAT(itemAt(result, u"cpp.html").getClassPropertyGroups(), IsEmpty());
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::importers::sphinx
