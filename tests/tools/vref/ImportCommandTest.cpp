#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BuiltGadgets.hpp"
#include "RunningTool.hpp"
#include "support/TempFolder.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using ::testing::HasSubstr;

class ImportCommandTest : public ::testing::Test {
  protected:
    ImportCommandTest() {
        m_tree.write("objects.inv", gadgetInventory("turn py:function 1 turn.html#$ -\n"
                                                    "push py:function 1 push.html#$ -\n"));
        m_tree.write("turn.html", gadgetPage("turn", "Turn the gadget."));
        m_tree.write("push.html", gadgetPage("push", "Push the gadget."));
    }

    [[nodiscard]] ToolRun import() const {
        return runTool(
            {"import", "sphinx", m_tree.path(), "--product", "gadgets", "--into", root()});
    }
    [[nodiscard]] std::string root() const { return m_set.path() / "set"; }

    TempFolder m_tree;
    TempFolder m_set;
};

TEST_F(ImportCommandTest, MakesASetThatAnswersAndIsSound) {
    const ToolRun run = import();
    EXPECT_EQ(run.status, 0) << run.messages;
    EXPECT_THAT(run.output, HasSubstr("Gadgets 2.5 is now the product \"gadgets\" (en_US)"));
    EXPECT_THAT(run.output, HasSubstr("2  function"));
    EXPECT_THAT(run.output, HasSubstr("Time: "));
    EXPECT_THAT(runTool({"find", "turn", "--doc-root", root()}).output,
                HasSubstr("turn  function  gadgets  Turn the gadget."));
    EXPECT_EQ(runTool({"validate", root()}).status, 0);
}

TEST_F(ImportCommandTest, ReplacesTheProductAndKeepsTheOthers) {
    ASSERT_EQ(import().status, 0);
    ASSERT_EQ(
        runTool({"import", "sphinx", m_tree.path(), "--product", "other", "--into", root()}).status,
        0);
    m_tree.write("turn.html", gadgetPage("turn", "Turn it around."));
    ASSERT_EQ(import().status, 0);
    EXPECT_THAT(runTool({"find", "turn", "--doc-root", root()}).output,
                ::testing::AllOf(HasSubstr("gadgets  Turn it around."),
                                 HasSubstr("other    Turn the gadget.")));
    EXPECT_EQ(runTool({"validate", root()}).status, 0);
}

TEST_F(ImportCommandTest, MissingPageIsReportedPassedOverAndToldByTheStatus) {
    m_tree.write("objects.inv", gadgetInventory("turn py:function 1 turn.html#$ -\n"
                                                "lost py:function 1 lost.html#$ -\n"));
    const ToolRun run = import();
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.messages, HasSubstr("lost.html"));
    EXPECT_THAT(run.output, HasSubstr("No description was found of 1:\n  lost\n"));
    EXPECT_EQ(runTool({"find", "lost", "--doc-root", root()}).status, 0);
    EXPECT_EQ(runTool({"find", "turn", "--doc-root", root()}).status, 0);
}

TEST_F(ImportCommandTest, TellsWhatTheInventoryListsAndTheImportLeavesOut) {
    m_tree.write("objects.inv", gadgetInventory("turn py:function 1 turn.html#$ -\n"
                                                "gadgets.turn py:function -1 turn.html#turn -\n"
                                                "start std:label -1 turn.html#$ -\n"));
    const ToolRun run = import();
    EXPECT_EQ(run.status, 0) << run.messages;
    EXPECT_THAT(run.output, HasSubstr("      1  further names of them\n"));
    EXPECT_THAT(run.output, HasSubstr("no part of the reference:\n        1  std:label\n"));
    EXPECT_THAT(runTool({"find", "gadgets.turn", "--doc-root", root()}).output,
                HasSubstr("turn  function  gadgets  Turn the gadget."));
}

TEST_F(ImportCommandTest, FolderWithoutAnInventoryIsStatusTwoAndChangesNothing) {
    ASSERT_EQ(import().status, 0);
    const TempFolder empty;
    const ToolRun run =
        runTool({"import", "sphinx", empty.path(), "--product", "gadgets", "--into", root()});
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.messages, HasSubstr("objects.inv"));
    EXPECT_EQ(runTool({"find", "turn", "--doc-root", root()}).status, 0);
}

TEST_F(ImportCommandTest, FolderThatIsNoSetIsRefused) {
    m_set.write("set/letter.txt", "Dear reader");
    const ToolRun run = import();
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.messages, HasSubstr("documentation-set.json"));
    EXPECT_EQ(m_set.read("set/letter.txt"), "Dear reader");
}

TEST_F(ImportCommandTest, RootThatCannotTakeItIsFoundBeforeTheTreeIsRead) {
    // A tree without an inventory is the first thing that reading it would find.
    const TempFolder empty;
    m_set.write("letters/letter.txt", "Dear reader");
    for (const char* name : {"letters", "letters/letter.txt", "letters/letter.txt/below"}) {
        const ToolRun run = runTool({"import", "sphinx", empty.path(), "--product", "gadgets",
                                     "--into", (m_set.path() / name).string()});
        EXPECT_EQ(run.status, 2) << name;
        EXPECT_THAT(run.messages, HasSubstr("folder")) << name;
        EXPECT_THAT(run.messages, ::testing::Not(HasSubstr("objects.inv"))) << name;
    }
}

TEST_F(ImportCommandTest, FaultyManifestIsRefusedAndKept) {
    m_set.write("set/documentation-set.json", "{");
    const ToolRun run = import();
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.messages, HasSubstr("documentation-set.json:1:2"));
    EXPECT_EQ(m_set.read("set/documentation-set.json"), "{");
}

TEST_F(ImportCommandTest, FilesUnderTheLocaleThatIsNamed) {
    const ToolRun run = runTool({"import", "sphinx", m_tree.path(), "--product", "gadgets",
                                 "--into", root(), "--locale", "ja_JP"});
    EXPECT_EQ(run.status, 0) << run.messages;
    EXPECT_THAT(runTool({"products", "--doc-root", root()}).output, HasSubstr("ja_JP"));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
