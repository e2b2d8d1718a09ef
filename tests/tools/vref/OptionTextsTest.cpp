#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BuiltGadgets.hpp"
#include "RunningSession.hpp"
#include "RunningTool.hpp"
#include "support/TempFolder.hpp"
#include "vref/OptionTexts.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using Arguments = std::vector<std::string>;

// Each option that takes a text, in a command line that ends with it.
const std::vector<Arguments> optionsWithText = {
    {"find", "x", "--type"},
    {"find", "x", "--product"},
    {"find", "x", "--search"},
    {"find", "x", "--order"},
    {"find", "x", "--limit"},
    {"find", "x", "--doc-root"},
    {"find", "x", "--language"},
    {"show", "x", "--type"},
    {"show", "x", "--product"},
    {"show", "x", "--doc-root"},
    {"show", "x", "--language"},
    {"open", "x", "--type"},
    {"open", "x", "--language"},
    {"products", "--doc-root"},
    {"products", "--language"},
    {"warm", "--doc-root"},
    {"watch", "--language"},
    {"import", "sphinx", "DIR", "--into", "ROOT", "--product"},
    {"import", "sphinx", "DIR", "--product", "x", "--into"},
    {"import", "sphinx", "DIR", "--product", "x", "--into", "ROOT", "--locale"},
    {"import", "sphinx", "DIR", "--product", "x", "--into", "ROOT", "--display-name"},
    {"import", "sphinx", "DIR", "--product", "x", "--into", "ROOT", "--product-version"},
    {"import", "sphinx", "DIR", "--product", "x", "--into", "ROOT", "--help-folder"},
};

TEST(OptionTextsTest, TextThatIsNotCleanIsRefusedWithTheNameOfItsOption) {
    for (const auto& option : optionsWithText) {
        for (const char* text :
             {"\xff", "a\xc3(", "\xed\xa0\x80", "a\nb", "a\tb", "\x7f", "\033[31m", "\xc2\x85"}) {
            SCOPED_TRACE(::testing::PrintToString(option) + ::testing::PrintToString(text));
            Arguments arguments = option;
            arguments.emplace_back(text);
            const ToolRun run = runTool(arguments);
            EXPECT_EQ(run.status, 2);
            EXPECT_THAT(run.messages,
                        AllOf(HasSubstr("vref: " + option.back() + ": The text "),
                              ::testing::AnyOf(HasSubstr("UTF-8"), HasSubstr("control"))));
            EXPECT_THAT(run.output, IsEmpty());
        }
    }
    EXPECT_THAT(runTool({"validate", "\xff"}).messages, HasSubstr("ROOT: The text"));
    EXPECT_THAT(runTool({"find", "\xff"}).messages, HasSubstr("WORDS: The text"));
    EXPECT_THAT(runTool({"import", "sphinx", "\xff", "--product", "x", "--into", "y"}).messages,
                HasSubstr("DIR: The text"));
}

TEST(OptionTextsTest, ANameMayBeCodeOfSeveralLines) {
    const ToolRun run = runTool({"find", "table(\n\t1,\n\t2)"});
    EXPECT_EQ(run.status, 0) << run.messages;
}

TEST(OptionTextsTest, ASetIsAsItWasAfterARefusal) {
    const TempFolder tree;
    const TempFolder set;
    writeGadgets(tree, 2, "Turn it.");
    const std::string root = (set.path() / "set").string();
    const Arguments import = {"import", "sphinx",    tree.path(), "--into",
                              root,     "--product", "gadgets"};
    ASSERT_EQ(runTool(import).status, 0);
    for (const char* option : {"--locale", "--display-name", "--product-version"}) {
        Arguments arguments = import;
        arguments.insert(arguments.end(), {option, "\xff"});
        EXPECT_EQ(runTool(arguments).status, 2) << option;
        EXPECT_EQ(runTool({"validate", root}).status, 0) << option;
    }
}

TEST(OptionTextsTest, AProductsShortNameIsOneWord) {
    for (const char* name :
         {"scipy", "c++", "boost-1.81", "two_words", "信号処理", "cafe\u0301", "7z"})
        EXPECT_EQ(tools::checkProductName(name), "") << name;
    for (const char* name :
         {"", "a/b", "a\\b", ".", "..", "-rf", "two words", " a", "a,b", "a:b", "_a", "*", "😀"})
        EXPECT_THAT(tools::checkProductName(name), HasSubstr("such as scipy")) << name;
}

TEST(OptionTextsTest, AHelpFolderStaysBelowTheHelpRoot) {
    for (const char* folder : {"scipy", "python/library", "with space", "a..b", "..."})
        EXPECT_EQ(tools::checkHelpFolder(folder), "") << folder;
    for (const char* folder :
         {"", "/", "/scipy", "scipy/", "a//b", ".", "..", "../a", "a/../b", "a/.", "a\\b"})
        EXPECT_THAT(tools::checkHelpFolder(folder), HasSubstr("such as scipy")) << folder;
}

TEST(OptionTextsTest, ALimitIsAWholeNumber) {
    for (const char* number : {"0", "1", "20", "007"})
        EXPECT_EQ(tools::checkCount(number), "") << number;
    for (const char* number :
         {"", "-3", "+3", "3.5", "1e3", "0x10", "many", " 3", "3 ", "99999999999999999999999"})
        EXPECT_THAT(tools::checkCount(number), HasSubstr("whole number")) << number;
    const ToolRun run = runTool({"find", "filter", "--limit", "-3"});
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.messages, HasSubstr("--limit: \"-3\" is no number of entries"));
    RunningSession session;
    EXPECT_THAT(std::string(session.ask("filter --limit -3").at("error").as_string()),
                HasSubstr("--limit: \"-3\" is no number of entries"));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
