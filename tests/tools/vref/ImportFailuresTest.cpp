// What an import does when system calls fail, or the tree holds far less than the product has.
#include <cerrno>
#include <cstring>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BuiltGadgets.hpp"
#include "RunningTool.hpp"
#include "support/TempFolder.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class ImportFailuresTest : public ::testing::Test {
  protected:
    ImportFailuresTest() { writeGadgets(m_tree, 8, "As it was."); }

    [[nodiscard]] ToolRun import(const std::vector<std::string>& environment = {},
                                 const std::vector<std::string>& options = {}) const {
        std::vector<std::string> arguments = {"import",  "sphinx", m_tree.path(), "--product",
                                              "gadgets", "--into", root()};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return runTool(arguments, environment);
    }
    // How many functions the set has, and what one of them says.
    [[nodiscard]] std::size_t published() const {
        return runTool({"find", "--all", "--json", "--doc-root", root()}).json().size();
    }
    [[nodiscard]] std::string shown(const std::string& name) const {
        return runTool({"find", name, "--doc-root", root()}).output;
    }
    [[nodiscard]] std::string root() const { return m_set.path() / "set"; }

    TempFolder m_tree;
    TempFolder m_set;
};

TEST_F(ImportFailuresTest, AnErrorOfTheSystemEndsTheImportAndKeepsTheProduct) {
    ASSERT_EQ(import().status, 0);
    writeGadgets(m_tree, 8, "As it is now.");
    const struct {
        const char* file;
        const char* call;
        int error;
    } rows[] = {
        {"f3.html", "open", EIO},    {"f3.html", "open", EMFILE},     {"f3.html", "open", ENFILE},
        {"f3.html", "open", ENOMEM}, {"f3.html", "open", EACCES},     {"f3.html", "read", EIO},
        {"f3.html", "read", ENOMEM}, {"objects.inv", "open", EMFILE}, {"objects.inv", "read", EIO},
    };
    for (const auto& row : rows) {
        const std::string name =
            std::string(row.file) + " " + row.call + " " + std::strerror(row.error);
        const ToolRun run = import(failing(row.file, row.call, row.error));
        EXPECT_EQ(run.status, 2) << name;
        EXPECT_THAT(run.messages, AllOf(HasSubstr(row.file), HasSubstr(std::strerror(row.error)),
                                        Not(HasSubstr("no such file"))))
            << name;
        EXPECT_THAT(run.output, IsEmpty()) << name;
        EXPECT_THAT(shown("f3"), HasSubstr("As it was.")) << name;
    }
}

TEST_F(ImportFailuresTest, TheModuleIndexIsNoException) {
    m_tree.write("py-modindex.html", "<table></table>");
    const ToolRun run = import(failing("py-modindex.html", "open", EMFILE));
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.messages, HasSubstr("py-modindex.html: The file cannot be read: "));
}

TEST_F(ImportFailuresTest, ACallThatASignalInterruptsIsMadeAgain) {
    for (const char* const call : {"open", "read"}) {
        const ToolRun run = import(failing("f3.html", call, EINTR, "2"));
        EXPECT_EQ(run.status, 0) << call << ": " << run.messages;
        EXPECT_THAT(shown("f3"), HasSubstr("As it was.")) << call;
    }
}

TEST_F(ImportFailuresTest, APageThatDoesNotExistIsStillPassedOver) {
    ASSERT_EQ(import().status, 0);
    const ToolRun run = import(failing("f3.html", "open", ENOENT));
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.messages, HasSubstr("passed over: f3.html: There is no such file"));
    EXPECT_THAT(shown("f3"), Not(HasSubstr("As it was.")));
}

TEST_F(ImportFailuresTest, AnInventoryWithoutEntriesNeedsForce) {
    ASSERT_EQ(import().status, 0);
    for (const char* const lines : {"", "f0 std:label -1 f0.html#$ -\n"}) {
        m_tree.write("objects.inv", gadgetInventory(lines));
        const ToolRun run = import();
        EXPECT_EQ(run.status, 2) << lines;
        EXPECT_THAT(run.messages, AllOf(HasSubstr("lists nothing"), HasSubstr("--force"))) << lines;
        EXPECT_EQ(published(), 8U) << lines;
    }
    EXPECT_EQ(import({}, {"--force"}).status, 0);
    EXPECT_EQ(published(), 0U);
}

TEST_F(ImportFailuresTest, PagesOfWhichNoneCanBeReadNeedForceInANewSetToo) {
    const TempFolder bare;
    bare.write("objects.inv", gadgetInventory("f py:function 1 f.html#$ -\n"));
    std::vector<std::string> arguments = {"import",  "sphinx", bare.path(), "--product",
                                          "gadgets", "--into", root()};
    const ToolRun run = runTool(arguments);
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.messages, AllOf(HasSubstr("passed over: f.html: There is no such file"),
                                    HasSubstr("None of the pages"), HasSubstr("--force")));
    arguments.push_back("--force");
    EXPECT_EQ(runTool(arguments).status, 1);
    EXPECT_EQ(published(), 1U);
}

TEST_F(ImportFailuresTest, FarFewerEntriesThanBeforeNeedForce) {
    ASSERT_EQ(import().status, 0);
    const auto inventoryOf = [](int count) {
        std::string lines;
        for (int number = 0; number < count; ++number) {
            const std::string name = "f" + std::to_string(number);
            lines += name + " py:function 1 " + name + ".html#$ -\n";
        }
        return gadgetInventory(lines);
    };
    m_tree.write("objects.inv", inventoryOf(5));
    const ToolRun refused = import();
    EXPECT_EQ(refused.status, 2);
    EXPECT_THAT(refused.messages, AllOf(HasSubstr("shrink from 8 to 5 entries (function: 8 to 5)"),
                                        HasSubstr("--force")));
    EXPECT_EQ(published(), 8U);

    m_tree.write("objects.inv", inventoryOf(6));
    EXPECT_EQ(import().status, 0);
    EXPECT_EQ(published(), 6U);
    m_tree.write("objects.inv", inventoryOf(1));
    EXPECT_EQ(import({}, {"--force"}).status, 0);
    EXPECT_EQ(published(), 1U);
}

TEST_F(ImportFailuresTest, FarFewerDescriptionsThanBeforeNeedForce) {
    ASSERT_EQ(import().status, 0);
    for (const char* const page : {"f0.html", "f1.html", "f2.html"})
        m_tree.write(page, "<html><body><p>Moved.</p></body></html>");
    const ToolRun refused = import();
    EXPECT_EQ(refused.status, 2);
    EXPECT_THAT(refused.messages, HasSubstr("with a description would shrink from 8 to 5"));
    EXPECT_THAT(shown("f0"), HasSubstr("As it was."));
    EXPECT_EQ(import({}, {"--force"}).status, 0);
}

TEST_F(ImportFailuresTest, OnlyTheLocaleThatIsReplacedCounts) {
    ASSERT_EQ(import().status, 0);
    writeGadgets(m_tree, 2, "On its own.");
    EXPECT_EQ(import({}, {"--locale", "ja_JP"}).status, 0);
    EXPECT_EQ(import().status, 2);
}

TEST_F(ImportFailuresTest, AProductThatCannotBeReadIsReplacedWithoutAQuestion) {
    ASSERT_EQ(import().status, 0);
    m_set.write("set/en_US/gadgets-1.lookup.json", "{");
    writeGadgets(m_tree, 2, "On its own.");
    EXPECT_EQ(import().status, 0);
    EXPECT_EQ(published(), 2U);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
