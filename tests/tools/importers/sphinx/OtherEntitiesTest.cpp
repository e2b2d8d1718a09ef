// What is documented besides a language's own entities, in the three forms that pages give it: a
// signature line, a section with a mark, a term of a glossary.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BuiltTree.hpp"
#include "sphinx/ImportTree.hpp"

namespace reference::importers::sphinx {
namespace VELTRA_TEST_FILE {

using property::RefEntityType;
using property::RefItem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;
using tests::BuiltTree;
using tests::described;
using tests::itemAt;
using tests::recordOf;

TEST(OtherEntitiesTest, SignatureLinesDescribeOptionsAndVariables) {
    BuiltTree tree;
    tree.object("tool.-q", "std:cmdoption", "tool.html#cmdoption-tool-q")
        .object("tool.--quiet", "std:cmdoption", "tool.html#cmdoption-tool-q")
        .object("TOOL_HOME", "std:envvar", "tool.html#envvar-$")
        .page("tool.html",
              "<dl class=\"std option\"><dt class=\"sig sig-object std\" id=\"cmdoption-tool-q\">"
              "<span id=\"cmdoption-tool-quiet\"></span><span class=\"sig-name descname\">-q</span>"
              "<span class=\"sig-prename descclassname\">, </span>"
              "<span class=\"sig-name descname\">--quiet</span></dt>"
              "<dd><p>Says nothing. At all.</p></dd></dl>" +
                  described("std", "envvar", "envvar-TOOL_HOME", "TOOL_HOME",
                            "<p>Where it lives.</p>"));
    const ImportResult result = tree.import();
    const RefItem option = itemAt(result, u"tool.html#cmdoption-tool-q");
    EXPECT_THAT(option.getRefEntities(), SizeIs(2));
    EXPECT_EQ(option.getPurpose(), u"Says nothing.");
    EXPECT_EQ(option.getDescription(), u"At all.");
    ASSERT_THAT(option.getSyntaxGroups(), SizeIs(1));
    EXPECT_THAT(option.getSyntaxGroups()[0].getSyntaxes(), ElementsAre(u"-q, --quiet"));
    EXPECT_EQ(recordOf(result, u"tool.--quiet").getType(), RefEntityType::Option);
    EXPECT_EQ(recordOf(result, u"--quiet").getPurpose(), u"Says nothing.");
    EXPECT_EQ(recordOf(result, u"TOOL_HOME").getPurpose(), u"Where it lives.");
    EXPECT_THAT(result.report.undescribed, IsEmpty());
}

TEST(OtherEntitiesTest, SectionsDescribeWhatTheirMarkNames) {
    const char* const sections[] = {
        "<div class=\"section\" id=\"debug\"><span id=\"x\"></span><span id=\"std-setting-DEBUG\">"
        "</span><h3>DEBUG</h3><p>Default: off.</p><p>Shows errors. All.</p></div>",
        "<span class=\"target\" id=\"std-setting-DEBUG\"></span><section "
        "id=\"debug\"><h3>DEBUG</h3>"
        "<p>Default: off.</p><p>Shows errors. All.</p></section>",
        "<section id=\"std-setting-DEBUG\"><h3>DEBUG</h3><p>Default: off.</p>"
        "<p>Shows errors. All.</p></section>",
        "<section><h2>A</h2><section><h3>B</h3><p>Of B.</p><span id=\"std-setting-DEBUG\"></span>"
        "</section></section><section id=\"debug\"><h2>DEBUG</h2><p>Default: off.</p>"
        "<p>Shows errors. All.</p></section>",
    };
    for (const char* const section : sections) {
        BuiltTree tree;
        tree.object("DEBUG", "std:setting", "settings.html#std-setting-$")
            .page("settings.html", section);
        const ImportResult result = tree.import();
        const RefItem item = itemAt(result, u"settings.html");
        EXPECT_EQ(item.getPurpose(), u"Shows errors.") << section;
        EXPECT_EQ(item.getDescription(), u"All.\n\nDefault: off.") << section;
        EXPECT_THAT(item.getSyntaxGroups(), IsEmpty()) << section;
        EXPECT_EQ(recordOf(result, u"DEBUG").getType(), RefEntityType::Setting) << section;
    }
}

TEST(OtherEntitiesTest, SectionsEndWhereAnotherThingBegins) {
    BuiltTree tree;
    tree.object("command:install", "cmake:command", "install.html#$")
        .object("OUTER", "std:setting", "s.html#std-setting-$")
        .object("INNER", "std:setting", "s.html#std-setting-$")
        .page("install.html",
              "<section id=\"install\"><span id=\"command:install\"></span><h1>install</h1>"
              "<p>Installs.</p><section id=\"files\"><h2>Files</h2><p>Of files.</p></section>"
              "<section id=\"options\"><h2>Options</h2>" +
                  described("std", "option", "o", "-o", "<p>O.</p>") + "</section></section>")
        .page("s.html",
              "<section id=\"outer\"><span id=\"std-setting-OUTER\"></span><h2>OUTER</h2>"
              "<p>Outer.</p><section id=\"inner\"><span id=\"std-setting-INNER\"></span>"
              "<h3>INNER</h3><p>Inner.</p></section><p>After.</p></section>");
    const ImportResult result = tree.import();
    EXPECT_EQ(itemAt(result, u"install.html").getDescription(), u"Files\n-----\n\nOf files.");
    EXPECT_EQ(itemAt(result, u"s.html#std-setting-OUTER").getPurpose(), u"Outer.");
    EXPECT_EQ(itemAt(result, u"s.html#std-setting-OUTER").getDescription(), u"");
    EXPECT_EQ(itemAt(result, u"s.html#std-setting-INNER").getPurpose(), u"Inner.");
}

TEST(OtherEntitiesTest, MarksInTheMidstOfProseDescribeNothing) {
    BuiltTree tree;
    tree.object("DEBUG", "std:setting", "s.html#d")
        .page("s.html", "<section><h1>T</h1><p>P.</p><span id=\"d\"></span><p>Q.</p></section>");
    EXPECT_THAT(tree.import().report.undescribed, ElementsAre("DEBUG"));
}

TEST(OtherEntitiesTest, GlossariesDescribeTerms) {
    BuiltTree tree;
    tree.object("lazy loading", "std:term", "glossary.html#term-lazy-loading", -1)
        .object("lazy loads", "std:term", "glossary.html#term-0", -1)
        .object("mapping", "std:term", "glossary.html#term-$", -1)
        .page("glossary.html",
              "<dl class=\"glossary\"><dt id=\"term-lazy-loading\">lazy loading"
              "<a class=\"headerlink\" href=\"#\">\xC2\xB6</a></dt>"
              "<dt id=\"term-0\">lazy loads</dt><dd><p>Loads late. Or never.</p></dd>"
              "<dt id=\"term-mapping\">mapping</dt><dd><p>A table.</p></dd></dl>");
    const ImportResult result = tree.import();
    const RefItem item = itemAt(result, u"glossary.html#term-lazy-loading");
    EXPECT_THAT(item.getRefEntities(), SizeIs(2));
    EXPECT_EQ(item.getPurpose(), u"Loads late.");
    EXPECT_EQ(item.getDescription(), u"Or never.");
    EXPECT_THAT(item.getSyntaxGroups(), IsEmpty());
    EXPECT_EQ(recordOf(result, u"lazy loads").getType(), RefEntityType::Term);
    EXPECT_EQ(recordOf(result, u"mapping").getPurpose(), u"A table.");
}

TEST(OtherEntitiesTest, WhatIsLeftOutIsCounted) {
    BuiltTree tree;
    tree.object("start", "std:label", "p.html#$", -1)
        .object("p", "std:doc", "p.html", -1)
        .object("q", "std:doc", "q.html", -1)
        .object("f", "py:function", "p.html#$")
        .page("p.html", described("py", "function", "f", "f()", "<p>F.</p>"));
    EXPECT_THAT(tree.import().report.leftOut,
                ElementsAre(Pair("std:doc", 2), Pair("std:label", 1)));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::importers::sphinx
