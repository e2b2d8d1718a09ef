#include <filesystem>
#include <stdexcept>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BuiltTree.hpp"
#include "sphinx/ImportTree.hpp"

namespace reference::importers::sphinx {
namespace VELTRA_TEST_FILE {

using testing::AllOf;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using testing::ThrowsMessage;
using tests::BuiltTree;
using tests::described;
using tests::itemAt;
using tests::recordOf;

auto fault(const std::string& page, const std::string& problem) {
    return AllOf(Field(&PageFault::page, page), Field(&PageFault::problem, HasSubstr(problem)));
}

TEST(ImportFaultsTest, PagesThatCannotBeHadAreReportedAndPassedOver) {
    std::string deep;
    for (int each = 0; each < 100000; ++each)
        deep += "<div>";
    BuiltTree tree;
    tree.folder().write("secret.html", described("py", "function", "out", "out()", "<p>S.</p>"));
    tree.object("absolute", "py:function", "/etc/hostname#$")
        .object("deep", "py:function", "deep.html#$")
        .object("empty", "py:function", "empty.html#$")
        .object("good", "py:function", "good.html#$")
        .object("missing", "py:function", "missing.html#$")
        .object("parent", "py:function", "x/../../secret.html#$")
        .page("deep.html", deep)
        .page("good.html", described("py", "function", "good", "good()", "<p>Good.</p>"));
    tree.folder().write("empty.html", "");
    const ImportResult result = tree.import();
    EXPECT_THAT(result.report.faults,
                ElementsAre(fault("objects.inv", "\"absolute\" is none. It is absolute"),
                            fault("objects.inv", "\"parent\" is none. It leads out"),
                            fault("deep.html", "deep"), fault("empty.html", "empty"),
                            fault("missing.html", "no such file")));
    EXPECT_THAT(result.report.undescribed, ElementsAre("deep", "empty", "missing"));
    EXPECT_FALSE(result.documentation.entities.contains(u"absolute"));
    EXPECT_FALSE(result.documentation.entities.contains(u"parent"));
    EXPECT_EQ(result.report.pagesRead, 1U);
    EXPECT_EQ(recordOf(result, u"good").getPurpose(), u"Good.");
}

TEST(ImportFaultsTest, LinksThatLeadOutAreNotFollowed) {
    const tests::TempFolder outside;
    outside.write("secret.html", described("py", "function", "f", "f()", "<p>Secret.</p>"));
    BuiltTree tree;
    tree.object("f", "py:function", "link.html#$");
    std::filesystem::create_symlink(outside.path() / "secret.html",
                                    tree.folder().path() / "link.html");
    const ImportResult result = tree.import();
    EXPECT_THAT(result.report.faults, ElementsAre(fault("link.html", "leads out")));
    EXPECT_EQ(recordOf(result, u"f").getPurpose(), u"");
}

TEST(ImportFaultsTest, ObjectsWithoutADescriptionKeepAMinimalItem) {
    BuiltTree tree;
    tree.object("m", "py:module", "m.html#module-$")
        .object("m.f", "py:function", "m.html#$")
        .object("m.g", "py:function", "m.html#$")
        .page("m.html", described("py", "function", "m.f", "f()", "<p>F.</p>"));
    const ImportResult result = tree.import();
    EXPECT_THAT(result.report.undescribed, ElementsAre("m", "m.g"));
    const auto item = itemAt(result, u"m.html#m.g");
    EXPECT_EQ(item.getRefEntities().front().getName(), u"m.g");
    EXPECT_EQ(item.getPackageName(), u"m");
    EXPECT_EQ(item.getHref(), u"m.html#m.g");
    EXPECT_EQ(recordOf(result, u"m.f").getHref(), u"m.html#m.f");
}

TEST(ImportFaultsTest, PropertiesOfMissingPagesStayWithTheirClass) {
    BuiltTree tree;
    tree.object("m.C", "py:class", "C.html#$").object("m.C.p", "py:property", "p.html#$");
    const ImportResult result = tree.import();
    EXPECT_EQ(recordOf(result, u"m.C.p").getHref(), recordOf(result, u"m.C").getHref());
    EXPECT_EQ(itemAt(result, u"C.html#m.C").getClassPropertyGroups().size(), 1U);
}

TEST(ImportFaultsTest, IllFormedBytesAreReplacedAndReported) {
    BuiltTree tree;
    tree.object("f", "py:function", "f.html#$")
        .page("f.html", described("py", "function", "f", "f()", "<p>Caf\xE9 au lait.</p>"));
    const ImportResult result = tree.import();
    EXPECT_EQ(recordOf(result, u"f").getPurpose(), u"Caf\uFFFD au lait.");
    EXPECT_THAT(result.report.faults, ElementsAre(fault("f.html", "UTF-8")));
    EXPECT_EQ(result.report.pagesRead, 1U);
}

TEST(ImportFaultsTest, FaultsOfTheInventoryAreReported) {
    BuiltTree tree;
    tree.folder().write("objects.inv", tests::inventoryFile("nonsense\n"));
    EXPECT_THAT(importTree(tree.options()).report.faults,
                ElementsAre(fault("objects.inv", "line 1")));
}

TEST(ImportFaultsTest, ABrokenModuleIndexDoesNoHarm) {
    std::string deep;
    for (int each = 0; each < 10000; ++each)
        deep += "<div>";
    BuiltTree tree;
    tree.object("m", "py:module", "m.html#module-$")
        .page("m.html", "<section id=\"module-m\"><p>P.</p></section>")
        .page("py-modindex.html", deep);
    EXPECT_EQ(recordOf(tree.import(), u"m").getPurpose(), u"P.");
}

TEST(ImportFaultsTest, WithoutAUsableInventoryNothingIsImported) {
    const BuiltTree tree;
    EXPECT_THAT([&] { static_cast<void>(importTree(tree.options())); },
                ThrowsMessage<ImportError>(AllOf(HasSubstr("objects.inv"), HasSubstr("no such"))));
    const std::string whole = tests::inventoryFile("m.f py:function 1 m.html#$ -\n");
    tree.folder().write("objects.inv", whole.substr(0, whole.size() - 5));
    EXPECT_THAT(
        [&] { static_cast<void>(importTree(tree.options())); },
        ThrowsMessage<ImportError>(AllOf(HasSubstr("objects.inv"), HasSubstr("ends early"))));
}

TEST(ImportFaultsTest, IncompleteOptionsAreRefused) {
    const BuiltTree tree;
    ImportOptions options = tree.options();
    options.shortName.clear();
    EXPECT_THAT([&] { static_cast<void>(importTree(options)); },
                ThrowsMessage<ImportError>(HasSubstr("short name")));
    options = tree.options();
    options.source = tree.folder().path() / "none";
    EXPECT_THAT([&] { static_cast<void>(importTree(options)); },
                ThrowsMessage<ImportError>(HasSubstr("not a folder")));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::importers::sphinx
