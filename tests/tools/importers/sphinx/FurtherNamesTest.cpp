// Aliases: names under which a thing is found besides its own.
#include <cstddef>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BuiltTree.hpp"
#include "docset/publish.hpp"
#include "docset/validate.hpp"
#include "fl/i18n/utf.hpp"
#include "sphinx/ImportTree.hpp"

namespace reference::importers::sphinx {
namespace VELTRA_TEST_FILE {

using property::RefEntityType;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using tests::BuiltTree;
using tests::described;
using tests::itemAt;
using tests::recordOf;

// A class pkg.Box with a method and a property, really defined in pkg.impl.
BuiltTree& addBox(BuiltTree& tree) {
    return tree.object("pkg", "py:module", "api.html#module-$")
        .object("pkg.Box", "py:class", "api.html#$")
        .object("pkg.impl.Box", "py:class", "api.html#pkg.Box", -1)
        .object("pkg.Box.open", "py:method", "api.html#$")
        .object("pkg.Box.width", "py:property", "api.html#$")
        .page("api.html", "<section id=\"module-pkg\"><h1>pkg</h1><p>A package.</p>" +
                              described("py", "class", "pkg.Box", "Box()",
                                        "<p>A box.</p>" +
                                            described("py", "method", "pkg.Box.open", "open()",
                                                      "<p>Opens it.</p>") +
                                            described("py", "property", "pkg.Box.width", "width",
                                                      "<p>Its width.</p>")) +
                              "</section>");
}

TEST(FurtherNamesTest, LeadToTheItemOfTheOwnName) {
    BuiltTree tree;
    addBox(tree);
    const ImportResult result = tree.import();
    const auto alias = recordOf(result, u"pkg.impl.Box");
    EXPECT_EQ(alias, recordOf(result, u"pkg.Box"));
    EXPECT_EQ(alias.getType(), RefEntityType::Class);
    EXPECT_EQ(alias.getHref(), u"api.html#pkg.Box");
    EXPECT_EQ(alias.getPurpose(), u"A box.");
    EXPECT_THAT(itemAt(result, u"api.html#pkg.Box").getRefEntities(), SizeIs(1));
}

TEST(FurtherNamesTest, OfAClassAreThoseOfItsMembersToo) {
    BuiltTree tree;
    addBox(tree);
    const ImportResult result = tree.import();
    EXPECT_EQ(recordOf(result, u"pkg.impl.Box.open"), recordOf(result, u"pkg.Box.open"));
    EXPECT_EQ(recordOf(result, u"pkg.impl.Box.width"), recordOf(result, u"pkg.Box.width"));
}

TEST(FurtherNamesTest, AreCountedApart) {
    BuiltTree tree;
    addBox(tree);
    const ImportReport report = tree.import().report;
    EXPECT_EQ(report.furtherNames, 3U);
    EXPECT_EQ(report.entitiesByKind.at(RefEntityType::Class), 1U);
    EXPECT_EQ(report.entitiesByKind.at(RefEntityType::Method), 1U);
    EXPECT_THAT(report.leftOut, IsEmpty());
}

TEST(FurtherNamesTest, MakeASoundSet) {
    BuiltTree tree;
    addBox(tree);
    const tests::TempFolder set;
    docset::publishProduct(set.path() / "set", "en_US", tree.import().documentation);
    EXPECT_THAT(docset::validate(set.path() / "set").faults, IsEmpty());
}

TEST(FurtherNamesTest, GiveWayToWhatHasTheNameOfItsOwn) {
    BuiltTree tree;
    addBox(tree)
        .object("pkg.impl.Box", "py:class", "impl.html#$")
        .object("pkg.impl.Box.open", "py:method", "impl.html#$")
        .page("impl.html",
              described("py", "class", "pkg.impl.Box", "Box()",
                        "<p>Another box.</p>" + described("py", "method", "pkg.impl.Box.open",
                                                          "open()", "<p>Opens that.</p>")));
    const ImportResult result = tree.import();
    EXPECT_EQ(recordOf(result, u"pkg.impl.Box").getPurpose(), u"Another box.");
    EXPECT_EQ(recordOf(result, u"pkg.impl.Box.open").getPurpose(), u"Opens that.");
    EXPECT_EQ(result.report.entitiesByKind.at(RefEntityType::Method), 2U);
}

TEST(FurtherNamesTest, OfSeveralThingsLeadToEach) {
    BuiltTree tree;
    tree.object("cc.--help", "std:cmdoption", "cc.html#cmdoption-cc-h")
        .object("ld.--help", "std:cmdoption", "ld.html#cmdoption-ld-h");
    const auto entities = tree.import().documentation.entities;
    ASSERT_TRUE(entities.contains(u"--help"));
    EXPECT_THAT(entities.at(u"--help"), SizeIs(2));
}

// A class with thousands of further names would give each of its members as many.
TEST(FurtherNamesTest, OfAClassTheFirstTwentyAreThoseOfItsMembersToo) {
    BuiltTree tree;
    addBox(tree);
    for (int number = 10; number < 40; ++number)
        tree.object("pkg.n" + std::to_string(number) + ".Box", "py:class", "api.html#pkg.Box", -1);
    const auto entities = tree.import().documentation.entities;
    std::size_t ofMember = 0;
    for (int number = 10; number < 40; ++number) {
        const std::u16string name = fl::i18n::toUtf16("pkg.n" + std::to_string(number) + ".Box");
        EXPECT_TRUE(entities.contains(name)) << number;
        ofMember += entities.count(name + u".open");
    }
    ofMember += entities.count(u"pkg.impl.Box.open");
    EXPECT_EQ(ofMember, 20U);
}

TEST(FurtherNamesTest, AreTheSpellingThatAPageShows) {
    BuiltTree tree;
    tree.object("command:fetch_all", "cmake:command", "m.html#$")
        .page("m.html",
              described("cmake", "command", "command:fetch_all", "Fetch_All", "<p>Fetches.</p>"));
    const ImportResult result = tree.import();
    EXPECT_EQ(recordOf(result, u"Fetch_All").getPurpose(), u"Fetches.");
    EXPECT_EQ(recordOf(result, u"fetch_all").getPurpose(), u"Fetches.");
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::importers::sphinx
