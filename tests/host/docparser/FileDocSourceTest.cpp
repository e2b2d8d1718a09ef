#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "docparser/DocParserException.hpp"
#include "host/docparser/Roots.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

namespace fs = std::filesystem;
using docparser::DocParserException;
using testing::AllOf;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Key;
using testing::SizeIs;
using testing::StartsWith;
using testing::ThrowsMessage;

// Two locales; "both" has them, "english" and "japanese" one each.
class FileDocSourceTest : public testing::Test {
  protected:
    FileDocSourceTest() {
        publish(root, makeProduct(u"both", u"en"), "en_US");
        publish(root, makeProduct(u"english", u"en"), "en_US");
        publish(root, makeProduct(u"both", u"ja"), "ja_JP");
        publish(root, makeProduct(u"japanese", u"ja"), "ja_JP");
    }

    [[nodiscard]] docparser::FileDocSource source(const std::string& language = "") const {
        return sourceOf({.docRoot = root.path(), .language = language});
    }

    // Replaces a part of a file of the root.
    void change(const std::string& path, std::string_view from, std::string_view to) const {
        root.write(path, replaced(root.read(path), from, to));
    }

    TempFolder root;
};

TEST_F(FileDocSourceTest, ReadsEachProductInTheWantedLocaleElseInTheFirstThatItHas) {
    struct Row {
        const char* language;
        const char16_t* both;
    };
    for (const auto& row : std::vector<Row>{
             {"ja_JP", u"ja"}, {"en_US", u"en"}, {"", u"en"}, {"de_DE", u"en"}, {"ja", u"en"}}) {
        SCOPED_TRACE(row.language);
        auto reader = source(row.language);
        EXPECT_EQ(lookupEdition(reader, u"both"), row.both);
        EXPECT_EQ(pageEdition(reader, u"both"), row.both);
        EXPECT_EQ(lookupEdition(reader, u"english"), u"en");
        EXPECT_EQ(pageEdition(reader, u"english"), u"en");
        EXPECT_EQ(lookupEdition(reader, u"japanese"), u"ja");
        EXPECT_EQ(pageEdition(reader, u"japanese"), u"ja");
    }
}

TEST_F(FileDocSourceTest, AsksForTheLocationAtEachCall) {
    docparser::DocumentationLocation location{.docRoot = root.path()};
    docparser::FileDocSource reader([&location] { return location; });
    EXPECT_EQ(pageEdition(reader, u"both"), u"en");
    location.language = "ja_JP";
    EXPECT_EQ(pageEdition(reader, u"both"), u"ja");
    const TempFolder other;
    publish(other, makeProduct(u"both", u"other"));
    location.docRoot = other.path();
    EXPECT_EQ(pageEdition(reader, u"both"), u"other");
    EXPECT_FALSE(reader.isProductInstalled(u"english"));
}

TEST_F(FileDocSourceTest, AProductThatIsNotInstalledIsListedApart) {
    change(manifestPath, "\"shortName\": \"english\",\n      \"installed\": true",
           "\"shortName\": \"english\",\n      \"installed\": false");
    change(manifestPath, ",\n          \"reference\": \"en_US/english-1.reference.json\"", "");
    auto reader = source();
    const auto results = reader.getResourceLookupFiles();
    EXPECT_THAT(results.installed, ElementsAre(Key(u"both"), Key(u"japanese")));
    ASSERT_THAT(results.uninstalled, ElementsAre(Key(u"english")));
    EXPECT_EQ(results.uninstalled.at(u"english").getHeaderInfo().getReferenceFileName(), u"");
    EXPECT_FALSE(reader.isProductInstalled(u"english"));
    EXPECT_THROW(static_cast<void>(reader.getResourceFile(u"english")), DocParserException);
}

TEST_F(FileDocSourceTest, ABrokenLookupFileLeavesOutThatProductAloneAndIsLogged) {
    const LogCapture log("docparser=4");
    change("en_US/english-1.lookup.json", "\"format\"", "\"form\"");
    auto reader = source();
    EXPECT_THAT(reader.getResourceLookupFiles().installed,
                ElementsAre(Key(u"both"), Key(u"japanese")));
    const std::string file = (root.path() / "en_US/english-1.lookup.json").string();
    EXPECT_THAT(
        log.records(),
        ElementsAre(
            AllOf(Field(&CapturedRecord::channel, "docparser"), Field(&CapturedRecord::severity, 4),
                  Field(&CapturedRecord::text, StartsWith("left out: " + file + ":1:1: ")))));
}

TEST_F(FileDocSourceTest, ALookupFileOfAnotherProductIsLeftOutAndLogged) {
    const LogCapture log("docparser=4");
    change("en_US/english-1.lookup.json", "\"shortName\": \"english\"",
           "\"shortName\": \"french\"");
    auto reader = source();
    EXPECT_THAT(reader.getResourceLookupFiles().installed,
                ElementsAre(Key(u"both"), Key(u"japanese")));
    EXPECT_THAT(log.texts(), ElementsAre(AllOf(HasSubstr("english-1.lookup.json"),
                                               HasSubstr("product.shortName"))));
}

TEST_F(FileDocSourceTest, AFaultyEntryOfTheManifestLeavesOutThatProductAloneAndIsLogged) {
    const LogCapture log("docparser=4");
    change(manifestPath, "\"shortName\": \"english\",\n      \"installed\": true",
           "\"shortName\": \"english\",\n      \"installed\": 1");
    auto reader = source();
    EXPECT_THAT(reader.getResourceLookupFiles().installed,
                ElementsAre(Key(u"both"), Key(u"japanese")));
    EXPECT_THAT(log.texts(),
                ElementsAre(AllOf(HasSubstr(manifestPath), HasSubstr("products[1].installed"))));
}

TEST_F(FileDocSourceTest, AReferenceFileWithoutItsProductIsLogged) {
    const LogCapture log("docparser=4");
    root.write("en_US/english-1.reference.json", root.read("en_US/both-1.reference.json"));
    auto reader = source();
    const auto lookups = reader.getResourceLookupFiles();
    const auto& header = lookups.installed.at(u"english").getHeaderInfo();
    EXPECT_FALSE(reader.getResourceFile(header.getReferenceFileName()).contains(u"english"));
    EXPECT_THAT(log.texts(),
                ElementsAre(AllOf(HasSubstr("en_US/english-1.reference.json: products"),
                                  HasSubstr("\"english\" is missing; the manifest names"))));
}

TEST_F(FileDocSourceTest, OfManyFaultsOfAManifestTheFirstAreLoggedAndTheOthersCounted) {
    const LogCapture log("docparser=4");
    std::string entries;
    for (int number = 0; number < 30; ++number)
        entries += "7, ";
    change(manifestPath, "\"products\": [", "\"products\": [" + entries);
    auto reader = source();
    EXPECT_THAT(reader.getResourceLookupFiles().installed, SizeIs(3));
    ASSERT_THAT(log.texts(), SizeIs(21));
    EXPECT_THAT(log.texts()[19], HasSubstr("products[19]"));
    EXPECT_THAT(log.texts()[20], HasSubstr("10 more faults; \"vref validate\" lists them all."));
}

TEST_F(FileDocSourceTest, ABrokenManifestOfTheRootRaisesAndNamesThePlace) {
    change(manifestPath, "\"formatVersion\": 1", "\"formatVersion\": 9");
    const std::string file = (root.path() / manifestPath).string();
    const auto namesIt = ThrowsMessage<DocParserException>(
        AllOf(StartsWith(file + ":3:20: formatVersion: "), HasSubstr("Version 9")));
    auto reader = source();
    EXPECT_THAT([&] { static_cast<void>(reader.getResourceLookupFiles()); }, namesIt);
    EXPECT_THAT([&] { static_cast<void>(reader.getResourceFile(u"both")); }, namesIt);
    EXPECT_THAT([&] { static_cast<void>(reader.isProductInstalled(u"both")); }, namesIt);
    EXPECT_THAT([&] { static_cast<void>(reader.getSupportedDocLocales()); }, namesIt);
    EXPECT_THAT([&] { static_cast<void>(reader.getAllProducts(u"", {}, u"")); }, namesIt);
}

TEST_F(FileDocSourceTest, ARootWithoutAManifestRaises) {
    const TempFolder empty;
    auto reader = sourceOf({.docRoot = empty.path()});
    EXPECT_THAT([&] { static_cast<void>(reader.getResourceLookupFiles()); },
                ThrowsMessage<DocParserException>(HasSubstr("does not exist")));
}

TEST_F(FileDocSourceTest, ReadsAgainAfterTheManifestWasMended) {
    const std::string sound = root.read(manifestPath);
    root.write(manifestPath, "{");
    auto reader = source();
    EXPECT_THROW(static_cast<void>(reader.getResourceLookupFiles()), DocParserException);
    root.write(manifestPath, sound);
    EXPECT_EQ(reader.getResourceLookupFiles().installed.size(), 3U);
}

TEST_F(FileDocSourceTest, TheManifestIsReadAnewWithEachRequestForLookups) {
    auto reader = source();
    EXPECT_EQ(reader.getResourceLookupFiles().installed.size(), 3U);
    publish(root, makeProduct(u"late"));
    EXPECT_FALSE(reader.isProductInstalled(u"late"));
    EXPECT_EQ(reader.getResourceLookupFiles().installed.size(), 4U);
    EXPECT_TRUE(reader.isProductInstalled(u"late"));
}

TEST_F(FileDocSourceTest, NamesTheLocalesOfTheSetInItsOrder) {
    EXPECT_THAT(source().getSupportedDocLocales(), ElementsAre(u"en_US", u"ja_JP"));
}

TEST_F(FileDocSourceTest, ListsTheProductsOfAGivenRoot) {
    const TempFolder other;
    publish(other, makeProduct(u"elsewhere"));
    auto reader = source();
    const std::u16string otherRoot = other.path().u16string();
    const auto lists = reader.getAllProducts(otherRoot, {}, u"");
    EXPECT_THAT(lists.products, ElementsAre(docparser::ProductPathData(u"elsewhere", otherRoot)));
    EXPECT_TRUE(reader.isProductInstalled(u"both"));
    EXPECT_FALSE(reader.isProductInstalled(u"elsewhere"));
}

TEST_F(FileDocSourceTest, ListsTheProductsThatExistInOneOfTheLocales) {
    auto reader = source();
    const auto namesIn = [&](const std::vector<std::u16string>& locales) {
        std::vector<std::u16string> names;
        for (const auto& product :
             reader.getAllProducts(root.path().u16string(), locales, u"").products)
            names.push_back(product.getName());
        return names;
    };
    EXPECT_THAT(namesIn({}), ElementsAre(u"both", u"english", u"japanese"));
    EXPECT_THAT(namesIn({u"en_US", u"ja_JP"}), ElementsAre(u"both", u"english", u"japanese"));
    EXPECT_THAT(namesIn({u"en_US"}), ElementsAre(u"both", u"english"));
    EXPECT_THAT(namesIn({u"ja_JP", u"de_DE"}), ElementsAre(u"both", u"japanese"));
    EXPECT_THAT(namesIn({u"de_DE"}), IsEmpty());
}

TEST_F(FileDocSourceTest, ListsWhereAProductWasImportedFromInTheLocaleThatItIsReadIn) {
    change(manifestPath, "\"lookup\": \"ja_JP/both-1.lookup.json\"",
           "\"source\": {\"folder\": \"/srv/ja\", \"importer\": \"sphinx\"}, "
           "\"lookup\": \"ja_JP/both-1.lookup.json\"");
    auto japanese = source("ja_JP");
    const docset::ProductSource expected{.folder = "/srv/ja", .importer = "sphinx"};
    EXPECT_EQ(japanese.listProducts().front().source, expected);
    auto english = source("en_US");
    EXPECT_EQ(english.listProducts().front().source, std::nullopt);
}

TEST_F(FileDocSourceTest, ListsProductsWithTheLocaleThatTheyAreReadIn) {
    const LogCapture log("docparser=4");
    fs::remove(root.path() / "ja_JP/japanese-1.lookup.json");  // readable or not, it is listed
    auto reader = source("ja_JP");
    const auto listed = reader.listProducts();
    std::vector<std::pair<std::u16string, std::string>> locales;
    for (const auto& product : listed) {
        locales.emplace_back(product.shortName, product.locale);
        EXPECT_TRUE(product.installed);
        EXPECT_EQ(product.root, root.path());
    }
    EXPECT_THAT(locales, ElementsAre(std::pair(std::u16string(u"both"), std::string("ja_JP")),
                                     std::pair(std::u16string(u"english"), std::string("en_US")),
                                     std::pair(std::u16string(u"japanese"), std::string("ja_JP"))));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
