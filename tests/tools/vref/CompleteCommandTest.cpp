// "vref complete" on the command line.
#include <string>

#include <boost/json/object.hpp>
#include <boost/json/value.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "RunningTool.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

TEST(CompleteCommandTest, AProgramGetsALineEach) {
    const ToolRun run = runTool({"complete", "Table.sort"});
    EXPECT_EQ(run.status, 0) << run.messages;
    EXPECT_THAT(run.output, StartsWith("Table.sortBy\tmethod\t"));
    EXPECT_THAT(run.messages, IsEmpty());
}

TEST(CompleteCommandTest, JsonTellsWhatIsMeant) {
    const auto completion = runTool({"complete", "Table.sort", "--json"}).json().at(0).as_object();
    EXPECT_EQ(completion.at("text").as_string(), "Table.sortBy");
    EXPECT_EQ(completion.at("name").as_string(), "Table.sortBy");
    EXPECT_EQ(completion.at("type").as_string(), "method");
    EXPECT_FALSE(completion.at("purpose").as_string().empty());
}

TEST(CompleteCommandTest, WhatNoNameBeginsWithHasStatus1AndNoMessage) {
    const ToolRun run = runTool({"complete", "zzz"});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.output, IsEmpty());
    EXPECT_THAT(run.messages, IsEmpty());
    EXPECT_EQ(runTool({"complete", "zzz", "--json"}).output, "[]\n");
}

TEST(CompleteCommandTest, OptionsChooseWhatIsListed) {
    EXPECT_EQ(runTool({"complete", "T", "--limit", "1", "--json"}).json().size(), 1U);
    EXPECT_THAT(runTool({"complete", "T", "--limit", "x"}).messages, HasSubstr("--limit"));
    const ToolRun unknown = runTool({"complete", "T", "--product", "nosuch"});
    EXPECT_EQ(unknown.status, 2);
    EXPECT_THAT(unknown.messages, HasSubstr("nosuch"));
}

TEST(CompleteCommandTest, WithoutABeginningTheFirstPartsOfAllNamesAreListed) {
    const ToolRun run = runTool({"complete", "--limit", "1000"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.output, HasSubstr("Table\tclass\t"));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
