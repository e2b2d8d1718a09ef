// "vref open", and the place of a page in "vref show".
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BuiltGadgets.hpp"
#include "RunningTool.hpp"
#include "support/TempFolder.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class OpenCommandTest : public ::testing::Test {
  protected:
    OpenCommandTest() {
        // Two functions on one page, so that each has a place of its own on it.
        std::string page = gadgetPage("f0", "Turn it.") + gadgetPage("f1", "Push it.");
        page.erase(page.find("</body>"), page.rfind("<dl") - page.find("</body>"));
        m_tree.write("f.html", page);
        m_tree.write("objects.inv", gadgetInventory("f0 py:function 1 f.html#$ -\n"
                                                    "f1 py:function 1 f.html#$ -\n"));
        EXPECT_EQ(
            runTool({"import", "sphinx", m_tree.path(), "--product", "gadgets", "--into", root()})
                .status,
            0);
    }

    [[nodiscard]] std::string root() const { return m_set.path() / "set"; }
    [[nodiscard]] std::string addressOf(const std::string& page) const {
        return "file://" + fs::canonical(m_tree.path()).string() + "/" + page;
    }

    // Makes an xdg-open that records its arguments and exits with this status.
    void makeBrowser(const std::string& status) const {
        m_set.write("bin/xdg-open", "#!/bin/sh\nfor word in \"$@\"; do echo \"$word\" >>'" +
                                        (m_set.path() / "opened").string() + "'; done\nexit " +
                                        status + "\n");
        fs::permissions(m_set.path() / "bin/xdg-open", fs::perms::owner_all);
    }

    [[nodiscard]] ToolRun open(std::vector<std::string> arguments,
                               const std::string& display = "DISPLAY=:0") const {
        arguments.insert(arguments.begin(), "open");
        arguments.insert(arguments.end(), {"--doc-root", root()});
        return runTool(arguments, {"DISPLAY=", "WAYLAND_DISPLAY=", display,
                                   "PATH=" + (m_set.path() / "bin").string()});
    }

    TempFolder m_tree;
    TempFolder m_set;
};

TEST_F(OpenCommandTest, GivesTheBrowserTheAddressOfTheEntity) {
    makeBrowser("0");
    const ToolRun run = open({"f1"});
    EXPECT_EQ(run.status, 0) << run.messages;
    EXPECT_THAT(run.output, IsEmpty());
    EXPECT_EQ(m_set.read("opened"), addressOf("f.html#f1") + "\n");
    EXPECT_EQ(
        open({"F1", "--product", "gadgets", "--type", "function"}, "WAYLAND_DISPLAY=w").status, 0);
    EXPECT_EQ(m_set.read("opened"), addressOf("f.html#f1") + "\n" + addressOf("f.html#f1") + "\n");
}

TEST_F(OpenCommandTest, PrintsTheAddressWhereThereIsNoBrowser) {
    const ToolRun withoutProgram = open({"f1"});
    EXPECT_EQ(withoutProgram.status, 0);
    EXPECT_EQ(withoutProgram.output, addressOf("f.html#f1") + "\n");

    makeBrowser("0");
    const ToolRun withoutScreen = open({"f1"}, "DISPLAY=");
    EXPECT_EQ(withoutScreen.status, 0);
    EXPECT_EQ(withoutScreen.output, addressOf("f.html#f1") + "\n");
    EXPECT_FALSE(fs::exists(m_set.path() / "opened"));
}

TEST_F(OpenCommandTest, PrintsTheAddressWhereTheBrowserFails) {
    makeBrowser("4");
    const ToolRun run = open({"f1"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output, addressOf("f.html#f1") + "\n");
    EXPECT_THAT(run.messages, HasSubstr("xdg-open"));
}

TEST_F(OpenCommandTest, NothingInTheAddressReachesAShell) {
    makeBrowser("0");
    const std::string name = "$(touch pwned)';touch pwned;'.html";
    fs::rename(m_tree.path() / "f.html", m_tree.path() / name);
    m_tree.write("objects.inv",
                 gadgetInventory("f0 py:function 1 $(touch%20pwned)';touch%20pwned;'.html#$ -\n"
                                 "f1 py:function 1 $(touch%20pwned)';touch%20pwned;'.html#$ -\n"));
    const ToolRun import = runTool(
        {"import", "sphinx", m_tree.path(), "--product", "gadgets", "--into", root(), "--force"});
    ASSERT_EQ(import.status, 0) << import.messages;
    EXPECT_EQ(open({"f0"}).status, 0);
    EXPECT_EQ(m_set.read("opened"),
              addressOf("%24%28touch%20pwned%29%27%3Btouch%20pwned%3B%27.html#f0") + "\n");
}

TEST_F(OpenCommandTest, SaysWhatIsMissing) {
    makeBrowser("0");
    const ToolRun unknown = open({"no.such.name"});
    EXPECT_EQ(unknown.status, 1);
    EXPECT_THAT(unknown.messages, HasSubstr("called \"no.such.name\""));

    fs::remove(m_tree.path() / "f.html");
    const ToolRun gone = open({"f1"});
    EXPECT_EQ(gone.status, 1);
    EXPECT_THAT(gone.messages,
                HasSubstr("\"f.html#f1\" is no page in the folder that \"gadgets\""));

    const ToolRun shipped = runTool({"open", "Table"});
    EXPECT_EQ(shipped.status, 1);
    EXPECT_THAT(shipped.messages, HasSubstr("does not say where the pages of \"veltra\" are"));
    EXPECT_FALSE(fs::exists(m_set.path() / "opened"));
}

TEST_F(OpenCommandTest, ShowTellsThePlaceOfAPageThatExists) {
    EXPECT_THAT(runTool({"show", "f1", "--doc-root", root()}).output,
                HasSubstr("    gadgets/f.html#f1\n    " + addressOf("f.html#f1") + "\n"));
    fs::remove(m_tree.path() / "f.html");
    EXPECT_THAT(runTool({"show", "f1", "--doc-root", root()}).output, Not(HasSubstr("file:")));
    EXPECT_THAT(runTool({"show", "Table"}).output, Not(HasSubstr("file:")));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
