// Long answers at a terminal.
#include <algorithm>
#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "RunningTerminal.hpp"
#include "RunningTool.hpp"
#include "support/TempFolder.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;
using Texts = std::vector<std::string>;

// A pager that marks each line.
const std::string marking = "PAGER=sed 's/^/paged: /'";

// What a person sees of an answer without a pager.
std::string plainly(Texts arguments) {
    arguments.emplace_back("--no-pager");
    return shownAtTerminal(arguments);
}

TEST(PagerTest, ShowsAnswersThatAreLongerThanTheTerminal) {
    for (const Texts& arguments : {Texts{"find", "--all", "--product", "veltra"},
                                   {"show", "Table"},
                                   {"products"},
                                   {"products", "--json"},
                                   {"help"},
                                   {"find", "--help"}}) {
        SCOPED_TRACE(::testing::PrintToString(arguments));
        EXPECT_THAT(shownAtTerminal(arguments, {marking}, 8), StartsWith("paged: "));
    }
    EXPECT_THAT(shownAtTerminal({"connection", "--all"}, {marking}, 2), StartsWith("paged: "));
}

TEST(PagerTest, IsNotForAnswersThatFit) {
    const std::string answer = plainly({"show", "Table"});
    const auto lines = static_cast<unsigned short>(std::ranges::count(answer, '\n'));
    EXPECT_EQ(shownAtTerminal({"show", "Table"}, {marking}, lines + 1), answer);
    EXPECT_THAT(shownAtTerminal({"show", "Table"}, {marking}, lines), StartsWith("paged: "));
}

TEST(PagerTest, LinesThatAreBrokenCountAsOften) {
    const Texts arguments{"find", "plot", "--exact", "--json"};
    const std::string answer = plainly(arguments);
    const auto lines = static_cast<unsigned short>(std::ranges::count(answer, '\n'));
    EXPECT_THAT(shownAtTerminal(arguments, {marking}, lines + 1), StartsWith("paged: "));
    RunningTerminal wide(arguments, {marking}, lines + 1, 10'000);
    EXPECT_EQ(wide.end(), 0);
    EXPECT_EQ(wide.shown(), answer);
}

TEST(PagerTest, IsNotForFilesAndPipes) {
    EXPECT_THAT(runTool({"find", "--all"}, {marking}).output, Not(HasSubstr("paged: ")));
}

TEST(PagerTest, CanBeTurnedOff) {
    const TempFolder folder;
    folder.write("vref/config.toml", "pager = false\n");
    const std::string answer = plainly({"products"});
    const std::string configured = "XDG_CONFIG_HOME=" + folder.path().string();
    EXPECT_EQ(shownAtTerminal({"products"}, {configured}, 5), answer);
    EXPECT_EQ(shownAtTerminal({"products", "--no-pager"}, {marking}, 5), answer);
    EXPECT_THAT(shownAtTerminal({"products"}, {configured, marking}, 5), StartsWith("paged: "));
    EXPECT_THAT(shownAtTerminal({"help", "find"}, {configured}), HasSubstr("\nUsage: vref find"));
    EXPECT_THAT(shownAtTerminal({"help", "find", "--no-pager"}, {marking}),
                Not(HasSubstr("paged: ")));
}

TEST(PagerTest, HelpIsThereEvenIfTheConfigurationIsWrong) {
    const TempFolder folder;
    folder.write("vref/config.toml", "pager = 3\n");
    RunningTerminal help({"help", "find"}, {marking, "XDG_CONFIG_HOME=" + folder.path().string()});
    EXPECT_EQ(help.end(), 0);
    EXPECT_THAT(help.shown(), StartsWith("paged: "));
}

TEST(PagerTest, ThatFailsLosesNothing) {
    const std::string answer = plainly({"products"});
    struct Case {
        const char* pager;
        const char* problem;
    };
    const Case cases[] = {{"no-such-pager", "exit status 127"},
                          {"false", "exit status 1"},
                          {"head -n 2 >/dev/null; exit 7", "exit status 7"},
                          {"kill -9 $$", "ended by signal 9"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.pager);
        RunningTerminal terminal({"products"}, {"PAGER=" + std::string(c.pager)}, 5);
        EXPECT_EQ(terminal.end(), 0);
        EXPECT_THAT(terminal.shown(), EndsWith(":\n" + answer));
        EXPECT_THAT(terminal.shown(), HasSubstr("vref: the pager \"" + std::string(c.pager) +
                                                "\" failed (" + c.problem + ")"));
    }
}

TEST(PagerTest, MayBeLeftEarly) {
    RunningTerminal terminal({"find", "--all"}, {"PAGER=head -n 1"});
    EXPECT_EQ(terminal.end(), 0);
    EXPECT_EQ(std::ranges::count(terminal.shown(), '\n'), 1) << terminal.shown();
}

TEST(PagerTest, AloneReceivesWhatIsTyped) {
    RunningTerminal terminal(
        {"products"}, {"PAGER=trap 'echo caught; exit 4' INT; echo ready; sleep 30 & wait"}, 5);
    terminal.waitFor("ready");
    terminal.type("\003");
    EXPECT_EQ(terminal.end(), 0);
    EXPECT_THAT(terminal.shown(), EndsWith("caught\n"));
}

TEST(PagerTest, EndsBeforeASignalEndsTheTool) {
    RunningTerminal terminal({"products"}, {"PAGER=echo ready; read line </dev/tty; echo $line"},
                             5);
    terminal.waitFor("ready");
    terminal.signal(SIGTERM);
    terminal.type("typed\n");
    EXPECT_EQ(terminal.end(), -SIGTERM);
    EXPECT_THAT(terminal.shown(), EndsWith("typed\ntyped\n"));
}

TEST(PagerTest, ThatLeavesTheTerminalInAModeOfItsOwnIsMendedAfter) {
    RunningTerminal terminal({"products"}, {"PAGER=stty -echo -icanon </dev/tty; echo done"}, 5);
    EXPECT_EQ(terminal.end(), 0);
    EXPECT_THAT(terminal.shown(), EndsWith("done\n"));
    EXPECT_TRUE(terminal.isInItsUsualMode());
}

TEST(PagerTest, LessIsToldToShowColours) {
    const std::string pager = "PAGER=echo \"[$LESS]\"";
    EXPECT_EQ(shownAtTerminal({"products"}, {pager}, 5), "[FRX]\n");
    EXPECT_EQ(shownAtTerminal({"products"}, {pager, "LESS="}, 5), "[FRX]\n");
    EXPECT_EQ(shownAtTerminal({"products"}, {pager, "LESS=-i"}, 5), "[-R -i]\n");
}

TEST(PagerTest, IsLessWhereNobodyNamesOne) {
    const TempFolder folder;
    folder.write("less", "#!/bin/sh\necho this is less\n");
    std::filesystem::permissions(folder.path() / "less", std::filesystem::perms::owner_all);
    EXPECT_EQ(shownAtTerminal({"products"}, {"PATH=" + folder.path().string()}, 5),
              "this is less\n");
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
