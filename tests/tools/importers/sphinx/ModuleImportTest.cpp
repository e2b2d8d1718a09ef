#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BuiltTree.hpp"
#include "sphinx/ImportTree.hpp"

namespace reference::importers::sphinx {
namespace VELTRA_TEST_FILE {

using property::DeprecationStatus;
using property::RefEntityType;
using property::RefItem;
using tests::BuiltTree;
using tests::described;
using tests::itemAt;
using tests::recordOf;

RefItem importModule(const std::string& body) {
    BuiltTree tree;
    tree.object("m", "py:module", "m.html#module-$").page("m.html", body);
    return itemAt(tree.import(), u"m.html");
}

TEST(ModuleImportTest, TakesThePurposeFromTheSectionsFirstParagraph) {
    const RefItem item = importModule(
        "<section id=\"module-m\"><h1>m — a module</h1><p><strong>Source code:</strong> "
        "<a href=\"s\">m.py</a></p><p>Does things. Well.</p></section>");
    EXPECT_EQ(item.getPurpose(), u"Does things.");
    EXPECT_EQ(item.getDescription(), u"Source code: m.py\n\nWell.");
    EXPECT_EQ(item.getPackageName(), u"m");
    EXPECT_TRUE(item.getSyntaxGroups().empty());
}

TEST(ModuleImportTest, StopsAtTheFirstDescriptionOrSubsection) {
    EXPECT_EQ(
        importModule("<div class=\"section\" id=\"module-m\"><h1>m</h1><p>P.</p>" +
                     described("py", "function", "m.f", "f()", "<p>F.</p>") + "<p>After.</p></div>")
            .getDescription(),
        u"");
    EXPECT_EQ(importModule("<section id=\"module-m\"><p>P.</p><section><p>Sub.</p></section>"
                           "</section>")
                  .getDescription(),
              u"");
}

TEST(ModuleImportTest, FindsTheMarkInBeforeAndBelowTheText) {
    const char* const pages[] = {
        "<section><span class=\"target\" id=\"module-m\"></span><h1>T</h1><p>P.</p></section>",
        "<section><h1>T</h1><span class=\"target\" id=\"module-m\"></span><p>P.</p></section>",
        "<section><h1>T</h1><p>P.</p><span class=\"target\" id=\"module-m\"></span></section>",
        "<span class=\"target\" id=\"module-m\"></span><section><h1>T</h1><p>P.</p></section>",
    };
    for (const char* const page : pages)
        EXPECT_EQ(importModule(page).getPurpose(), u"P.") << page;
}

TEST(ModuleImportTest, FallsBackToTheHeading) {
    EXPECT_EQ(importModule("<section id=\"module-m\"><h1><span class=\"section-number\">3.1. "
                           "</span>m — a module<a class=\"headerlink\" "
                           "href=\"#\">¶</a></h1></section>")
                  .getPurpose(),
              u"m — a module");
}

TEST(ModuleImportTest, PrefersTheSummaryOfTheModuleIndex) {
    BuiltTree tree;
    tree.object("m", "py:module", "m.html#module-$")
        .page("m.html", "<section id=\"module-m\"><h1>m</h1><p>First sentence. Rest.</p></section>")
        .page(
            "py-modindex.html",
            "<table class=\"indextable modindextable\"><tr><td></td><td><a "
            "href=\"m.html#module-m\"><code class=\"xref\">m</code></a></td><td><strong>Deprecated:"
            "</strong><em>What :role:`m` is.</em></td></tr></table>");
    const ImportResult result = tree.import();
    const RefItem item = itemAt(result, u"m.html");
    EXPECT_EQ(item.getPurpose(), u"What m is.");
    EXPECT_EQ(item.getDescription(), u"First sentence. Rest.");
    EXPECT_EQ(item.getDeprecationStatus(), DeprecationStatus::Current);
    EXPECT_EQ(recordOf(result, u"m").getPurpose(), u"What m is.");
    EXPECT_EQ(recordOf(result, u"m").getType(), RefEntityType::Package);
}

TEST(ModuleImportTest, IsDeprecatedByABoxOfItsOwnSectionOnly) {
    const std::string box =
        "<div class=\"deprecated\"><p><span class=\"versionmodified\">Deprecated "
        "since version 3: </span>The m module is deprecated.</p></div>";
    EXPECT_EQ(importModule("<section id=\"module-m\"><h1>m</h1>" + box + "</section>")
                  .getDeprecationStatus(),
              DeprecationStatus::Deprecated);
    EXPECT_EQ(
        importModule("<section id=\"module-m\"><h1>m</h1><section>" + box + "</section></section>")
            .getDeprecationStatus(),
        DeprecationStatus::Current);
    EXPECT_EQ(importModule("<section id=\"module-m\"><h1>m</h1>" +
                           described("py", "function", "m.f", "f()", "") + box + "</section>")
                  .getDeprecationStatus(),
              DeprecationStatus::Current);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::importers::sphinx
