#include <stdexcept>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "docset/Manifest.hpp"
#include "host/docset/Sets.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using docset::Fault;
using docset::Manifest;
using docset::ManifestProduct;
using docset::readManifest;
using testing::AllOf;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using testing::SizeIs;

const std::string secondProduct = R"(,
    {
      "shortName": "other", "installed": false, "files": {"ja_JP": {"lookup": "ja_JP/o.json"}}
    }
  ]
}
)";

// The sound manifest with a second product that is known but not installed.
std::string withSecondProduct() {
    const std::string text = soundSet().manifest;
    return text.substr(0, text.find("\n  ]\n}")) + secondProduct;
}

TEST(ManifestTest, IsReadWhole) {
    const TempFolder root;
    root.write(manifestPath, withSecondProduct());
    FaultList faults;
    const auto manifest = readManifest(root.path(), faults.handler());
    EXPECT_EQ(dump(faults.all()), "");
    const Manifest expected{
        .title = "Demo documentation",
        .locales = {"en_US", "ja_JP"},
        .products = {{.shortName = u"demo",
                      .installed = true,
                      .files = {{"en_US",
                                 {.lookup = lookupPath,
                                  .reference = referencePath,
                                  .source = docset::ProductSource{.folder = "/srv/demo",
                                                                  .importer = "sphinx",
                                                                  .importerVersion = "1"}}}}},
                     {.shortName = u"other",
                      .installed = false,
                      .files = {{"ja_JP", {.lookup = "ja_JP/o.json", .reference = ""}}}}}};
    ASSERT_TRUE(manifest);
    EXPECT_EQ(*manifest, expected);
}

TEST(ManifestTest, AProductIsReadInTheWantedLocaleElseInTheFirstThatItHas) {
    const std::vector<std::string> locales = {"en_US", "ja_JP", "de_DE"};
    const ManifestProduct both{.files = {{"de_DE", {}}, {"ja_JP", {}}}};
    EXPECT_EQ(both.localeFor("de_DE", locales), "de_DE");
    EXPECT_EQ(both.localeFor("ja_JP", locales), "ja_JP");
    EXPECT_EQ(both.localeFor("en_US", locales), "ja_JP");
    EXPECT_EQ(both.localeFor("fr_FR", locales), "ja_JP");
    EXPECT_EQ(both.localeFor("", locales), "ja_JP");
    EXPECT_EQ(ManifestProduct().localeFor("en_US", locales), std::nullopt);
}

// Changes of a sound manifest; the mark says where the fault is.
struct Row {
    const char* name;
    const char* from;
    const char* to;
    const char* field;
    const char* problem;
};

const std::vector<Row> unusable = {
    {"unknown member", "\"title\": ", "\"colour\": ^1, \"title\": ", "colour",
     "no such member; known here are: format, formatVersion, title, locales, products"},
    {"no locales", "\"locales\": [\"en_US\", \"ja_JP\"]", "\"locales\": ^[]", "locales",
     "at least one locale"},
    {"text as locales", "\"locales\": [\"en_US\", \"ja_JP\"]", "\"locales\": ^\"en_US\"", "locales",
     "list was expected"},
};

TEST(ManifestTest, GivesNothingWhenTheFileItselfIsUnusable) {
    for (const auto& row : unusable) {
        SCOPED_TRACE(row.name);
        const TempFolder root;
        const MarkedText marked = takeMark(replaced(withSecondProduct(), row.from, row.to));
        root.write(manifestPath, marked.text);
        FaultList faults;
        EXPECT_EQ(readManifest(root.path(), faults.handler()), std::nullopt);
        EXPECT_THAT(
            faults.all(),
            testing::Contains(AllOf(
                Field(&Fault::file, (root.path() / manifestPath).string()),
                Field(&Fault::line, marked.line), Field(&Fault::column, marked.column),
                Field(&Fault::field, row.field), Field(&Fault::problem, HasSubstr(row.problem)))));
    }
}

const std::vector<Row> faultyProducts = {
    {"empty short name", "\"shortName\": \"demo\"", "\"shortName\": ^\"\"", "products[0].shortName",
     "empty"},
    {"no short name", "{\n      \"shortName\": \"demo\",", "^{", "products[0]",
     "\"shortName\" is missing"},
    {"text as installed", "\"installed\": true", "\"installed\": ^\"true\"",
     "products[0].installed", "true or false"},
    {"no files",
     "\"files\": {\n        \"en_US\": {\"lookup\": \"en_US/demo.lookup.json\", "
     "\"reference\": \"en_US/demo.reference.json\",\n                  \"source\": {\"folder\": "
     "\"/srv/demo\", \"importer\": \"sphinx\", \"importerVersion\": \"1\"}}\n      }",
     "\"files\": ^{}", "products[0].files", "No locale is named"},
    {"locale that the set does not list", "\"en_US\": {",
     "\"de_DE\": ^{\"lookup\": \"a\", "
     "\"reference\": \"b\"}, \"en_US\": {",
     "products[0].files.de_DE", "not among the set's \"locales\""},
    {"no lookup file", "\"en_US\": {\"lookup\": \"en_US/demo.lookup.json\", ", "\"en_US\": ^{",
     "products[0].files.en_US", "\"lookup\" is missing"},
    {"no reference file of an installed product",
     "\"en_US\": {\"lookup\": \"en_US/demo.lookup.json\", "
     "\"reference\": \"en_US/demo.reference.json\"",
     "\"en_US\": ^{\"lookup\": \"a\"", "products[0].files.en_US", "\"reference\" is missing"},
    {"unknown member of a product", "\"installed\": true", "\"installed\": true, \"on\": ^1",
     "products[0].on", "known here are: shortName, installed, files"},
    {"unknown member of files", "{\"lookup\": \"en_US/demo.lookup.json\"",
     "{\"look\": ^\"a\", \"lookup\": \"en_US/demo.lookup.json\"", "products[0].files.en_US.look",
     "known here are: lookup, reference, source"},
    {"a source without a folder", "{\"folder\": \"/srv/demo\", ", "^{",
     "products[0].files.en_US.source", "\"folder\" is missing"},
    {"a source in a relative folder", "\"/srv/demo\"", "^\"srv/demo\"",
     "products[0].files.en_US.source.folder", "absolute path"},
    {"a source whose folder has a zero byte", "\"/srv/demo\"", "^\"/srv\\u0000demo\"",
     "products[0].files.en_US.source.folder", "absolute path"},
    {"a source without an importer", "\"sphinx\"", "^\"\"",
     "products[0].files.en_US.source.importer", "empty"},
};

TEST(ManifestTest, LeavesOutAFaultyProductAndKeepsTheOthers) {
    for (const auto& row : faultyProducts) {
        SCOPED_TRACE(row.name);
        const TempFolder root;
        const MarkedText marked = takeMark(replaced(withSecondProduct(), row.from, row.to));
        root.write(manifestPath, marked.text);
        FaultList faults;
        const auto manifest = readManifest(root.path(), faults.handler());
        EXPECT_THAT(
            faults.all(),
            testing::Contains(AllOf(
                Field(&Fault::file, (root.path() / manifestPath).string()),
                Field(&Fault::line, marked.line), Field(&Fault::column, marked.column),
                Field(&Fault::field, row.field), Field(&Fault::problem, HasSubstr(row.problem)))));
        ASSERT_TRUE(manifest);
        EXPECT_THAT(manifest->products, ElementsAre(Field(&ManifestProduct::shortName, u"other")));
    }
}

TEST(ManifestTest, RefusesAShortNameThatOccursTwice) {
    const TempFolder root;
    const MarkedText marked =
        takeMark(replaced(replaced(withSecondProduct(), "{\n      \"shortName\": \"other\"",
                                   "^{\n      \"shortName\": \"demo\""),
                          "Demo documentation", "Twice"));
    root.write(manifestPath, marked.text);
    FaultList faults;
    const auto manifest = readManifest(root.path(), faults.handler());
    EXPECT_THAT(
        faults.all(),
        ElementsAre(AllOf(Field(&Fault::line, marked.line), Field(&Fault::column, marked.column),
                          Field(&Fault::field, "products[1]"),
                          Field(&Fault::problem, HasSubstr("\"demo\" occurs twice")))));
    ASSERT_TRUE(manifest);
    ASSERT_THAT(manifest->products, SizeIs(1));
    EXPECT_TRUE(manifest->products.front().installed);
}

TEST(ManifestTest, RefusesALocaleThatIsNoFolderName) {
    for (const char* locale :
         {"\"\"", "\"..\"", "\".\"", "\"/en\"", "\"en/US\"", "7", "\"en_US\""}) {
        SCOPED_TRACE(locale);
        const TempFolder root;
        const MarkedText marked =
            takeMark(replaced(soundSet().manifest, "\"ja_JP\"", placeMark + std::string(locale)));
        root.write(manifestPath, marked.text);
        FaultList faults;
        const auto manifest = readManifest(root.path(), faults.handler());
        EXPECT_THAT(faults.all(), ElementsAre(AllOf(Field(&Fault::line, marked.line),
                                                    Field(&Fault::column, marked.column),
                                                    Field(&Fault::field, "locales[1]"))));
        ASSERT_TRUE(manifest);
        EXPECT_THAT(manifest->locales, ElementsAre("en_US"));
        EXPECT_THAT(manifest->products, SizeIs(1));
    }
}

TEST(ManifestTest, AHandlerThatThrowsEndsTheReading) {
    const TempFolder root;
    root.write(manifestPath,
               replaced(soundSet().manifest, "\"installed\": true", "\"installed\": 1"));
    int calls = 0;
    const auto raise = [&](const Fault& fault) {
        ++calls;
        throw std::runtime_error(fault.toString());
    };
    EXPECT_THAT([&] { static_cast<void>(readManifest(root.path(), raise)); },
                testing::ThrowsMessage<std::runtime_error>(HasSubstr("products[0].installed")));
    EXPECT_EQ(calls, 1);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
