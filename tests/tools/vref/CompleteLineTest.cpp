// "vref complete --words", which the completion scripts of shells call.
#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "RunningTool.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

struct Answer {
    std::vector<std::string> texts;
    std::string output;
};

// The texts for the last of the words.
Answer complete(const std::vector<std::string>& words, const std::vector<std::string>& options = {},
                const std::string& documentation = VELTRA_SHIPPED_SET) {
    std::vector<std::string> arguments = {"complete", "--words", std::to_string(words.size() - 1)};
    arguments.insert(arguments.end(), options.begin(), options.end());
    arguments.emplace_back("--");
    arguments.insert(arguments.end(), words.begin(), words.end());
    const ToolRun run = runTool(arguments, {"VELTRA_DOC_ROOT=" + documentation});
    EXPECT_THAT(run.messages, IsEmpty());
    Answer answer{.texts = {}, .output = run.output};
    for (std::size_t begin = 0; begin < run.output.size();) {
        const auto end = run.output.find('\n', begin);
        answer.texts.push_back(run.output.substr(begin, run.output.find('\t', begin) - begin));
        begin = end + 1;
    }
    EXPECT_EQ(run.status, answer.texts.empty() ? 1 : 0);
    return answer;
}

TEST(CompleteLineTest, OffersEachCommandThatTheHelpLists) {
    const auto texts = complete({""}).texts;
    const std::string help = runTool({"--help"}).output;
    const std::string list = help.substr(help.find("Subcommands:\n"));
    std::size_t commands = 0;
    for (std::size_t at = list.find("\n  "); at != std::string::npos;
         at = list.find("\n  ", at + 1))
        if (list[at + 3] != ' ') {
            EXPECT_THAT(texts, Contains(list.substr(at + 3, list.find(' ', at + 3) - at - 3)));
            ++commands;
        }
    EXPECT_GE(commands, 10U);
}

TEST(CompleteLineTest, OffersEachOptionOfACommandWithWhatItSays) {
    const Answer answer = complete({"show", "--"});
    EXPECT_THAT(answer.texts,
                AllOf(Contains("--nth"), Contains("--json"), Contains("--doc-root"),
                      Contains("--help"), Not(Contains("--order")), Not(Contains("show"))));
    EXPECT_THAT(answer.output, HasSubstr("--json\tPrint the entry as a JSON array of one\n"));
    EXPECT_THAT(complete({"show", "-"}).texts, AllOf(Contains("-h"), Contains("-i")));
    // Before a command, those of the tool and of a question.
    EXPECT_THAT(complete({"--"}).texts, AllOf(Contains("--version"), Contains("--order")));
}

TEST(CompleteLineTest, OffersTheValuesOfOptions) {
    EXPECT_THAT(complete({"find", "--search", ""}).texts,
                ElementsAre("entity", "class", "purpose", "text", "page"));
    EXPECT_THAT(complete({"find", "--search=pu"}).texts, ElementsAre("--search=purpose"));
    EXPECT_THAT(complete({"find", "--type", "cl"}).texts, ElementsAre("class"));
    EXPECT_THAT(complete({"find", "--order", "de"}).texts, ElementsAre("deprecated", "depth"));
    EXPECT_THAT(complete({"find", "--order", "depth,na"}).texts, ElementsAre("depth,name="));
    EXPECT_THAT(complete({"find", "--prefer", "velt"}).texts, Contains("veltra"));
    EXPECT_THAT(complete({"find", "--language", "ja"}).texts, ElementsAre("ja_JP"));
    EXPECT_THAT(complete({"find", "--limit", ""}).texts, IsEmpty());
    EXPECT_EQ(complete({"find", "--doc-root", ""}).output, "\tfolders\n");
    EXPECT_EQ(complete({"validate", ""}).output, "\tfolders\n");
    // One argument is enough for it.
    EXPECT_THAT(complete({"validate", "a", ""}).texts, IsEmpty());
    EXPECT_THAT(complete({"import", "sphinx", "a", "--help-folder", ""}).texts, IsEmpty());
}

TEST(CompleteLineTest, OffersFiltersAndTheirValuesInQuestions) {
    EXPECT_THAT(complete({"find", "type:cl"}).texts, ElementsAre("type:class"));
    EXPECT_THAT(complete({"sort", "type:class,met"}).texts, ElementsAre("type:class,method"));
    EXPECT_THAT(complete({"sort", "in:"}).texts, ElementsAre("in:name", "in:purpose", "in:text"));
    EXPECT_THAT(complete({"sort", "is:d"}).texts, ElementsAre("is:deprecated"));
    EXPECT_THAT(complete({"sort", "product:velt"}).texts, Contains("product:veltra"));
    EXPECT_THAT(complete({"sort", "typ"}).texts, Contains("type:"));
}

TEST(CompleteLineTest, OffersNamesWithWhatTheyAre) {
    const Answer answer = complete({"show", "Table.sort"});
    EXPECT_THAT(answer.texts, Contains("Table.sortBy"));
    EXPECT_THAT(answer.output, HasSubstr("Table.sortBy\tmethod: "));
    EXPECT_THAT(complete({"Table.sort"}).texts, Contains("Table.sortBy"));
    EXPECT_THAT(complete({"how", "Table.sort"}).texts, Contains("Table.sortBy"));
    // Within quotation marks, the last word.
    EXPECT_THAT(complete({"how Table.sort"}).texts, Contains("how Table.sortBy"));
    // Of the products that the line names.
    EXPECT_THAT(complete({"find", "--product", "nosuch", "Table.sort"}).texts, IsEmpty());
    // After two minus signs there are no options.
    EXPECT_THAT(complete({"find", "--", "Table.sort"}).texts, Contains("Table.sortBy"));
    EXPECT_THAT(complete({"find", "--", "--"}).texts, IsEmpty());
}

TEST(CompleteLineTest, OffersCommandsToHelpWith) {
    EXPECT_THAT(complete({"help", "impo"}).texts, ElementsAre("import"));
    EXPECT_THAT(complete({"help", "import", ""}).texts, ElementsAre("sphinx"));
    EXPECT_THAT(complete({"help", "nosuch", ""}).texts, IsEmpty());
}

TEST(CompleteLineTest, TakesWordsAsTheyWereTyped) {
    const std::vector<std::string> quoted = {"--quoted"};
    EXPECT_THAT(complete({"show", "\"Table.sort"}, quoted).texts, Contains("Table.sortBy"));
    EXPECT_THAT(complete({"show", "Ta\\ble.so'rt"}, quoted).texts, Contains("Table.sortBy"));
    EXPECT_THAT(complete({"show", "\"Table.sort"}).texts, IsEmpty());
    EXPECT_THAT(complete({"find", "--doc-root", "'" VELTRA_SHIPPED_SET "'", "Table.sort"}, quoted,
                         "/nowhere")
                    .texts,
                Contains("Table.sortBy"));
}

TEST(CompleteLineTest, AFolderMayBeginWithTheHomeFolder) {
    const std::filesystem::path set = VELTRA_SHIPPED_SET;
    const ToolRun run = runTool({"complete", "--words", "3", "--quoted", "--", "show", "--doc-root",
                                 "~/" + set.filename().string(), "Table.sort"},
                                {"HOME=" + set.parent_path().string()});
    EXPECT_THAT(run.output, StartsWith("Table.sortBy\t"));
}

TEST(CompleteLineTest, WhatStandsAfterTheCursorCounts) {
    const ToolRun run = runTool(
        {"complete", "--words", "1", "--", "show", "Table.sort", "--doc-root", VELTRA_SHIPPED_SET},
        {"VELTRA_DOC_ROOT=/nowhere"});
    EXPECT_THAT(run.output, StartsWith("Table.sortBy\t"));
}

TEST(CompleteLineTest, SaysNothingOfWhatIsWrong) {
    EXPECT_THAT(complete({"show", "Table.sort"}, {}, "/nowhere").texts, IsEmpty());
    EXPECT_THAT(complete({"sho"}, {}, "/nowhere").texts, ElementsAre("show"));
    for (const auto& arguments : std::vector<std::vector<std::string>>{
             {"complete", "--words"},
             {"complete", "--words", "0"},
             {"complete", "--words", "x", "--", "a"},
             {"complete", "--words", "-1", "--", "a"},
             {"complete", "--words", "3", "--", "a"},
             {"complete", "--words", "0", "--", "\xFF\xFE"},
             {"complete", "--words", "1", "--", "--doc-root=\xFF", "a"}}) {
        const ToolRun run = runTool(arguments, {"VELTRA_DOC_ROOT=" VELTRA_SHIPPED_SET});
        EXPECT_EQ(run.status, 1) << arguments.back();
        EXPECT_THAT(run.output + run.messages, IsEmpty()) << arguments.back();
    }
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
