// Colours and links at a terminal.
#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BuiltGadgets.hpp"
#include "RunningTerminal.hpp"
#include "RunningTool.hpp"
#include "support/TempFolder.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;
using Texts = std::vector<std::string>;

class LinksTest : public ::testing::Test {
  protected:
    LinksTest() {
        writePage("Turn it.");
        m_tree.write("objects.inv", gadgetInventory("spin py:function 1 a%20b.html#$ -\n"
                                                    "stop py:function 1 a%20b.html#$ -\n"));
        EXPECT_EQ(
            runTool({"import", "sphinx", m_tree.path(), "--product", "gadgets", "--into", root()})
                .status,
            0);
    }

    // Two functions on one page, so that each has a place of its own on it.
    void writePage(const std::string& purpose) const {
        std::string page = gadgetPage("spin", purpose) + gadgetPage("stop", "Halt it.");
        page.erase(page.find("</body>"), page.rfind("<dl") - page.find("</body>"));
        m_tree.write("a b.html", page);
    }

    [[nodiscard]] std::string root() const { return m_set.path() / "set"; }
    [[nodiscard]] std::string link() const {
        return "\033]8;;file://" + std::filesystem::canonical(m_tree.path()).string() +
               "/a%20b.html#spin\033\\";
    }
    [[nodiscard]] std::string find(Texts options = {}, const Texts& environment = {}) const {
        options.insert(options.begin(), {"find", "spin", "--doc-root", root()});
        return shownAtTerminal(options, environment);
    }

    TempFolder m_tree;
    TempFolder m_set;
};

TEST_F(LinksTest, NamesInAListLeadToTheirPages) {
    EXPECT_EQ(find(), link() + "\033[1mspin\033[0m\033]8;;\033\\  function  gadgets  Turn it.\n");
}

TEST_F(LinksTest, AreWhereThereAreColours) {
    const std::string plain = "spin  function  gadgets  Turn it.\n";
    EXPECT_EQ(find({}, {"NO_COLOR=1"}), plain);
    EXPECT_EQ(find({}, {"TERM=dumb"}), plain);
    EXPECT_EQ(find({}, {"TERM="}), plain);
    EXPECT_EQ(find({"--colours", "never"}), plain);
    EXPECT_EQ(find({}, {"NO_COLOR="}), find());
    EXPECT_EQ(find({"--color", "always"}, {"NO_COLOR=1"}), find());
    EXPECT_EQ(find({"--colours", "always"}, {"TERM=dumb"}),
              "\033[1mspin\033[0m  function  gadgets  Turn it.\n");
    EXPECT_EQ(runTool({"find", "spin", "--doc-root", root()}).output, plain);
    EXPECT_EQ(runTool({"find", "spin", "--doc-root", root(), "--colours", "always"}).output,
              "\033[1mspin\033[0m  function  gadgets  Turn it.\n");
    EXPECT_THAT(runTool({"find", "spin", "--colours", "red"}).messages,
                HasSubstr("no \"red\"; there is: auto, always, never."));
}

TEST_F(LinksTest, AreOnlyForPagersThatKnowThem) {
    const auto paged = [&](const std::string& pager) {
        return shownAtTerminal({"find", "spin", "--doc-root", root()}, {"PAGER=" + pager}, 1);
    };
    EXPECT_THAT(paged("cat"),
                AllOf(HasSubstr("\033[1mspin\033[0m  function"), Not(HasSubstr("\033]8"))));
    m_set.write("less", "#!/bin/sh\ncat\n");
    std::filesystem::permissions(m_set.path() / "less", std::filesystem::perms::owner_all);
    EXPECT_THAT(paged(m_set.path().string() + "/less -i"), HasSubstr(link()));
}

TEST_F(LinksTest, AreOnAPageForItsMembersAndWhereItPoints) {
    const std::string box =
        "<dl class=\"py class\"><dt class=\"sig\" id=\"Box\"><span class=\"sig-name\">Box</span>"
        "</dt><dd><p>Holds.</p><dl class=\"py method\"><dt class=\"sig\" id=\"Box.open\">"
        "<span class=\"sig-name\">open</span>()</dt><dd><p>Opens.</p></dd></dl>"
        "<div class=\"seealso\"><p>See also</p><dl><dt><a href=\"a%20b.html#spin\"><code>spin"
        "</code></a></dt><dd><p>x</p></dd></dl></div></dd></dl>";
    m_tree.write("box.html", "<!DOCTYPE html><html><body>" + box + "</body></html>");
    m_tree.write("objects.inv", gadgetInventory("spin py:function 1 a%20b.html#$ -\n"
                                                "stop py:function 1 a%20b.html#$ -\n"
                                                "Box py:class 1 box.html#$ -\n"
                                                "Box.open py:method 1 box.html#$ -\n"));
    ASSERT_EQ(runTool({"import", "sphinx", m_tree.path(), "--product", "gadgets", "--into", root()})
                  .status,
              0);
    const std::string shown = shownAtTerminal({"show", "Box", "--no-pager", "--doc-root", root()});
    EXPECT_THAT(shown, HasSubstr("box.html#Box.open\033\\\033[1mopen\033[0m"));
    EXPECT_THAT(shown, HasSubstr(link() + "\033[1mspin\033[0m"));
}

// What documentation says must not be able to speak to the terminal itself.
TEST_F(LinksTest, AreNotWhatDocumentationSays) {
    writePage("Turn \033]8;;http://x\033\\it.\x07");
    ASSERT_EQ(runTool({"import", "sphinx", m_tree.path(), "--product", "gadgets", "--into", root()})
                  .status,
              0);
    for (const char* command : {"find", "show"}) {
        const std::string shown = shownAtTerminal({command, "spin", "--doc-root", root()});
        EXPECT_THAT(shown, HasSubstr("Turn"));
        EXPECT_THAT(shown, AllOf(Not(HasSubstr("\033]8;;http")), Not(HasSubstr("\x07"))));
    }
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
