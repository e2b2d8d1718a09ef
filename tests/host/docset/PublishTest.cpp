#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <map>
#include <string>
#include <sys/file.h>
#include <unistd.h>
#include <vector>

#include <gmock/gmock.h>

#include "docset/Manifest.hpp"
#include "docset/publish.hpp"
#include "docset/validate.hpp"
#include "fl/i18n/utf.hpp"
#include "host/docset/Sets.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

namespace fs = std::filesystem;
using docset::PublishError;
using docset::publishProduct;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::ThrowsMessage;

// The content of every file below `root`, by its relative path.
std::map<std::string, std::string> contentsOf(const TempFolder& root) {
    std::map<std::string, std::string> contents;
    for (const auto& entry : fs::recursive_directory_iterator(root.path())) {
        const std::string path = entry.path().lexically_relative(root.path()).string();
        contents[path] = entry.is_regular_file() ? root.read(path) : "";
    }
    return contents;
}

docset::ProductFiles filesOf(const TempFolder& root, const std::u16string& shortName) {
    const auto manifest = docset::readManifest(root.path(), [](const auto&) {});
    const auto found =
        std::ranges::find(manifest->products, shortName, &docset::ManifestProduct::shortName);
    return found->files.at("en_US");
}

TEST(PublishTest, MakesANewSetInAFolderThatIsMissingOrEmpty) {
    const TempFolder folder;
    fs::create_directory(folder.path() / "empty");
    for (const char* name : {"empty", "missing", "deep/er/missing"}) {
        SCOPED_TRACE(name);
        const fs::path root = folder.path() / name;
        publishProduct(root, "en_US", makeProduct(u"demo"));
        EXPECT_EQ(dump(docset::validate(root).faults), "");
        EXPECT_EQ(readProduct(root, u"demo"), makeProduct(u"demo"));
    }
}

TEST(PublishTest, AddsAProductBesideOthers) {
    const TempFolder root;
    writeSet(root, soundSet());
    const auto before = contentsOf(root);
    const auto demo = readProduct(root.path(), u"demo");
    publishProduct(root.path(), "en_US", makeProduct(u"second"));
    EXPECT_EQ(dump(docset::validate(root.path()).faults), "");
    EXPECT_EQ(readProduct(root.path(), u"demo"), demo);
    EXPECT_EQ(readProduct(root.path(), u"second"), makeProduct(u"second"));
    EXPECT_EQ(root.read(lookupPath), before.at(lookupPath));
    EXPECT_EQ(root.read(referencePath), before.at(referencePath));
    const auto manifest = docset::readManifest(root.path(), [](const auto&) {});
    EXPECT_EQ(manifest->title, "Demo documentation");
    EXPECT_THAT(manifest->locales, ElementsAre("en_US", "ja_JP"));
}

TEST(PublishTest, ReplacesAProductInOneLocaleAlone) {
    const TempFolder root;
    publishProduct(root.path(), "en_US", makeProduct(u"demo", u"first"));
    publishProduct(root.path(), "ja_JP", makeProduct(u"demo", u"最初"));
    publishProduct(root.path(), "en_US", makeProduct(u"demo", u"second", 5));
    EXPECT_EQ(dump(docset::validate(root.path()).faults), "");
    EXPECT_EQ(readProduct(root.path(), u"demo"), makeProduct(u"demo", u"second", 5));
    EXPECT_EQ(readProduct(root.path(), u"demo", "ja_JP"), makeProduct(u"demo", u"最初"));
    const auto manifest = docset::readManifest(root.path(), [](const auto&) {});
    EXPECT_THAT(manifest->locales, ElementsAre("en_US", "ja_JP"));
    EXPECT_EQ(manifest->products.size(), 1U);
}

TEST(PublishTest, RemembersWhereAProductComesFromInEachLocale) {
    const TempFolder root;
    docset::ProductDocumentation english = makeProduct(u"demo");
    english.source = {.folder = "/srv/docs/en", .importer = "sphinx", .importerVersion = "7"};
    docset::ProductDocumentation japanese = makeProduct(u"demo", u"最初");
    japanese.source = {.folder = "/srv/文書", .importer = "other"};
    publishProduct(root.path(), "en_US", english);
    publishProduct(root.path(), "ja_JP", japanese);
    EXPECT_EQ(readProduct(root.path(), u"demo"), english);
    EXPECT_EQ(readProduct(root.path(), u"demo", "ja_JP"), japanese);

    publishProduct(root.path(), "en_US", makeProduct(u"demo", u"by hand"));
    publishProduct(root.path(), "en_US", makeProduct(u"neighbour"));
    EXPECT_EQ(readProduct(root.path(), u"demo"), makeProduct(u"demo", u"by hand"));
    EXPECT_EQ(readProduct(root.path(), u"demo", "ja_JP"), japanese);
    EXPECT_EQ(dump(docset::validate(root.path()).faults), "");
}

TEST(PublishTest, RefusesASourceThatNoReaderWouldTake) {
    const TempFolder root;
    for (const docset::ProductSource& source : std::vector<docset::ProductSource>{
             {.folder = "", .importer = "sphinx"},
             {.folder = "docs", .importer = "sphinx"},
             {.folder = std::string("/a\0b", 4), .importer = "sphinx"},
             {.folder = "/docs", .importer = ""}}) {
        SCOPED_TRACE(source.folder);
        docset::ProductDocumentation product = makeProduct(u"demo");
        product.source = source;
        EXPECT_THAT([&] { publishProduct(root.path(), "en_US", product); },
                    ThrowsMessage<PublishError>(HasSubstr("absolute folder")));
    }
    EXPECT_TRUE(fs::is_empty(root.path()));
}

TEST(PublishTest, AProductThatWasNotInstalledIsInstalled) {
    const TempFolder root;
    SetTexts texts = soundSet();
    texts.manifest = replaced(texts.manifest, "\"installed\": true", "\"installed\": false");
    texts.manifest = replaced(texts.manifest, ", \"reference\": \"en_US/demo.reference.json\"", "");
    texts.manifest = replaced(texts.manifest, "\"en_US\": {",
                              "\"ja_JP\": {\"lookup\": \"en_US/demo.lookup.json\"}, \"en_US\": {");
    writeSet(root, texts);
    ASSERT_EQ(dump(docset::validate(root.path()).faults), "");
    publishProduct(root.path(), "en_US", makeProduct(u"demo"));
    EXPECT_EQ(dump(docset::validate(root.path()).faults), "");
    EXPECT_EQ(readProduct(root.path(), u"demo"), makeProduct(u"demo"));
    const auto manifest = docset::readManifest(root.path(), [](const auto&) {});
    ASSERT_EQ(manifest->products.size(), 1U);
    EXPECT_TRUE(manifest->products.front().installed);
}

TEST(PublishTest, KeepsThePreviousEditionsFilesAndRemovesOlderOnes) {
    const TempFolder root;
    std::vector<docset::ProductFiles> editions;
    for (const char16_t* edition : {u"1", u"2", u"3", u"4", u"5"}) {
        publishProduct(root.path(), "en_US", makeProduct(u"demo", edition));
        editions.push_back(filesOf(root, u"demo"));
    }
    std::vector<std::string> left;
    for (const auto& entry : fs::directory_iterator(root.path() / "en_US"))
        left.push_back("en_US/" + entry.path().filename().string());
    EXPECT_THAT(left, testing::UnorderedElementsAre(
                          editions[3].lookup, editions[3].reference, editions[4].lookup,
                          editions[4].reference, "en_US/demo-4.lookup.image",
                          "en_US/demo-4.reference.image", "en_US/demo-5.lookup.image",
                          "en_US/demo-5.reference.image"));
    EXPECT_THAT(root.read(editions[3].reference), HasSubstr("\"purpose\": \"4\""));
}

// A reader with an old manifest finds its own edition or nothing, never a later one.
TEST(PublishTest, NeverGivesAnEditionTheFileNameOfAnEarlierOne) {
    const TempFolder root;
    std::vector<std::string> names;
    for (int edition = 0; edition < 6; ++edition) {
        publishProduct(root.path(), "en_US", makeProduct(u"demo"));
        names.push_back(filesOf(root, u"demo").reference);
    }
    std::ranges::sort(names);
    EXPECT_EQ(std::ranges::adjacent_find(names), names.end()) << testing::PrintToString(names);
}

TEST(PublishTest, LeavesTheEditionsOfOtherProductsAlone) {
    // Pairs of names that are easily written as the same file name.
    const std::vector<std::pair<std::u16string, std::u16string>> pairs = {
        {u"demo", u"demo-1"}, {u"a b", u"a_b"},    {u"信号", u"統計"},
        {u"a/b", u"a.b"},     {u"demo", u"demo-"}, {u"a=20b", u"a b"}};
    for (const auto& [one, other] : pairs) {
        SCOPED_TRACE(fl::i18n::toUtf8(one) + " and " + fl::i18n::toUtf8(other));
        const TempFolder root;
        publishProduct(root.path(), "en_US", makeProduct(one, u"old"));
        const std::string previous = filesOf(root, one).reference;
        const std::string content = root.read(previous);
        publishProduct(root.path(), "en_US", makeProduct(one, u"new"));
        for (const char16_t* edition : {u"1", u"2", u"3"})
            publishProduct(root.path(), "en_US", makeProduct(other, edition));
        ASSERT_TRUE(fs::exists(root.path() / previous)) << previous;
        EXPECT_EQ(root.read(previous), content);
        EXPECT_EQ(readProduct(root.path(), one), makeProduct(one, u"new"));
        EXPECT_EQ(readProduct(root.path(), other), makeProduct(other, u"3"));
    }
}

TEST(PublishTest, ClearsUpAfterAProcessThatWasStopped) {
    const TempFolder root;
    publishProduct(root.path(), "en_US", makeProduct(u"demo"));
    root.write("en_US/demo-7.lookup.json", "{\"form");
    root.write("documentation-set.json.new", "{\"form");
    publishProduct(root.path(), "en_US", makeProduct(u"demo", u"second"));
    publishProduct(root.path(), "en_US", makeProduct(u"demo", u"third"));
    EXPECT_FALSE(fs::exists(root.path() / "en_US/demo-7.lookup.json"));
    EXPECT_FALSE(fs::exists(root.path() / "documentation-set.json.new"));
    EXPECT_EQ(readProduct(root.path(), u"demo"), makeProduct(u"demo", u"third"));
}

TEST(PublishTest, GoesOnWhereTheVeryFirstPublicationWasStopped) {
    for (const std::string locale : {"en_US", "ja_JP"}) {
        SCOPED_TRACE(locale);
        const TempFolder root;
        publishProduct(root.path(), "en_US", makeProduct(u"demo"));
        fs::rename(root.path() / manifestPath, root.path() / "documentation-set.json.new");
        publishProduct(root.path(), locale, makeProduct(u"demo", u"second"));
        EXPECT_EQ(dump(docset::validate(root.path()).faults), "");
        EXPECT_EQ(readProduct(root.path(), u"demo", locale), makeProduct(u"demo", u"second"));
    }
}

TEST(PublishTest, RefusesAFolderThatHoldsSomethingElseAndLeavesItAlone) {
    const TempFolder root;
    root.write("letters/to-my-aunt.txt", "Dear aunt");
    const auto before = contentsOf(root);
    EXPECT_THAT([&] { publishProduct(root.path(), "en_US", makeProduct(u"demo")); },
                ThrowsMessage<PublishError>(
                    AllOf(HasSubstr(root.path().string()), HasSubstr("is not empty"))));
    EXPECT_EQ(contentsOf(root), before);
}

TEST(PublishTest, RefusesAFaultyManifestAndLeavesEverythingAsItWas) {
    struct Row {
        const char* from;
        const char* to;
        const char* problem;
    };
    const std::vector<Row> rows = {
        {"\"installed\": true", "\"installed\": 1", "9:20: products[0].installed"},
        {"\"formatVersion\": 1", "\"formatVersion\": 2", "3:20: formatVersion: Version 2"},
        {"\"title\": ", "\"colour\": 1, \"title\": ", "4:13: colour"},
        {"  ]\n}", "", "documentation-set.json:"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.problem);
        const TempFolder root;
        SetTexts texts = soundSet();
        texts.manifest = replaced(texts.manifest, row.from, row.to);
        writeSet(root, texts);
        auto before = contentsOf(root);
        EXPECT_THAT([&] { publishProduct(root.path(), "en_US", makeProduct(u"new")); },
                    ThrowsMessage<PublishError>(HasSubstr(row.problem)));
        auto after = contentsOf(root);
        after.erase(".documentation-set.lock");
        EXPECT_EQ(after, before);
    }
}

TEST(PublishTest, RefusesARootThatIsAFile) {
    const TempFolder folder;
    folder.write("file", "text");
    EXPECT_THAT([&] { publishProduct(folder.path() / "file", "en_US", makeProduct(u"demo")); },
                ThrowsMessage<PublishError>(HasSubstr((folder.path() / "file").string())));
    EXPECT_EQ(folder.read("file"), "text");
}

TEST(PublishTest, LeavesTheSetAsItWasWhenAFileCannotBeWritten) {
    const TempFolder root;
    publishProduct(root.path(), "en_US", makeProduct(u"demo"));
    const std::string manifest = root.read(manifestPath);
    fs::create_directory(root.path() / "documentation-set.json.new");  // in the manifest's way
    EXPECT_THAT([&] { publishProduct(root.path(), "en_US", makeProduct(u"demo", u"second")); },
                ThrowsMessage<PublishError>(HasSubstr("documentation-set.json.new")));
    EXPECT_EQ(root.read(manifestPath), manifest);
    EXPECT_EQ(readProduct(root.path(), u"demo"), makeProduct(u"demo"));

    root.write("ja_JP", "a file in the folder's way");
    EXPECT_THAT([&] { publishProduct(root.path(), "ja_JP", makeProduct(u"demo", u"second")); },
                ThrowsMessage<PublishError>(HasSubstr("ja_JP")));
    EXPECT_EQ(root.read(manifestPath), manifest);
}

TEST(PublishTest, SaysOnceThatItWaitsForAnotherProcess) {
    const TempFolder root;
    publishProduct(root.path(), "en_US", makeProduct(u"demo"));
    const int lock = ::open((root.path() / ".documentation-set.lock").c_str(), O_RDWR);
    ASSERT_GE(lock, 0);
    ASSERT_EQ(::flock(lock, LOCK_EX), 0);
    int waited = 0;
    publishProduct(root.path(), "en_US", makeProduct(u"demo", u"second"), [&] {
        ++waited;
        EXPECT_EQ(editionOf(*readProduct(root.path(), u"demo")), "first");
        ::flock(lock, LOCK_UN);
    });
    ::close(lock);
    EXPECT_EQ(waited, 1);
    EXPECT_EQ(editionOf(*readProduct(root.path(), u"demo")), "second");
    publishProduct(root.path(), "en_US", makeProduct(u"demo", u"third"), [&] { ++waited; });
    EXPECT_EQ(waited, 1) << "nobody was in the way";
}

TEST(PublishTest, KeepsOddShortNamesWithinTheRootAndFindsThemAgain) {
    const std::vector<std::u16string> names = {
        u"../outside", u"..",   u".",     u"/etc/passwd", u"a/b/c",         u"two words",
        u"信号処理",   u"a\nb", u"C:\\x", u"-rf",         u"%s%n",          u"\"quoted\"",
        u"a.b-c_d",    u"CON",  u"😀",     u"*",           u"x.lookup.json", u"documentation-set",
        u"a\\b",       u"~",    u" ",     u"café",        u"cafe\u0301"};
    const TempFolder outer;
    const fs::path root = outer.path() / "root";
    for (const auto& name : names) {
        SCOPED_TRACE(fl::i18n::toUtf8(name));
        publishProduct(root, "en_US", makeProduct(name));
        publishProduct(root, "en_US", makeProduct(name, u"second"));
    }
    EXPECT_EQ(dump(docset::validate(root).faults), "");
    for (const auto& name : names) {
        SCOPED_TRACE(fl::i18n::toUtf8(name));
        EXPECT_EQ(readProduct(root, name), makeProduct(name, u"second"));
    }
    EXPECT_EQ(std::distance(fs::directory_iterator(outer.path()), fs::directory_iterator()), 1);
    for (const auto& entry : fs::directory_iterator(root / "en_US"))
        EXPECT_TRUE(entry.is_regular_file()) << entry.path();
}

TEST(PublishTest, RefusesAProductWithoutAShortName) {
    const TempFolder root;
    EXPECT_THAT([&] { publishProduct(root.path(), "en_US", makeProduct(u"")); },
                ThrowsMessage<PublishError>(HasSubstr("no short name")));
    EXPECT_TRUE(fs::is_empty(root.path()));
}

TEST(PublishTest, RefusesALocaleThatIsNoFolderName) {
    const TempFolder root;
    for (const std::string locale : {"", ".", "..", "/", "en/US", "../en_US", "/en_US", "en_US/"}) {
        SCOPED_TRACE("\"" + locale + "\"");
        EXPECT_THAT([&] { publishProduct(root.path(), locale, makeProduct(u"demo")); },
                    ThrowsMessage<PublishError>(HasSubstr("\"" + locale + "\" is no locale")));
    }
    EXPECT_TRUE(fs::is_empty(root.path()));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
