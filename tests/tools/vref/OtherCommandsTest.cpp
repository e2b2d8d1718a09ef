#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "RunningTool.hpp"
#include "docset/publish.hpp"
#include "support/LibraryTest.hpp"
#include "support/TempFolder.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using property::RefEntityType;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

TEST(ShowCommandTest, ShowsOneEntryByNamePageOrNameFromMemory) {
    const std::string page = runTool({"show", "Table"}).output;
    EXPECT_THAT(page, StartsWith("Table\n"));
    EXPECT_THAT(page, HasSubstr("\nSYNTAX\n"));
    EXPECT_EQ(runTool({"show", "veltra/ref/table-class.html"}).output, page);
    EXPECT_EQ(runTool({"show", "ref/table-class.html", "--product", "veltra"}).output, page);

    const std::string method = runTool({"show", "geo.raster.Tile.resample"}).output;
    EXPECT_THAT(method, StartsWith("geo.raster.Tile.resample\n"));
    EXPECT_EQ(runTool({"show", "Tile.resample"}).output, method);
    EXPECT_EQ(runTool({"show", "tile.RESAMPLE"}).output, method);
}

TEST(ShowCommandTest, ShowsAPropertyByNameAndByItsOwnPage) {
    const ToolRun byName = runTool({"show", "Table.rowCount"});
    EXPECT_EQ(byName.status, 0) << byName.messages;
    EXPECT_THAT(byName.output, StartsWith("Table.rowCount\n"));
    const std::string href(
        runTool({"show", "Table.rowCount", "--json"}).json().at(0).at("href").as_string());
    EXPECT_EQ(runTool({"show", href, "--product", "veltra"}).output, byName.output);
}

TEST(ShowCommandTest, ListsWhatBelongsToAClass) {
    EXPECT_THAT(runTool({"show", "geo.raster.Tile"}).output,
                HasSubstr("\nMETHODS\n    open\n        Open a tile that is stored in a file\n    "
                          "resample\n        Bring a tile to another cell size\n"));
}

TEST(ShowCommandTest, ListsWhatBelongsToAPackage) {
    EXPECT_THAT(runTool({"show", "geo.raster"}).output,
                HasSubstr("\nCLASSES\n    Tile\n        A rectangular piece of a raster\n"));
}

TEST(ShowCommandTest, TellsWhatLinksPointAt) {
    const std::string page = runTool({"show", "Table"}).output;
    EXPECT_THAT(page, HasSubstr("\nSEE ALSO\n    table  ref/table.html\n"
                                "        Make a table from named columns\n"));
    EXPECT_THAT(page, HasSubstr("    filter  ../qix/ref/filter.html\n        "));
}

TEST(ShowCommandTest, NamesTheOthersWhenSeveralBearTheName) {
    const ToolRun run = runTool({"show", "filter"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.output, HasSubstr("Brisk"));
    EXPECT_THAT(run.messages, HasSubstr("2 more like this"));
    EXPECT_THAT(run.messages, HasSubstr("lumora"));
}

// If the order were that of the hrefs, the tool would come first.
TEST(ShowCommandTest, ShowsWhatFindListsFirst) {
    const TempFolder folder;
    docset::publishProduct(folder.path(), "en_US",
                           ProductBuilder(u"p")
                               .entity(u"dict", RefEntityType::Tool, u"a.html", u"Mends a map")
                               .entity(u"dict", RefEntityType::Class, u"b.html", u"A map")
                               .build());
    const std::string root = folder.path().string();
    EXPECT_THAT(runTool({"find", "dict", "--doc-root", root}).output,
                StartsWith("dict  class  p  A map\n"));
    EXPECT_THAT(runTool({"show", "dict", "--doc-root", root}).output,
                StartsWith("dict\n    A map\n"));
}

TEST(ShowCommandTest, NothingFoundIsStatusOne) {
    const ToolRun run = runTool({"show", "no/such/page.html"});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.output, IsEmpty());
    EXPECT_THAT(run.messages, HasSubstr("no/such/page.html"));
}

TEST(ProductsCommandTest, ListsVersionLocaleStateAndCounts) {
    const ToolRun run = runTool({"products", "--json", "--language", "ja_JP"});
    EXPECT_EQ(run.status, 0);
    const auto products = run.json();
    ASSERT_EQ(products.size(), 11u);
    EXPECT_EQ(products.at(0).at("product").as_string(), "veltra");
    EXPECT_EQ(products.at(0).at("locale").as_string(), "ja_JP");
    EXPECT_EQ(products.at(0).at("state").as_string(), "installed");
    EXPECT_GT(products.at(0).at("entities").as_int64(), products.at(0).at("pages").as_int64());
    for (const auto& product : products) {
        const bool isYarl = product.at("product").as_string() == "yarl";
        EXPECT_EQ(product.at("locale").as_string(), isYarl ? "en_US" : "ja_JP");
        const bool isSolvent = product.at("product").as_string() == "solvent";
        EXPECT_EQ(product.at("state").as_string(), isSolvent ? "not installed" : "installed");
    }
    EXPECT_THAT(runTool({"products"}).output, HasSubstr("PRODUCT"));
}

TEST(ProductsCommandTest, MarksAProductThatCannotBeRead) {
    const TempFolder folder;
    docset::publishProduct(
        folder.path(), "en_US",
        ProductBuilder(u"p").entity(u"f", RefEntityType::Function, u"f.html").build());
    folder.write("en_US/p-1.lookup.json", "[]");
    const ToolRun run = runTool({"products", "--json", "--doc-root", folder.path()});
    EXPECT_EQ(run.json().at(0).at("state").as_string(), "unreadable");
    EXPECT_THAT(run.messages, HasSubstr("p-1.lookup.json"));
}

TEST(ValidateCommandTest, SoundSetIsStatusZero) {
    const TempFolder folder;
    docset::publishProduct(
        folder.path(), "en_US",
        ProductBuilder(u"p").entity(u"f", RefEntityType::Function, u"f.html").build());
    const ToolRun run = runTool({"validate", folder.path()});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "sound: 1 product, 3 files, 1 entity, 1 item\n");
}

TEST(ValidateCommandTest, FaultsAreNamedWithFilePositionAndField) {
    const TempFolder folder;
    docset::publishProduct(
        folder.path(), "en_US",
        ProductBuilder(u"p").entity(u"f", RefEntityType::Function, u"f.html").build());
    std::string lookup = folder.read("en_US/p-1.lookup.json");
    lookup.replace(lookup.find("\"f.html\""), 8, "12345678");
    folder.write("en_US/p-1.lookup.json", lookup);
    const ToolRun run = runTool({"validate", folder.path()});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.output, HasSubstr("p-1.lookup.json:"));
    EXPECT_THAT(run.output, HasSubstr("entities.f[0].href: A text was expected here."));
}

TEST(ValidateCommandTest, CountsOneAsOne) {
    const TempFolder folder;
    docset::publishProduct(
        folder.path(), "en_US",
        ProductBuilder(u"p").entity(u"f", RefEntityType::Function, u"f.html").build());
    folder.write("en_US/p-1.lookup.json", "{");
    EXPECT_THAT(runTool({"validate", folder.path()}).output, HasSubstr("\nfaulty: 1 fault; "));
}

TEST(ShowCommandTest, TellsAFaultOnce) {
    const TempFolder folder;
    docset::publishProduct(
        folder.path(), "en_US",
        ProductBuilder(u"p").entity(u"f", RefEntityType::Function, u"f.html").build());
    folder.write("en_US/p-1.reference.json", "{");
    for (const char* command : {"show", "find"}) {
        const ToolRun run = runTool({command, "f", "--doc-root", folder.path()});
        EXPECT_EQ(run.status, 2);
        const auto first = run.messages.find("p-1.reference.json");
        EXPECT_NE(first, std::string::npos);
        EXPECT_EQ(run.messages.find("p-1.reference.json", first + 1), std::string::npos)
            << run.messages;
    }
}

TEST(ValidateCommandTest, MissingFolderIsStatusTwo) {
    const ToolRun run = runTool({"validate", "/no/such/folder"});
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.messages, HasSubstr("documentation-set.json"));
}

TEST(PipeTest, OutputToAPipeHasNoColour) {
    EXPECT_THAT(runTool({"show", "Table"}).output, Not(HasSubstr("\033")));
    EXPECT_THAT(runTool({"find", "filter"}).output, Not(HasSubstr("\033")));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
