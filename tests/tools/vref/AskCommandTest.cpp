// Questions on the command line.
#include <string>
#include <vector>

#include <boost/json/object.hpp>
#include <boost/json/value.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "RunningTool.hpp"
#include "support/LibraryTest.hpp"
#include "support/TempFolder.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

TEST(AskCommandTest, WordsWithoutACommandAreAQuestion) {
    const ToolRun run = runTool({"sort", "table"});
    EXPECT_EQ(run.status, 0) << run.messages;
    EXPECT_THAT(run.output, StartsWith("all words are parts of the name:\nTable.sortBy"));
    EXPECT_EQ(runTool({"sort table"}).output, run.output);
    EXPECT_EQ(runTool({"find", "sort", "table"}).output, run.output);
    EXPECT_EQ(runTool({"--limit", "10", "sort", "table"}).output, run.output);
}

TEST(AskCommandTest, AHitThatIsWhatWasTypedNeedsNoWord) {
    const ToolRun run = runTool({"Table.sortBy"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.output, StartsWith("Table.sortBy  method"));
    EXPECT_THAT(runTool({"sortBy"}).output, StartsWith("Table.sortBy  method"));
}

TEST(AskCommandTest, EachHitTellsHowItWasFound) {
    const ToolRun run = runTool({"Tabel.sortBy", "--json"});
    const auto hit = run.json().at(0).as_object();
    EXPECT_EQ(hit.at("name").as_string(), "Table.sortBy");
    EXPECT_EQ(hit.at("rung").as_string(), "other-package");
    EXPECT_EQ(hit.at("change").as_string(), "spelling: Table.sortBy");
    EXPECT_EQ(hit.at("entities").at(0).at("name").as_string(), "Table.sortBy");
    EXPECT_THAT(runTool({"nosuch.sortBy", "--explain"}).output,
                HasSubstr("    the name in another package; without nosuch, which is not "
                          "installed\n"));
    EXPECT_THAT(runTool({"nosuch.sortBy"}).output,
                StartsWith("without nosuch, which is not installed:\nTable.sortBy"));
}

TEST(AskCommandTest, TenAreListedUntilMoreAreWanted) {
    const ToolRun ten = runTool({"caldera", "--json"});
    EXPECT_EQ(ten.json().size(), 10U);
    EXPECT_THAT(ten.messages, HasSubstr(" (--limit N, or --all)\n"));
    EXPECT_EQ(runTool({"caldera", "--limit", "2", "--json"}).json().size(), 2U);
    const ToolRun all = runTool({"caldera", "--all", "--json"});
    EXPECT_GT(all.json().size(), 10U);
    EXPECT_THAT(all.messages, IsEmpty());
}

TEST(AskCommandTest, OptionsAreFiltersAndPreferences) {
    EXPECT_EQ(runTool({"filter", "--prefer", "qix", "--json"}).json().at(0).at("product"), "qix");
    EXPECT_EQ(runTool({"filter", "--product", "lumora", "--json"}).json().at(0).at("product"),
              "lumora");
    const ToolRun none = runTool({"Table.sortBy", "--type", "class"});
    EXPECT_EQ(none.status, 1);
    EXPECT_THAT(none.messages,
                HasSubstr("without the filters there is: Table.sortBy (method, veltra)\n"));
    EXPECT_EQ(runTool({"filter", "--prefer", "bogus"}).status, 2);
}

TEST(AskCommandTest, AGuessIsCalledOne) {
    const ToolRun run = runTool({"erase", "every", "row", "of", "columns"});
    EXPECT_THAT(run.messages, HasSubstr("this is what comes nearest"));
}

TEST(AskCommandTest, AWrongQuestionIsPointedAt) {
    const ToolRun run = runTool({"table type:clas"});
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.messages, HasSubstr("\"clas\" is no value of the filter \"type:\"; there is:"));
    EXPECT_THAT(run.messages, HasSubstr("\n      table type:clas\n                 ^^^^\n"));
    EXPECT_THAT(runTool({"x", "product:veltr"}).messages, HasSubstr("installed; there is: "));
}

TEST(AskCommandTest, AMistypedCommandIsPointedTo) {
    const ToolRun run = runTool({"fnid", "zzyzx"});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.messages, HasSubstr("did you mean the command \"find\"?"));
    EXPECT_THAT(runTool({"zzyzxqq"}).messages, Not(HasSubstr("did you mean")));
}

TEST(AskCommandTest, ShowShowsWhatAQuestionFindsFirst) {
    const ToolRun run = runTool({"show", "sort", "table"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.output, StartsWith("Table.sortBy\n"));
    EXPECT_THAT(run.messages, HasSubstr("all words are parts of the name"));
    EXPECT_EQ(runTool({"show", "tabel.sortBy"}).output, run.output);

    const auto hits = runTool({"filter", "--json"}).json();
    for (const char* nth : {"1", "2", "5"}) {
        const auto& hit = hits.at(std::stoul(nth) - 1);
        const auto shown = runTool({"show", "filter", "--nth", nth, "--json"}).json();
        EXPECT_EQ(shown.at(0).at("href"), hit.at("href")) << nth;
        EXPECT_EQ(shown.at(0).at("product"), hit.at("product")) << nth;
    }
    EXPECT_EQ(runTool({"show", "filter", "--nth", "1000"}).status, 1);
    EXPECT_EQ(runTool({"show", "filter", "--nth", "0"}).status, 2);
    EXPECT_EQ(runTool({"show", "no/such/table.html"}).status, 1);
}

TEST(AskCommandTest, ASessionForPeopleTakesQuestions) {
    const TempFolder folder;
    folder.write("input", "sort table\ntabel.sortBy --limit 1\n\"table type:clas\"\n");
    const std::string path = folder.path().string();
    const std::string command =
        "cd '" + path + "' && " VELTRA_VREF " watch <input >output 2>messages";
    EXPECT_EQ(std::system(command.c_str()), 0);
    EXPECT_THAT(folder.read("output"),
                StartsWith("all words are parts of the name:\nTable.sortBy"));
    EXPECT_THAT(folder.read("output"), HasSubstr("\nspelling: Table.sortBy:\nTable.sortBy"));
    EXPECT_THAT(folder.read("messages"), HasSubstr("\"clas\" is no value"));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
