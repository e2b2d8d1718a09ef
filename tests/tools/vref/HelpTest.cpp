// What the tool says about itself, and about a command line that it does not accept.
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "RunningTool.hpp"
#include "support/TempFolder.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

TEST(HelpTest, IsThereForTheToolAndEachCommand) {
    EXPECT_EQ(runTool({"--help"}).status, 0);
    EXPECT_THAT(runTool({"--version"}).output, StartsWith("vref "));
    for (const char* command : {"find", "show", "open", "products", "import", "validate", "warm",
                                "watch", "config", "help"}) {
        const ToolRun run = runTool({command, "--help"});
        EXPECT_EQ(run.status, 0) << command;
        EXPECT_THAT(run.output, HasSubstr("Usage:")) << command;
        EXPECT_THAT(run.messages, IsEmpty()) << command;
    }
}

TEST(HelpTest, TheCommandTellsWhatTheOptionTells) {
    EXPECT_EQ(runTool({"help"}).output, runTool({"--help"}).output);
    EXPECT_EQ(runTool({"help", "find"}).output, runTool({"find", "--help"}).output);
    EXPECT_EQ(runTool({"help", "import", "sphinx"}).output,
              runTool({"import", "sphinx", "--help"}).output);
    EXPECT_THAT(runTool({"help", "find"}).output, HasSubstr("Usage: vref find "));
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"help", "fnid"}, {"help", "import", "sphnix"}}) {
        const ToolRun run = runTool(arguments);
        EXPECT_EQ(run.status, 2);
        EXPECT_THAT(run.messages, HasSubstr("did you mean"));
        EXPECT_THAT(run.output, IsEmpty());
    }
}

TEST(HelpTest, AnUnknownCommandIsNamedWithTheNearestOne) {
    struct Case {
        std::vector<std::string> arguments;
        std::string message;
    };
    const Case cases[] = {
        {{"help", "fnid"}, "There is no command \"fnid\"; did you mean \"find\"?"},
        {{"help", "lookup"},
         "There is no command \"lookup\"; there is: find, show, open, complete, products, "},
        {{"help", "a\033[31m\xff"}, "There is no command \"a[31m?\""},
        {{"find", "x", "--limt", "3"}, "expected: --limt; did you mean \"--limit\"?"},
        {{"products", "y", "z"}, "The following arguments were not expected: y z\n"},
        {{"find", "x", "--limt"}, "\"vref help find\" tells more."},
        {{"import", "sphinx"}, "\"vref help import sphinx\" tells more."},
        {{}, "A command is missing"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(::testing::PrintToString(c.arguments));
        const ToolRun run = runTool(c.arguments);
        EXPECT_EQ(run.status, 2);
        EXPECT_THAT(run.messages, AllOf(StartsWith("vref: "), HasSubstr(c.message)));
        EXPECT_THAT(run.output, IsEmpty());
    }
}

TEST(HelpTest, WhatCanBeImportedIsToldWhereSomethingElseIsNamed) {
    const TempFolder folder;
    const char* usage = "vref import sphinx DIR --product NAME --into ROOT";
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{"import"},
                                                      {"import", "devhelp"},
                                                      {"import", "devhelp", "--product", "x"},
                                                      {"import", "https://docs.example.org/en/"},
                                                      {"import", folder.path()}}) {
        SCOPED_TRACE(::testing::PrintToString(arguments));
        const ToolRun run = runTool(arguments);
        EXPECT_EQ(run.status, 2);
        EXPECT_THAT(run.messages, AllOf(HasSubstr(usage), HasSubstr("objects.inv")));
    }
    EXPECT_THAT(runTool({"import", "devhelp"}).messages, HasSubstr("no importer \"devhelp\""));
    EXPECT_THAT(runTool({"import", "https://x.org"}).messages, HasSubstr("fetch the pages first"));
    const ToolRun address = runTool({"import", "sphinx", "https://x.org", "--product", "x",
                                     "--into", (folder.path() / "set").string()});
    EXPECT_EQ(address.status, 2);
    EXPECT_THAT(address.messages, HasSubstr("fetch the pages first"));
    EXPECT_THAT(address.messages, Not(HasSubstr("no importer")));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
