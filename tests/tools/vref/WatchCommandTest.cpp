// The session as its clients see it; docs/watch-protocol.md is what they were promised.
#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ProtocolPage.hpp"
#include "RunningSession.hpp"
#include "RunningTool.hpp"
#include "docset/publish.hpp"
#include "support/LibraryTest.hpp"
#include "support/TempFolder.hpp"
#include "vref/LineReader.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

namespace json = boost::json;
using property::RefEntityType;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;
using ::testing::UnorderedElementsAre;

std::string text(const json::object& value, const char* member) {
    const auto* found = value.if_contains(member);
    return found != nullptr && found->is_string() ? std::string(found->as_string()) : std::string();
}

std::string error(const json::object& answer) {
    return text(answer, "error");
}

std::vector<std::string> purposes(const json::object& answer) {
    std::vector<std::string> texts;
    for (const auto& result : answer.at("results").as_array())
        texts.push_back(text(result.as_object(), "purpose"));
    return texts;
}

docset::ProductDocumentation product(const std::u16string& name, const std::u16string& purpose) {
    return ProductBuilder(name).entity(u"f", RefEntityType::Function, u"f.html", purpose).build();
}

TEST(WatchCommandTest, SaysThatItIsReadyAndWhatIsLoaded) {
    RunningSession session({"--language", "ja"});
    const auto ready = session.read();
    EXPECT_EQ(text(ready, "notice"), "ready");
    EXPECT_EQ(ready.at("protocol"), 1);
    EXPECT_EQ(text(ready, "language"), "ja_JP");
    EXPECT_EQ(ready.at("products"), 10);
    EXPECT_EQ(ready.at("entities"), 190);
    EXPECT_EQ(session.end(), 0);
}

TEST(WatchCommandTest, TheExampleOfTheDocumentationHolds) {
    const auto sent = exampleAfter("### An example of version 1", "Sent:");
    const auto received = exampleAfter("### An example of version 1", "Received:");
    ASSERT_FALSE(sent.empty());
    RunningSession session;
    for (const auto& line : sent)
        session.send(line + "\n");
    for (const auto& line : received)
        EXPECT_EQ(json::serialize(session.read()), line);
    EXPECT_EQ(session.end(), 0);
}

// Every option of find works on a line and gives what find gives.
TEST(WatchCommandTest, AnswersWhatFindAnswers) {
    const std::vector<std::vector<std::string>> requests = {
        {"filter"},
        {"TABLE", "--ignore-case", "--type", "class"},
        {"rowCount", "--ignore-package"},
        {"--all", "--product", "veltra", "--limit", "3"},
        {"--search", "purpose", "table"},
        {"--search", "text", "condition"},
        {"--search", "class", "Table"},
        {"--search", "page", "ref/filter.html"},
        {"table", "-i", "--order", "type,depth", "--explain"},
        {"--long", "filter"},
        {"y = filter(b, a, x)"},
        {"no such thing"},
    };
    RunningSession session;
    for (const auto& arguments : requests) {
        std::vector<std::string> command{"find", "--json"};
        if (arguments.front() != "--all")
            command.emplace_back("--exact");
        command.insert(command.end(), arguments.begin(), arguments.end());
        const json::array expected = runTool(command).json();
        json::array asJson;
        std::string asText;
        for (const auto& argument : arguments) {
            asJson.emplace_back(argument);
            asText += "\"" + argument + "\" ";
        }
        SCOPED_TRACE(asText);
        EXPECT_EQ(session.ask(asText).at("results"), expected);
        EXPECT_EQ(session.ask(json::serialize(asJson)).at("results"), expected);
    }
}

TEST(WatchCommandTest, TellsHowManyThereAreAndWhatElseFindTells) {
    RunningSession session;
    const auto limited = session.ask("filter --limit 1");
    EXPECT_EQ(limited.at("total"), 3);
    EXPECT_EQ(limited.at("results").as_array().size(), 1U);
    EXPECT_EQ(json::serialize(limited.at("messages")), R"x(["2 more of 3 (--limit 1)"])x");

    const auto nothing = session.ask("TABLE");
    EXPECT_EQ(nothing.at("total"), 0);
    EXPECT_EQ(json::serialize(nothing.at("messages")), R"(["nothing is called \"TABLE\""])");
    const auto& suggestion = nothing.at("suggestion").as_object();
    EXPECT_THAT(text(suggestion, "text"), StartsWith("in any case there is: "));
    const auto followed = session.ask(text(suggestion, "line"));
    EXPECT_GT(followed.at("results").as_array().size(), 0U);
}

TEST(WatchCommandTest, EachLineButBlankOnesHasOneAnswerWithItsNumber) {
    RunningSession session;
    session.send("filter\n\n \v\f\t\r\n:help\n--bogus\n:language en_US\r\nfilter");
    session.send("\n");
    std::vector<std::int64_t> lines;
    while (lines.size() < 5)
        if (const auto value = session.read(); !value.contains("notice"))
            lines.push_back(value.at("line").to_number<std::int64_t>());
    EXPECT_THAT(lines, ElementsAre(1, 4, 5, 6, 7));
}

TEST(WatchCommandTest, ALastLineWithoutAnEndIsAnswered) {
    const TempFolder folder;
    folder.write("input", "filter --limit 1\nfilter --limit 2");
    const std::string command = std::string(VELTRA_VREF " watch --json <") +
                                (folder.path() / "input").string() + " >" +
                                (folder.path() / "output").string();
    EXPECT_EQ(std::system(command.c_str()), 0);
    const std::string output = folder.read("output");
    EXPECT_EQ(std::count(output.begin(), output.end(), '\n'), 3);
    EXPECT_THAT(output, HasSubstr("\n{\"line\":2,\"total\":3,"));
}

TEST(WatchCommandTest, NoLineEndsTheSession) {
    RunningSession session;
    const std::vector<std::string> lines = {
        "--bogus",
        "--limit x filter",
        "--type nothing filter",
        "--product nothing filter",
        "--search nothing filter",
        "--order nothing filter",
        "--all filter",
        "--limit 3",
        "one two",
        ":nothing",
        ":language",
        ":language xx_XX",
        "[\"a\", 1]",
        "[\"a\"",
        "\xff\xfe",
        std::string(1, '\0'),
        std::string(tools::LineReader::maxLineLength + 1, 'x'),
        "--doc-root /tmp filter",
        "--version",
    };
    for (const auto& line : lines) {
        SCOPED_TRACE(line.substr(0, 50));
        const auto answer = session.ask(line);
        EXPECT_TRUE(answer.contains("error") || answer.at("total") == 0);
    }
    EXPECT_THAT(error(session.ask("\xff")), HasSubstr("not UTF-8"));
    EXPECT_THAT(error(session.ask(std::string(tools::LineReader::maxLineLength + 1, 'x'))),
                HasSubstr("longer than"));
    EXPECT_THAT(error(session.ask("--type nothing x")), HasSubstr("there is: "));
    EXPECT_THAT(text(session.ask("--help"), "help"), HasSubstr("--ignore-case"));
    EXPECT_EQ(session.ask("filter").at("total"), 3);
    EXPECT_EQ(session.end(), 0);
}

TEST(WatchCommandTest, AnyBytesAreAnsweredInJson) {
    const auto seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const std::string alphabet("ab:-[]\"'`\\{}= ,.*\t\r\0\x80\xff\xe3\x81\x82", 24);
    std::uniform_int_distribution<std::size_t> letters(0, alphabet.size() - 1);
    std::uniform_int_distribution<int> lengths(0, 12);
    RunningSession session;
    for (int round = 0; round < 500; ++round) {
        std::string line = "x";  // not blank
        for (int length = lengths(random); length > 0; --length)
            line += alphabet[letters(random)];
        SCOPED_TRACE(testing::PrintToString(line));
        EXPECT_NO_THROW(session.ask(line));
        EXPECT_NO_THROW(session.ask(line.substr(1) + "x"));
    }
    EXPECT_EQ(session.end(), 0);
}

TEST(WatchCommandTest, ChangesTheLanguageAndSaysSo) {
    RunningSession session;
    EXPECT_THAT(purposes(session.ask("filter --product lumora")),
                ElementsAre("Filter an image with a mask"));
    EXPECT_TRUE(session.ask(":language ja_JP").contains("done"));
    auto notices = session.notices();
    ASSERT_EQ(notices.size(), 2U);  // ready, and this
    EXPECT_EQ(text(notices[1], "notice"), "reloaded");
    EXPECT_EQ(text(notices[1], "why"), "language");
    EXPECT_EQ(text(notices[1], "language"), "ja_JP");
    EXPECT_THAT(purposes(session.ask("filter --product lumora")),
                ElementsAre("マスクによる画像のフィルター処理"));

    EXPECT_THAT(error(session.ask(":language xx")), HasSubstr("there is: en_US, ja_JP"));
    EXPECT_TRUE(session.ask(":language ja").contains("done"));
    EXPECT_THAT(session.notices(), IsEmpty()) << "it was Japanese already";
    EXPECT_THAT(purposes(session.ask("filter --product lumora")),
                ElementsAre("マスクによる画像のフィルター処理"));
}

class WatchedSetTest : public ::testing::Test {
  protected:
    WatchedSetTest() { publish(product(u"tools", u"first")); }

    void publish(const docset::ProductDocumentation& documentation) const {
        docset::publishProduct(m_root.path(), "en_US", documentation);
    }
    [[nodiscard]] const TempFolder& root() const noexcept { return m_root; }

    // Makes the session read the product from the files that people write.
    void emptyImages(const std::string& name) const {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(root().path()))
            if (entry.is_regular_file() && entry.path().extension() != ".json" &&
                entry.path().filename().string().starts_with(name))
                std::filesystem::resize_file(entry.path(), 0);
    }

  private:
    TempFolder m_root;
};

TEST_F(WatchedSetTest, ARequestIsAnsweredFromWhatIsOnTheDisk) {
    RunningSession session({"--doc-root", root().path().string()});
    EXPECT_THAT(purposes(session.ask("f")), ElementsAre("first"));
    for (const char16_t* edition : {u"second", u"third", u"fourth"}) {
        static_cast<void>(session.notices());
        publish(product(u"tools", edition));
        EXPECT_THAT(purposes(session.ask("f")),
                    ElementsAre(std::string(
                        edition, edition + std::char_traits<char16_t>::length(edition))));
        const auto notices = session.notices();
        ASSERT_EQ(notices.size(), 1U);
        EXPECT_EQ(text(notices[0], "why"), "documentation");
    }
}

TEST_F(WatchedSetTest, AChangeIsNoticedWhileNobodyAsks) {
    RunningSession session({"--doc-root", root().path().string()});
    EXPECT_EQ(text(session.read(), "notice"), "ready");
    publish(product(u"more", u"added"));
    const auto notice = session.read();
    EXPECT_EQ(text(notice, "notice"), "reloaded");
    EXPECT_EQ(text(notice, "why"), "documentation");
    EXPECT_EQ(notice.at("products"), 2);
}

TEST_F(WatchedSetTest, AManifestThatCannotBeReadTakesNothingAway) {
    RunningSession session({"--doc-root", root().path().string()});
    EXPECT_THAT(purposes(session.ask("f")), ElementsAre("first"));
    static_cast<void>(session.notices());
    const std::string manifest = root().read("documentation-set.json");
    root().write("documentation-set.json", manifest.substr(0, manifest.size() / 2));
    EXPECT_THAT(purposes(session.ask("f")), ElementsAre("first"));
    auto notices = session.notices();
    ASSERT_EQ(notices.size(), 1U);
    EXPECT_EQ(text(notices[0], "notice"), "warning");
    EXPECT_THAT(text(notices[0], "text"), HasSubstr("documentation-set.json:"));

    root().write("documentation-set.json", manifest);
    EXPECT_THAT(purposes(session.ask("f")), ElementsAre("first"));
    notices = session.notices();
    ASSERT_EQ(notices.size(), 1U);
    EXPECT_EQ(text(notices[0], "notice"), "reloaded");
}

TEST_F(WatchedSetTest, ReloadsOnRequestWhatTheManifestDoesNotTell) {
    RunningSession session({"--doc-root", root().path().string()});
    EXPECT_THAT(purposes(session.ask("f")), ElementsAre("first"));
    const std::string file = "en_US/tools-1.reference.json";
    std::string content = root().read(file);
    content.replace(content.find("first"), 5, "typed");
    root().write(file, content);
    EXPECT_THAT(purposes(session.ask("f")), ElementsAre("first"));
    EXPECT_TRUE(session.ask(":reload").contains("done"));
    EXPECT_EQ(text(session.notices().back(), "why"), "request");
    EXPECT_THAT(purposes(session.ask("f --search entity")), ElementsAre("typed"));
}

TEST_F(WatchedSetTest, AProductThatCannotBeReadIsAWarningAndTheOthersAnswer) {
    publish(product(u"other", u"sound"));
    root().write("en_US/tools-1.reference.json", "{");
    RunningSession session({"--doc-root", root().path().string()});
    EXPECT_THAT(purposes(session.ask("f")), ElementsAre("sound"));
    const auto notices = session.notices();
    ASSERT_EQ(notices.size(), 2U);  // ready, and this
    EXPECT_EQ(text(notices[1], "notice"), "warning");
    EXPECT_THAT(text(notices[1], "text"), HasSubstr("en_US/tools-1.reference.json:1:2"));
}

// Until the system reads a file again, each answer says what it misses; then all is there.
TEST_F(WatchedSetTest, EachAnswerSaysWhatItMissesUntilItCanBeRead) {
    publish(product(u"other", u"sound"));
    emptyImages("tools");
    RunningSession session({"--doc-root", root().path().string()},
                           failing("tools-1.lookup.json", "read", EIO, "2"));
    EXPECT_EQ(text(session.read(), "notice"), "warning");
    EXPECT_EQ(session.read().at("products"), 1);
    for (int question = 0; question < 2; ++question) {
        EXPECT_THAT(purposes(session.ask("f")), ElementsAre("sound"));
        const auto notices = session.notices();
        ASSERT_EQ(notices.size(), 1U) << question;
        EXPECT_EQ(text(notices[0], "notice"), "warning");
        EXPECT_THAT(text(notices[0], "text"),
                    AllOf(HasSubstr("left out: "), HasSubstr("tools-1.lookup.json")));
    }
    const auto notice = session.read();
    EXPECT_EQ(text(notice, "notice"), "reloaded");
    EXPECT_EQ(text(notice, "why"), "documentation");
    EXPECT_EQ(notice.at("products"), 2);
    EXPECT_THAT(purposes(session.ask("f")), UnorderedElementsAre("first", "sound"));
    EXPECT_THAT(session.notices(), IsEmpty());
}

// What is loaded goes only when what is to replace it can be had.
TEST_F(WatchedSetTest, WhatCannotBeReadTakesTheWordsOfACommandBack) {
    docset::publishProduct(root().path(), "ja_JP", product(u"tools", u"最初"));
    RunningSession session({"--doc-root", root().path().string(), "--language", "en"});
    EXPECT_THAT(purposes(session.ask("f")), ElementsAre("first"));
    const std::string manifest = root().read("documentation-set.json");
    root().write("documentation-set.json", manifest.substr(0, manifest.size() / 2));
    for (const char* command : {":reload", ":language ja"}) {
        EXPECT_THAT(error(session.ask(command)), HasSubstr("documentation-set.json:")) << command;
        EXPECT_THAT(purposes(session.ask("f")), ElementsAre("first")) << command;
    }
    for (const auto& notice : session.notices())
        EXPECT_NE(text(notice, "notice"), "reloaded");
    root().write("documentation-set.json", manifest);
    EXPECT_TRUE(session.ask(":language ja").contains("done"));
    EXPECT_THAT(purposes(session.ask("f")), ElementsAre("最初"));
}

TEST(WatchCommandForPersonTest, EndsEachAnswerWithAnEmptyLineAndKeepsMessagesApart) {
    const TempFolder folder;
    folder.write("input", "--exact filter --limit 1\n--exact TABLE\n:language ja\n--bogus\n");
    const std::string path = folder.path().string();
    const std::string command =
        "cd '" + path + "' && " VELTRA_VREF " watch <input >output 2>messages";
    EXPECT_EQ(std::system(command.c_str()), 0);
    EXPECT_EQ(folder.read("output"),
              "filter  function  brisk  Filter a signal with a rational transfer function\n"
              "\n\n\n\n");
    EXPECT_EQ(folder.read("messages"),
              "vref: ready: 10 products, 190 entities (en_US); :help tells what may be asked\n"
              "vref: 2 more of 3 (--limit 1)\n"
              "vref: nothing is called \"TABLE\"\n"
              "vref: in any case there is: table, Table\n"
              "      --ignore-case TABLE\n"
              "vref: the language is now ja_JP: 10 products, 190 entities (ja_JP)\n"
              "vref: The following argument was not expected: --bogus\n");
}

TEST(WatchCommandForPersonTest, WithoutDocumentationThereIsNoSession) {
    const ToolRun run = runTool({"watch", "--doc-root", "/nowhere"});
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.messages, HasSubstr("There is no usable documentation set."));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
