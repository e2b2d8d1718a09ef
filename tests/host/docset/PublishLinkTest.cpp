// What a publication does about links that somebody put into a set, and about arguments and texts
// that would make a set unreadable.
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "docset/Manifest.hpp"
#include "docset/publish.hpp"
#include "docset/validate.hpp"
#include "host/docset/Sets.hpp"
#include "support/Items.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

namespace fs = std::filesystem;
using namespace property;
using docset::PublishError;
using docset::publishProduct;
using docset::requirePublishable;
using testing::AllOf;
using testing::HasSubstr;
using testing::ThrowsMessage;

constexpr const char* lockFile = ".documentation-set.lock";

std::map<std::string, std::string> contentsOf(const TempFolder& folder) {
    std::map<std::string, std::string> contents;
    for (const auto& entry : fs::recursive_directory_iterator(folder.path())) {
        const std::string path = entry.path().lexically_relative(folder.path()).string();
        contents[path] = entry.is_regular_file() ? folder.read(path) : "";
    }
    return contents;
}

class PublishLinkTest : public testing::Test {
  protected:
    PublishLinkTest() {
        outside.write("victim", "precious");
        outside.write("folder/demo-1.lookup.json", "precious");
        outside.write("folder/demo-9.reference.json", "precious");
        publishProduct(root.path(), "en_US", makeProduct(u"demo"));
        before = contentsOf(outside);
    }

    void expectPublishedAndNothingOutsideTouched(const char16_t* edition) {
        publishProduct(root.path(), "en_US", makeProduct(u"demo", edition));
        EXPECT_EQ(readProduct(root.path(), u"demo"), makeProduct(u"demo", edition));
        EXPECT_EQ(contentsOf(outside), before);
    }

    void expectRefused(const std::string& locale, const std::string& problem) {
        const std::string manifest = root.read(manifestPath);
        EXPECT_THAT([&] { publishProduct(root.path(), locale, makeProduct(u"demo", u"second")); },
                    ThrowsMessage<PublishError>(HasSubstr(problem)));
        EXPECT_EQ(root.read(manifestPath), manifest);
        EXPECT_EQ(contentsOf(outside), before);
    }

    TempFolder outside;
    TempFolder root;
    std::map<std::string, std::string> before;
};

TEST_F(PublishLinkTest, TheNewManifestIsNotWrittenThroughALink) {
    fs::create_symlink(outside.path() / "victim", root.path() / "documentation-set.json.new");
    expectPublishedAndNothingOutsideTouched(u"second");
    fs::create_symlink(outside.path() / "made", root.path() / "documentation-set.json.new");
    expectPublishedAndNothingOutsideTouched(u"third");
}

TEST_F(PublishLinkTest, AProductFileIsNotWrittenThroughALink) {
    // The name that the next edition would take.
    fs::create_symlink(outside.path() / "victim", root.path() / "en_US/demo-2.lookup.json");
    expectPublishedAndNothingOutsideTouched(u"second");
}

TEST_F(PublishLinkTest, AnOldEditionThatIsALinkIsRemovedNotWhatItLeadsTo) {
    fs::create_symlink(outside.path() / "victim", root.path() / "en_US/demo-2.lookup.json");
    fs::create_directory_symlink(outside.path() / "folder",
                                 root.path() / "en_US/demo-3.reference.json");
    expectPublishedAndNothingOutsideTouched(u"second");
    expectPublishedAndNothingOutsideTouched(u"third");
    EXPECT_FALSE(fs::is_symlink(root.path() / "en_US/demo-2.lookup.json"));
    EXPECT_FALSE(fs::is_symlink(root.path() / "en_US/demo-3.reference.json"));
}

TEST_F(PublishLinkTest, ALocaleFolderThatIsALinkIsRefused) {
    fs::create_directory_symlink(outside.path() / "folder", root.path() / "ja_JP");
    expectRefused("ja_JP", "is a link");
    EXPECT_THAT([&] { requirePublishable(root.path(), "ja_JP", u"demo"); },
                ThrowsMessage<PublishError>(
                    AllOf(HasSubstr((root.path() / "ja_JP").string()), HasSubstr("is a link"))));
    fs::remove(root.path() / "ja_JP");
    fs::create_directory_symlink("en_US", root.path() / "ja_JP");
    expectRefused("ja_JP", "is a link");
}

TEST_F(PublishLinkTest, ALockFileThatIsALinkIsRefused) {
    fs::remove(root.path() / lockFile);
    fs::create_symlink(outside.path() / "made", root.path() / lockFile);
    expectRefused("en_US", "is a link");
    fs::remove(root.path() / lockFile);
    fs::create_symlink(outside.path() / "victim", root.path() / lockFile);
    expectRefused("en_US", "is a link");
}

TEST_F(PublishLinkTest, AManifestThatIsALinkOutOfTheSetIsNotRead) {
    fs::rename(root.path() / manifestPath, outside.path() / "manifest");
    before = contentsOf(outside);
    fs::create_symlink(outside.path() / "manifest", root.path() / manifestPath);
    EXPECT_THAT([&] { publishProduct(root.path(), "en_US", makeProduct(u"demo")); },
                ThrowsMessage<PublishError>(HasSubstr("leads out")));
    EXPECT_EQ(contentsOf(outside), before);
}

TEST_F(PublishLinkTest, TheRootItselfMayBeALink) {
    fs::create_directory_symlink(root.path(), outside.path() / "set");
    publishProduct(outside.path() / "set", "en_US", makeProduct(u"demo", u"second"));
    EXPECT_EQ(readProduct(root.path(), u"demo"), makeProduct(u"demo", u"second"));
}

TEST_F(PublishLinkTest, ALocaleThatWouldSpoilTheSetIsRefused) {
    struct Row {
        std::string locale;
        const char* problem;
    };
    const std::vector<Row> rows = {
        {"\xFF", "\"\\xFF\" is no locale. The name is not UTF-8"},
        {"en_US\xC3", "\"en_US\\xC3\" is no locale"},
        {"\xED\xA0\x80", "not UTF-8"},
        {"en\nUS", "\"en\\x0AUS\" is no locale"},
        {"en\x1B[31m", "without control characters"},
        {std::string("en\0US", 5), "\"en\\x00US\" is no locale"},
        {"en\\US", "the name of one folder"},
        {"documentation-set.json", "A file of the set has this name"},
        {"documentation-set.json.new", "A file of the set has this name"},
        {lockFile, "A file of the set has this name"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.problem);
        expectRefused(row.locale, row.problem);
        EXPECT_THAT([&] { requirePublishable(root.path(), row.locale, u"demo"); },
                    ThrowsMessage<PublishError>(HasSubstr(row.problem)));
        const TempFolder empty;
        EXPECT_THROW(publishProduct(empty.path(), row.locale, makeProduct(u"demo")), PublishError);
        EXPECT_TRUE(fs::is_empty(empty.path()));
    }
    EXPECT_EQ(dump(docset::validate(root.path()).faults), "");
}

TEST_F(PublishLinkTest, AnUnusualLocaleIsReadBack) {
    for (const std::string locale :
         {"日本語", "en US", "...", "-rf", "a.json", "\xF0\x9F\x98\x80"}) {
        SCOPED_TRACE(locale);
        publishProduct(root.path(), locale, makeProduct(u"demo", u"other"));
        EXPECT_EQ(readProduct(root.path(), u"demo", locale), makeProduct(u"demo", u"other"));
    }
    EXPECT_EQ(dump(docset::validate(root.path()).faults), "");
}

// What a reader would refuse is not published, and leaves no files behind.
TEST_F(PublishLinkTest, AProductThatNoReaderCouldReadIsRefused) {
    struct Row {
        const char* name;
        void (*spoil)(docset::ProductDocumentation& product);
        const char* problem;
    };
    const RefEntity entity(RefEntityType::Function, u"f", FunctionType::Function);
    const std::vector<Row> rows = {
        {"half a surrogate pair in a text",
         [](auto& product) { product.header.displayName = u"\xD800"; }, "a text is not Unicode"},
        {"half a surrogate pair in the short name",
         [](auto& product) { product.header.shortName = u"a\xDC00"; }, "a text is not Unicode"},
        {"half a surrogate pair in an item",
         [](auto& product) {
             product.pages[u"p"] = {makeItem(
                 {.href = u"p",
                  .entities = {RefEntity(RefEntityType::Class, u"C", FunctionType::NotCallable)},
                  .description = u"\xD800"})};
         },
         "a text is not Unicode"},
        {"an entity without a name",
         [](auto& product) {
             product.entities[u""] = {RefItemLookup(RefEntityType::Class, FunctionType::NotCallable,
                                                    u"ref/box.html", u"")};
         },
         "name is empty"},
        {"a record without an href",
         [](auto& product) {
             product.entities[u"a"] = {
                 RefItemLookup(RefEntityType::Class, FunctionType::NotCallable, u"", u"")};
         },
         "\"href\" is missing"},
        {"an entity without records", [](auto& product) { product.entities[u"a"] = {}; },
         "at least one"},
        {"a page without items", [](auto& product) { product.pages[u"a"] = {}; }, "at least one"},
        {"an item without entities",
         [](auto& product) { product.pages[u"a"] = {makeItem({.href = u"a"})}; }, "at least one"},
        {"a page without an href",
         [](auto& product) {
             product.pages[u""] = {makeItem(
                 {.entities = {RefEntity(RefEntityType::Class, u"C", FunctionType::NotCallable)}})};
         },
         "name is empty"},
        {"an item with the href of another page",
         [](auto& product) {
             product.pages[u"a"] = {makeItem(
                 {.href = u"b",
                  .entities = {RefEntity(RefEntityType::Class, u"C", FunctionType::NotCallable)}})};
         },
         "not what was published"},
        {"a source that is not UTF-8",
         [](auto& product) {
             product.source = docset::ProductSource{.folder = "/a\xFF", .importer = "sphinx"};
         },
         "\"/a\\xFF\" is not"},
    };
    const auto sound = contentsOf(root);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        docset::ProductDocumentation product = makeProduct(u"demo", u"second");
        row.spoil(product);
        EXPECT_THAT([&] { publishProduct(root.path(), "en_US", product); },
                    ThrowsMessage<PublishError>(HasSubstr(row.problem)));
        EXPECT_EQ(contentsOf(root), sound);
    }
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
