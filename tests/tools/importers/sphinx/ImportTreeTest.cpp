#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BuiltTree.hpp"
#include "sphinx/ImportTree.hpp"

namespace reference::importers::sphinx {
namespace VELTRA_TEST_FILE {

using property::DeprecationStatus;
using property::FunctionType;
using property::RefEntity;
using property::RefEntityType;
using property::RefItem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using tests::BuiltTree;
using tests::described;
using tests::itemAt;
using tests::recordOf;

TEST(ImportTreeTest, FillsTheHeaderFromTheInventoryOrTheOptions) {
    BuiltTree tree;
    const auto byInventory = tree.import().documentation.header;
    EXPECT_EQ(byInventory.shortName, u"sample");
    EXPECT_EQ(byInventory.displayName, u"Sample");
    EXPECT_EQ(byInventory.version, u"2.5");
    EXPECT_EQ(byInventory.helpFolder, u"sample");

    ImportOptions options = tree.options();
    options.displayName = u"Shown";
    options.version = u"9";
    options.helpFolder = u"folder";
    const auto byOptions = importTree(options).documentation.header;
    EXPECT_EQ(byOptions.displayName, u"Shown");
    EXPECT_EQ(byOptions.version, u"9");
    EXPECT_EQ(byOptions.helpFolder, u"folder");
}

TEST(ImportTreeTest, FilesAnObjectThatHasThePageToItselfUnderThePage) {
    BuiltTree tree;
    tree.object("pkg.fit", "py:function", "ref/pkg.fit.html#$")
        .page("ref/pkg.fit.html", described("py", "function", "pkg.fit", "fit(x)", "<p>Fits.</p>"));
    const ImportResult result = tree.import();
    const RefItem item = itemAt(result, u"ref/pkg.fit.html");
    EXPECT_EQ(item.getHref(), u"ref/pkg.fit.html");
    EXPECT_EQ(item.getPurpose(), u"Fits.");
    ASSERT_THAT(item.getSyntaxGroups(), SizeIs(1));
    EXPECT_EQ(item.getSyntaxGroups()[0].getTitle(), u"");
    EXPECT_THAT(item.getSyntaxGroups()[0].getSyntaxes(), ElementsAre(u"fit(x)"));
    EXPECT_THAT(item.getRefEntities(), ElementsAre(RefEntity(RefEntityType::Function, u"pkg.fit",
                                                             FunctionType::Function)));
    EXPECT_EQ(recordOf(result, u"pkg.fit").getHref(), u"ref/pkg.fit.html");
    EXPECT_EQ(recordOf(result, u"pkg.fit").getPurpose(), u"Fits.");
    EXPECT_EQ(result.report.entitiesByKind.at(RefEntityType::Function), 1U);
}

TEST(ImportTreeTest, FilesMembersOfAClassOnItsPageByTheirAnchors) {
    BuiltTree tree;
    tree.object("pkg.C", "py:class", "ref/pkg.C.html#$")
        .object("pkg.C.m", "py:method", "ref/pkg.C.html#$")
        .page("ref/pkg.C.html", described("py", "class", "pkg.C", "C()",
                                          "<p>Class.</p>" + described("py", "method", "pkg.C.m",
                                                                      "m()", "<p>M.</p>")));
    const ImportResult result = tree.import();
    EXPECT_EQ(itemAt(result, u"ref/pkg.C.html").getPurpose(), u"Class.");
    EXPECT_EQ(itemAt(result, u"ref/pkg.C.html").getDescription(), u"");
    EXPECT_EQ(itemAt(result, u"ref/pkg.C.html#pkg.C.m").getPurpose(), u"M.");
    EXPECT_EQ(recordOf(result, u"pkg.C.m").getHref(), u"ref/pkg.C.html#pkg.C.m");
}

TEST(ImportTreeTest, FilesManyObjectsOfOnePageByTheirAnchors) {
    BuiltTree tree;
    tree.object("m", "py:module", "lib/m.html#module-$")
        .object("m.f", "py:function", "lib/m.html#$")
        .page("lib/m.html", "<section id=\"module-m\"><h1>m</h1><p>The module.</p>" +
                                described("py", "function", "m.f", "f()", "<p>F.</p>") +
                                "</section>");
    const ImportResult result = tree.import();
    EXPECT_EQ(recordOf(result, u"m").getHref(), u"lib/m.html#module-m");
    EXPECT_EQ(recordOf(result, u"m.f").getHref(), u"lib/m.html#m.f");
    EXPECT_EQ(itemAt(result, u"lib/m.html#m.f").getPackageName(), u"m");
    EXPECT_FALSE(result.documentation.pages.contains(u"lib/m.html"));
}

TEST(ImportTreeTest, MakesOneItemOfNamesThatAreDescribedTogether) {
    BuiltTree tree;
    tree.object("m.f", "py:function", "m.html#$")
        .object("m.g", "py:function", "m.html#$")
        .object("m.h", "py:function", "m.html#$")
        .page("m.html",
              "<dl class=\"py function\"><dt class=\"sig\" id=\"m.f\">f(x)</dt><dt class=\"sig\" "
              "id=\"m.g\">g(x)</dt><dt class=\"sig\">g(x, y)</dt><dd><p>Both.</p></dd></dl>" +
                  described("py", "function", "m.h", "h()", ""));
    const ImportResult result = tree.import();
    const RefItem item = itemAt(result, u"m.html#m.f");
    ASSERT_THAT(item.getRefEntities(), SizeIs(2));
    EXPECT_EQ(item.getRefEntities()[1].getName(), u"m.g");
    EXPECT_THAT(item.getSyntaxGroups()[0].getSyntaxes(), ElementsAre(u"f(x)", u"g(x)", u"g(x, y)"));
    EXPECT_EQ(recordOf(result, u"m.g").getHref(), u"m.html#m.f");
    EXPECT_EQ(recordOf(result, u"m.g").getPurpose(), u"Both.");
}

TEST(ImportTreeTest, FilesOverloadsTogetherInPageOrder) {
    BuiltTree tree;
    tree.object("ns::f", "cpp:function", "api.html#_v2")
        .object("ns::f", "cpp:function", "api.html#_v1")
        .object("ns::g", "cpp:function", "api.html#_g")
        .page("api.html", described("cpp", "function", "_v1", "f(int)", "<p>First.</p>") +
                              described("cpp", "function", "_v2", "f(long)", "<p>Second.</p>") +
                              described("cpp", "function", "_g", "g()", ""));
    const ImportResult result = tree.import();
    EXPECT_EQ(recordOf(result, u"ns::f").getHref(), u"api.html#_v1");
    EXPECT_EQ(recordOf(result, u"ns::f").getPurpose(), u"First.");
    const auto& items = result.documentation.pages.at(u"api.html#_v1");
    ASSERT_THAT(items, SizeIs(2));
    EXPECT_EQ(items[0].getPurpose(), u"First.");
    EXPECT_EQ(items[1].getPurpose(), u"Second.");
    EXPECT_EQ(items[1].getHref(), u"api.html#_v1");
}

TEST(ImportTreeTest, KeepsNamesOfDifferentDomainsApart) {
    BuiltTree tree;
    tree.object("Data", "c:struct", "api.html#c.Data")
        .object("Data", "cpp:struct", "api.html#_Data")
        .page("api.html", described("c", "struct", "c.Data", "Data", "<p>In C.</p>") +
                              described("cpp", "struct", "_Data", "Data", "<p>In C++.</p>"));
    const ImportResult result = tree.import();
    EXPECT_THAT(result.documentation.entities.at(u"Data"), SizeIs(2));
    EXPECT_EQ(itemAt(result, u"api.html#c.Data").getPurpose(), u"In C.");
    EXPECT_EQ(itemAt(result, u"api.html#_Data").getPurpose(), u"In C++.");
}

TEST(ImportTreeTest, FindsDescriptionsWhereverTheirIdStands) {
    BuiltTree tree;
    tree.object("f", "c:function", "api.html#in-line")
        .object("g", "c:function", "api.html#before")
        .object("h", "py:function", "api.html#old")
        .object("i", "py:function", "api.html#with%20space")
        .object("j", "py:function", "api.html#of-the-list")
        .object("k", "py:function", "api.html#before-the-list")
        .page("api.html",
              "<dl class=\"c function\"><dt class=\"sig\"><span id=\"in-line\"></span>f()</dt><dd>"
              "<p>F.</p></dd></dl><span class=\"target\" id=\"before\"></span><dl class=\"c "
              "function\"><dt class=\"sig\" id=\"x\">g()</dt><dd><p>G.</p></dd></dl>"
              "<dl class=\"function\"><dt id=\"old\"><tt class=\"descname\">h</tt>()</dt><dd><p>H."
              "</p></dd></dl>" +
                  described("py", "function", "with space", "i()", "<p>I.</p>") +
                  // Pages that are not well-formed have other things before the first line.
                  "<dl class=\"py function\" id=\"of-the-list\"><dd></dd><dt "
                  "class=\"sig\">j()</dt><dd><p>J.</p></dd></dl>"
                  "<span id=\"before-the-list\"></span><dl class=\"py function\"><dd></dd><dt "
                  "class=\"sig\">k()</dt><dd><p>K.</p></dd></dl>");
    const ImportResult result = tree.import();
    EXPECT_THAT(result.report.undescribed, IsEmpty());
    EXPECT_EQ(recordOf(result, u"f").getPurpose(), u"F.");
    EXPECT_EQ(recordOf(result, u"g").getPurpose(), u"G.");
    EXPECT_EQ(recordOf(result, u"h").getPurpose(), u"H.");
    EXPECT_EQ(recordOf(result, u"i").getPurpose(), u"I.");
    EXPECT_EQ(recordOf(result, u"j").getPurpose(), u"J.");
    EXPECT_EQ(recordOf(result, u"k").getPurpose(), u"K.");
}

TEST(ImportTreeTest, CarriesFieldsExamplesVersionsAndDeprecation) {
    BuiltTree tree;
    tree.object("m.f", "py:function", "m.html#$")
        .page("m.html",
              described(
                  "py", "function", "m.f", "f(x, *, y)",
                  "<p>P.</p><dl class=\"field-list\"><dt>Parameters</dt><dd><p><strong>x</strong>"
                  " (<em>int</em>) – in</p></dd><dt>Other Parameters</dt><dd><p><strong>y"
                  "</strong> – other</p></dd><dt>Returns</dt><dd><p>out</p></dd>"
                  "<dt>Return type</dt><dd><p>str</p></dd></dl>"
                  "<div class=\"highlight-python\"><pre>f(1)\n</pre></div>"
                  "<div class=\"versionadded\"><p><span class=\"versionmodified\">New in "
                  "version 1.2.</span></p></div><div class=\"deprecated\"><p><span "
                  "class=\"versionmodified\">Deprecated since version 2.</span></p></div>"));
    const RefItem item = itemAt(tree.import(), u"m.html");
    ASSERT_THAT(item.getInputs(), SizeIs(2));
    EXPECT_EQ(item.getInputs()[0], property::Input(u"x", u"in", u"", {u"int"}));
    EXPECT_EQ(item.getInputs()[1], property::Input(u"y", u"other", u"", {}));
    ASSERT_THAT(item.getInputGroups(), SizeIs(2));
    EXPECT_EQ(item.getInputGroups()[0].getTitle(), u"Parameters");
    EXPECT_EQ(item.getInputGroups()[1].getTitle(), u"Other Parameters");
    EXPECT_THAT(item.getOutputs(), ElementsAre(property::Output(u"", u"out", u"", {u"str"})));
    EXPECT_THAT(item.getExamples(), ElementsAre(property::Example(u"P.", u"f(1)")));
    EXPECT_EQ(item.getIntroduced(), u"1.2");
    EXPECT_EQ(item.getDeprecationStatus(), DeprecationStatus::Deprecated);
}

TEST(ImportTreeTest, LeadsRelatedEntitiesToTheirRecords) {
    BuiltTree tree;
    const std::string links =
        "<p>P.</p><div class=\"seealso\"><p><a href=\"g.html#m.g\">g</a>"
        "<a href=\"../lib.html#m.h\">h</a><a href=\"g.html#m.C.p\">p</a>"
        "<a href=\"../guide.html#part\">guide</a></p></div>";
    tree.object("m.f", "py:function", "ref/f.html#$")
        .object("m.g", "py:function", "ref/g.html#$")
        .object("m.h", "py:function", "lib.html#$")
        .object("m.i", "py:function", "lib.html#$")
        .page("ref/f.html", described("py", "function", "m.f", "f()", links))
        .page("ref/g.html", described("py", "function", "m.g", "g()", ""))
        .page("lib.html", described("py", "function", "m.h", "h()", "") +
                              described("py", "function", "m.i", "i()", ""));
    EXPECT_THAT(itemAt(tree.import(), u"ref/f.html").getSeeAlsoInfo(),
                ElementsAre(property::SeeAlso(u"ref/g.html", u"g"),
                            property::SeeAlso(u"lib.html#m.h", u"h"),
                            property::SeeAlso(u"ref/g.html#m.C.p", u"p"),
                            property::SeeAlso(u"guide.html#part", u"guide")));
}

TEST(ImportTreeTest, LeavesOutParametersAndPlacesInTheProse) {
    BuiltTree tree;
    tree.object("m.f", "py:function", "m.html#$")
        .object("f::x", "cpp:functionParam", "m.html#m.f")
        .object("label", "std:label", "m.html#m.f")
        .page("m.html", described("py", "function", "m.f", "f()", ""));
    const ImportResult result = tree.import();
    EXPECT_THAT(result.documentation.entities, SizeIs(1));
    EXPECT_EQ(result.report.objects, 1U);
}

TEST(ImportTreeTest, ReadsTheIndexPagesOfFolders) {
    BuiltTree tree;
    tree.object("m.f", "py:function", "lib/m/#$")
        .page("lib/m/index.html", described("py", "function", "m.f", "f()", "<p>F.</p>"));
    const ImportResult result = tree.import();
    EXPECT_EQ(recordOf(result, u"m.f").getHref(), u"lib/m/");
    EXPECT_EQ(recordOf(result, u"m.f").getPurpose(), u"F.");
}

TEST(ImportTreeTest, KeepsTheReplacementsThatTheObjectsOwnDeprecationNames) {
    BuiltTree tree;
    const std::string own =
        "<div class=\"deprecated\"><p><span class=\"versionmodified\">Deprecated since version "
        "2: </span><code class=\"xref\">old()</code> goes; use <a class=\"reference internal\" "
        "href=\"new.html#n.old\"><code class=\"xref\">n.old()</code></a> as <a "
        "href=\"why.html\">told</a>, not <a href=\"#m.old\"><code>old</code></a>.</p></div>";
    const std::string ofParameter =
        "<dl class=\"field-list\"><dt>Parameters</dt><dd><p><strong>x</strong> – The x.</p><div "
        "class=\"deprecated\"><p><span class=\"versionmodified\">Deprecated since version 3: "
        "</span>Use <a href=\"#m.f\"><code>f</code></a>.</p></div></dd></dl>";
    tree.object("m.old", "py:function", "m.html#$")
        .object("m.f", "py:function", "m.html#$")
        .object("n.old", "py:function", "new.html#$")
        .page("m.html", described("py", "function", "m.old", "old(x)", "<p>Old.</p>" + own) +
                            described("py", "function", "m.f", "f(x)", "<p>F.</p>" + ofParameter))
        .page("new.html", described("py", "function", "n.old", "old(x)", "<p>New.</p>"));
    const ImportResult result = tree.import();
    EXPECT_THAT(itemAt(result, u"m.html#m.old").getReplacements(),
                ::testing::ElementsAre(property::SeeAlso(u"new.html", u"n.old")));
    EXPECT_THAT(itemAt(result, u"m.html#m.f").getReplacements(), ::testing::IsEmpty());
    EXPECT_EQ(itemAt(result, u"m.html#m.f").getDeprecationStatus(), DeprecationStatus::Current);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::importers::sphinx
