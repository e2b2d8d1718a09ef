#include <string>
#include <vector>

#include <boost/json/object.hpp>
#include <boost/json/value.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "RunningTool.hpp"
#include "docset/publish.hpp"
#include "support/LibraryTest.hpp"
#include "support/TempFolder.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using property::RefEntityType;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

// "product:name" of each element.
std::vector<std::string> namesIn(const ToolRun& run) {
    std::vector<std::string> names;
    for (const auto& element : run.json()) {
        const auto& entity = element.at("entities").as_array().at(0);
        names.push_back(std::string(element.at("product").as_string()) + ":" +
                        std::string(entity.at("name").as_string()));
    }
    return names;
}

TEST(FindCommandTest, PrintsTheOrderedRecordsOfTheShippedSet) {
    const ToolRun run = runTool({"find", "--exact", "filter"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.output, StartsWith("filter  function  brisk   "));
    EXPECT_THAT(run.output, HasSubstr("\nfilter  function  lumora  "));
    EXPECT_THAT(run.output, HasSubstr("\nfilter  function  qix     "));
    EXPECT_THAT(run.messages, IsEmpty());
}

TEST(FindCommandTest, JsonHasEveryMemberInAFixedOrder) {
    const ToolRun run = runTool({"find", "--exact", "filter", "--product", "qix", "--json"});
    ASSERT_EQ(run.status, 0);
    const auto elements = run.json();
    ASSERT_EQ(elements.size(), 1u);
    std::vector<std::string> members;
    for (const auto& member : elements.at(0).as_object())
        members.emplace_back(member.key());
    EXPECT_THAT(members,
                ElementsAre("product", "helpFolder", "href", "packageName", "purpose", "introduced",
                            "description", "deprecationStatus", "entities", "syntaxGroups",
                            "inputs", "inputGroups", "outputs", "classPropertyGroups", "seeAlso",
                            "examples", "parameters", "replacements"));
    EXPECT_EQ(elements.at(0).at("entities").at(0).at("type").as_string(), "function");
    EXPECT_EQ(elements.at(0).at("deprecationStatus").as_string(), "current");
}

TEST(FindCommandTest, OptionsNarrowAndWiden) {
    struct Case {
        std::vector<std::string> arguments;
        std::vector<std::string> expected;
    };
    const Case cases[] = {
        {{"table"}, {"veltra:table"}},
        {{"Table"}, {"veltra:Table"}},
        {{"TABLE", "-i"}, {"veltra:table", "veltra:Table"}},
        {{"TABLE", "--ignore-case", "--type", "class"}, {"veltra:Table"}},
        {{"TABLE", "-i", "--type", "1"}, {"veltra:Table"}},
        {{"filter", "--product", "brisk", "--product", "qix"}, {"brisk:filter", "qix:filter"}},
        {{"Tile.resample", "--ignore-package"}, {"tarvel:geo.raster.Tile.resample"}},
        {{"--all", "--type", "interface", "--product", "caldera"}, {"caldera:caldera.Objective"}},
    };
    for (const auto& c : cases) {
        std::vector<std::string> arguments = {"find", "--exact", "--json"};
        arguments.insert(arguments.end(), c.arguments.begin(), c.arguments.end());
        const ToolRun run = runTool(arguments);
        ASSERT_EQ(run.status, 0) << ::testing::PrintToString(c.arguments) << run.messages;
        EXPECT_EQ(namesIn(run), c.expected) << ::testing::PrintToString(c.arguments);
    }
}

TEST(FindCommandTest, SearchPicksWhatTheNameIsComparedWith) {
    const auto find = [](const std::string& search, const std::string& name) {
        return namesIn(runTool({"find", "--json", "--search", search, "--product", "veltra", name,
                                "--ignore-package"}));
    };
    EXPECT_THAT(find("entity", "Table"), ElementsAre("veltra:Table", "veltra:Table.Table"));
    EXPECT_THAT(find("class", "Table"),
                ::testing::IsSupersetOf({"veltra:Table", "veltra:Table.rowCount"}));
    EXPECT_THAT(find("purpose", "Columns of equal"), ElementsAre("veltra:Table"));
    EXPECT_THAT(find("text", "A scalar is repeated to the length"), ElementsAre("veltra:table"));
    EXPECT_THAT(find("page", "table-class.html"),
                ElementsAre("veltra:Table", "veltra:Table.sortBy", "veltra:Table.fromCsv",
                            "veltra:Table.Changed", "veltra:Table.Table"));
    EXPECT_EQ(runTool({"find", "--search", "bogus", "x"}).status, 2);
}

TEST(FindCommandTest, OrderIsAPersonsUntilKeysAreGiven) {
    const auto find = [](std::vector<std::string> order) {
        std::vector<std::string> arguments = {"find", "--json", "TABLE", "-i"};
        arguments.insert(arguments.end(), order.begin(), order.end());
        return namesIn(runTool(arguments));
    };
    EXPECT_THAT(find({}), ElementsAre("veltra:table", "veltra:Table"));
    EXPECT_THAT(find({"--order", "index"}), ElementsAre("veltra:Table", "veltra:table"));
    EXPECT_THAT(find({"--order", "type=class"}), ElementsAre("veltra:Table", "veltra:table"));
    EXPECT_THAT(find({"--order", "depth,type"}), ElementsAre("veltra:table", "veltra:Table"));
    EXPECT_THAT(find({"--order", "depth", "--order", "type=class,type"}),
                ElementsAre("veltra:Table", "veltra:table"));
    const ToolRun run = runTool({"find", "x", "--order", "depth,bogus"});
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.messages, HasSubstr("function-type, name=NAME"));
}

TEST(FindCommandTest, ExplainTellsTheKeyThatPutEachBeforeTheNext) {
    const ToolRun run = runTool({"find", "TABLE", "-i", "--explain"});
    EXPECT_THAT(run.output, HasSubstr("before the next by preferred, by type: function before "
                                      "class"));
    EXPECT_THAT(run.output, HasSubstr("the last"));
    const auto elements = runTool({"find", "--exact", "filter", "--explain", "--json"}).json();
    EXPECT_EQ(elements.at(0).at("note").as_string(), "tied with the next: as they were found");
}

TEST(FindCommandTest, PastedCallIsTakenForItsName) {
    const ToolRun run = runTool({"find", "--exact", "t := table(run: [1, 2], ", "--json"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(namesIn(run), ElementsAre("veltra:table"));
    EXPECT_THAT(run.messages, HasSubstr("for the name \"table\""));
}

TEST(FindCommandTest, NothingFoundTeachesTheNarrowestSearchThatFinds) {
    struct Case {
        std::string name;
        std::string step;
        std::string command;
    };
    const Case cases[] = {
        {"FILTER", "in any case there is: filter, filter, filter", "--ignore-case FILTER"},
        {"Tile.RESAMPLE", "without its package there is: geo.raster.Tile.resample",
         "--ignore-case --ignore-package Tile.RESAMPLE"},
        {"maps.resample", "without the package \"maps.\" there is: geo.raster.Tile.resample",
         "--ignore-case --ignore-package resample"},
        {"columns of equal", "as a part of a name or purpose there is: Table",
         "--search purpose --ignore-case 'columns of equal'"},
    };
    for (const auto& c : cases) {
        const ToolRun run = runTool({"find", "--exact", c.name});
        EXPECT_EQ(run.status, 1) << c.name;
        EXPECT_THAT(run.output, IsEmpty()) << c.name;
        EXPECT_THAT(run.messages, HasSubstr(c.step)) << c.name;
        EXPECT_THAT(run.messages, HasSubstr("vref find " + c.command)) << c.name;
    }
    EXPECT_THAT(runTool({"find", "--exact", "no.such.name"}).messages,
                ::testing::Not(HasSubstr("there is")));
    EXPECT_EQ(runTool({"find", "--exact", "FILTER", "--json"}).output, "[]\n");
}

TEST(FindCommandTest, LimitCutsAfterOrderingAndSaysHowManyMoreThereAre) {
    const ToolRun run = runTool({"find", "--exact", "filter", "--limit", "1", "--json"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(namesIn(run), ElementsAre("brisk:filter"));
    EXPECT_THAT(run.messages, HasSubstr("2 more of 3"));
}

TEST(FindCommandTest, LanguageIsChosenByItsNameOrItsLocale) {
    const ToolRun english = runTool({"find", "filter", "--product", "qix"});
    const ToolRun japanese = runTool({"find", "filter", "--product", "qix", "--language", "ja_JP"});
    EXPECT_EQ(japanese.status, 0);
    EXPECT_NE(japanese.output, english.output);
    EXPECT_EQ(runTool({"find", "filter", "--product", "qix", "--language", "ja"}).output,
              japanese.output);
    EXPECT_EQ(runTool({"find", "filter", "--product", "qix", "--language", "JA-jp"}).output,
              japanese.output);
}

TEST(FindCommandTest, NothingFoundIsStatusOneWithALineAndEmptyJson) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"find", "--exact", "no.such.name"}, {"find", "zzyzx.qqfoo"}}) {
        const ToolRun run = runTool(arguments);
        EXPECT_EQ(run.status, 1);
        EXPECT_THAT(run.output, IsEmpty());
        EXPECT_THAT(run.messages, HasSubstr("\"" + arguments.back() + "\""));
        auto asJson = arguments;
        asJson.emplace_back("--json");
        const ToolRun json = runTool(asJson);
        EXPECT_EQ(json.status, 1);
        EXPECT_EQ(json.output, "[]\n");
    }
}

TEST(FindCommandTest, WrongUseIsStatusTwoAndSaysWhatToDo) {
    struct Case {
        std::vector<std::string> arguments;
        std::string message;
    };
    const Case cases[] = {
        {{"find"}, "--all"},
        {{"find", "--exact", "x", "--all"}, "takes no name"},
        {{"find", "x", "--type", "bogus"}, "function, class, package"},
        {{"find", "x", "--product", "bogus"}, "installed are: veltra, brisk"},
        {{"find", "x", "--product", "solvent"}, "not installed"},
        {{"find", "x", "--language", "tlh"}, "en_US, ja_JP"},
        {{"find", "x", "--doc-root", "/no/such/folder"}, "--doc-root"},
        {{"find", "x", "--limit", "many"}, "--limit"},
        {{"find", "x", "--bogus"}, "--bogus"},
        {{"find", "\xff"}, "UTF-8"},
        {{"import"}, "import sphinx"},
        {{}, "vref help"},
    };
    for (const auto& c : cases) {
        const ToolRun run = runTool(c.arguments);
        EXPECT_EQ(run.status, 2) << ::testing::PrintToString(c.arguments);
        EXPECT_THAT(run.messages, HasSubstr(c.message)) << ::testing::PrintToString(c.arguments);
        EXPECT_THAT(run.output, IsEmpty()) << ::testing::PrintToString(c.arguments);
    }
}

TEST(FindCommandTest, RootComesFromTheOptionElseTheEnvironment) {
    const TempFolder folder;
    const std::string root = folder.path() / "set";
    docset::publishProduct(
        root, "en_US",
        ProductBuilder(u"mine").entity(u"f", RefEntityType::Function, u"f.html").build());
    EXPECT_THAT(namesIn(runTool({"find", "f", "--json", "--doc-root", root})),
                ElementsAre("mine:f"));
    EXPECT_THAT(namesIn(runTool({"find", "f", "--json"}, {"VELTRA_DOC_ROOT=" + root})),
                ElementsAre("mine:f"));
    EXPECT_THAT(namesIn(runTool({"find", "f", "--json", "--doc-root", root},
                                {"VELTRA_DOC_ROOT=/no/such/folder"})),
                ElementsAre("mine:f"));
}

TEST(FindCommandTest, BrokenFilesAreReportedAndLeaveOtherProductsUsable) {
    const TempFolder folder;
    const std::string root = folder.path();
    for (const char16_t* name : {u"bad", u"good", u"worse"})
        docset::publishProduct(
            root, "en_US",
            ProductBuilder(name).entity(u"f", RefEntityType::Function, u"f.html").build());
    folder.write("en_US/worse-1.lookup.json", "{");
    folder.write("en_US/bad-1.reference.json", "{\n  \"format\": 7\n}");

    const ToolRun found = runTool({"find", "f", "--json", "--doc-root", root});
    EXPECT_EQ(found.status, 0);
    EXPECT_THAT(namesIn(found), ElementsAre("good:f"));
    EXPECT_THAT(found.messages, HasSubstr("worse-1.lookup.json:1:2: "));
    EXPECT_THAT(found.messages, HasSubstr("bad-1.reference.json:2:13: format: "));

    // The product is there but cannot be read, which is not the same as "nothing found".
    const ToolRun unreadable =
        runTool({"find", "f", "--json", "--product", "bad", "--doc-root", root});
    EXPECT_EQ(unreadable.status, 2);
    EXPECT_THAT(unreadable.messages, HasSubstr("could not be read"));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
