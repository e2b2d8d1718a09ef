// Version 2 of the protocol as an editor sees it; docs/watch-protocol.md is what it was promised.
#include <algorithm>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ProtocolPage.hpp"
#include "RunningSession.hpp"
#include "RunningTool.hpp"
#include "rpcResults.hpp"
#include "support/TempFolder.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

namespace json = boost::json;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

std::vector<std::string> keys(const json::object& object) {
    std::vector<std::string> names;
    for (const auto& member : object)
        names.emplace_back(member.key());
    return names;
}

TEST(WatchRpcTest, InitializeSaysWhatThereIs) {
    RunningSession session;
    const auto result =
        session.resultOf("initialize", {{"protocol", 2}, {"clientInfo", {{"name", "test"}}}});
    EXPECT_EQ(result.at("protocol"), 2);
    EXPECT_EQ(json::serialize(result.at("protocols")), "[1,2]");
    EXPECT_EQ("vref " + textAt(result, "/server/version") + "\n", runTool({"--version"}).output);
    EXPECT_EQ(result.at("language"), "en_US");
    EXPECT_EQ(result.at("products"), 10);
    EXPECT_EQ(result.at("entities"), 190);
    for (const auto& method : result.at("capabilities").at("methods").as_array()) {
        const auto answer = session.call(std::string(method.as_string()));
        const auto* const error = answer.if_contains("error");
        EXPECT_TRUE(error == nullptr || error->at("code") != -32601) << method;
    }
}

TEST(WatchRpcTest, TheExampleOfTheDocumentationHolds) {
    const std::string heading = "## An example of version 2";
    const auto sent = exampleAfter(heading, "Sent, each line after the answer to the one before:");
    const auto received = exampleAfter(heading, "Received:");
    ASSERT_FALSE(sent.empty());
    RunningSession session;
    std::vector<std::string> lines{session.readLine()};
    for (const auto& line : sent) {
        session.send(line + "\n");
        do
            lines.push_back(session.readLine());
        while (!lines.back().starts_with("[") &&
               !json::parse(lines.back()).as_object().contains("id"));
    }
    EXPECT_EQ(lines, received);
    EXPECT_EQ(session.end(), 0);
}

TEST(WatchRpcTest, AskFindsWhatIsMeant) {
    RunningSession session;
    const auto result = session.resultOf("ask", {{"question", "FILTER"}, {"limit", 2}});
    EXPECT_EQ(result.at("total"), 6);
    EXPECT_EQ(result.at("hits").as_array().size(), 2U);
    EXPECT_THAT(keys(firstHit(result)), ElementsAre("name", "type", "product", "purpose", "href",
                                                    "rung", "change", "deprecated"));
    EXPECT_EQ(firstHit(result).at("name"), "filter");
    EXPECT_EQ(firstHit(result).at("type"), "function");
    EXPECT_EQ(firstHit(result).at("rung"), "any-case");
    EXPECT_EQ(firstHit(result).at("deprecated"), false);

    // The ten hits of a keystroke are a few lines, not whole pages.
    EXPECT_LT(json::serialize(session.call("ask", {{"question", "t"}})).size(), 4000U);

    const auto inProduct = session.resultOf(
        "ask", {{"question", "filter"}, {"products", {"lumora"}}, {"types", {"function"}}});
    EXPECT_THAT(textsIn(inProduct, "hits", "product"), ElementsAre("lumora"));
    EXPECT_EQ(session.resultOf("ask", {{"question", "filter"}, {"prefer", {"lumora", "absent"}}})
                  .at("hits")
                  .at(0)
                  .at("product"),
              "lumora");
    const auto filtered =
        session.resultOf("ask", {{"question", "filter"}, {"types", {"event"}}, {"limit", 5}});
    EXPECT_EQ(filtered.at("total"), 0);
    EXPECT_GT(filtered.at("filteredAway").to_number<int>(), 0);
    EXPECT_EQ(filtered.at("turnedAway").at(0).at("name"), "filter");
}

TEST(WatchRpcTest, FieldsChooseTheMembersOfAHit) {
    RunningSession session;
    const json::object question{{"question", "filter"}, {"limit", 1}};
    const auto askedFor = [&](const json::value& fields) {
        json::object params = question;
        params["fields"] = fields;
        return firstHit(session.resultOf("ask", params));
    };
    EXPECT_THAT(keys(askedFor({"purpose", "name"})), ElementsAre("name", "purpose"));
    EXPECT_THAT(keys(askedFor("href")), ElementsAre("href"));
    EXPECT_THAT(keys(askedFor(json::array())), IsEmpty());

    // All that "vref find --json" prints is there.
    const auto all = askedFor("all");
    const auto printed = runTool({"find", "filter", "--limit", "1", "--json"}).json();
    for (const auto& member : printed.at(0).as_object())
        EXPECT_EQ(all.at(member.key()), member.value()) << member.key();
}

// Every option of find gives what find gives.
TEST(WatchRpcTest, FindAnswersWhatFindAnswers) {
    struct Row {
        json::object params;
        std::vector<std::string> arguments;
    };
    const Row rows[] = {
        {{{"name", "filter"}}, {"filter"}},
        {{{"name", "TABLE"}, {"ignore-case", true}, {"type", "class"}},
         {"TABLE", "--ignore-case", "--type", "class"}},
        {{{"name", "rowCount"}, {"ignore-package", true}}, {"rowCount", "--ignore-package"}},
        {{{"all", true}, {"product", {"veltra", "qix"}}, {"limit", 3}},
         {"--all", "--product", "veltra", "--product", "qix", "--limit", "3"}},
        {{{"name", "table"}, {"search", "purpose"}}, {"table", "--search", "purpose"}},
        {{{"name", "condition"}, {"search", "text"}}, {"condition", "--search", "text"}},
        {{{"name", "Table"}, {"search", "class"}}, {"Table", "--search", "class"}},
        {{{"name", "ref/filter.html"}, {"search", "page"}},
         {"ref/filter.html", "--search", "page"}},
        {{{"name", "table"},
          {"ignore-case", true},
          {"order", {"type", "depth"}},
          {"explain", true}},
         {"table", "-i", "--order", "type,depth", "--explain"}},
        {{{"name", "filter"}, {"exact", true}, {"limit", 0}}, {"filter", "--limit", "0"}},
        {{{"name", "no such thing"}}, {"no such thing"}},
    };
    RunningSession session;
    for (Row row : rows) {
        SCOPED_TRACE(json::serialize(row.params));
        std::vector<std::string> command{"find", "--json"};
        if (row.arguments.front() != "--all")
            command.emplace_back("--exact");
        command.insert(command.end(), row.arguments.begin(), row.arguments.end());
        const json::array expected = runTool(command).json();
        row.params["fields"] = "all";
        row.params.emplace("limit", 1000);
        const auto result = session.resultOf("find", row.params);
        const auto& hits = result.at("hits").as_array();
        EXPECT_GE(result.at("total").to_number<std::size_t>(), hits.size());
        ASSERT_EQ(hits.size(), expected.size());
        for (std::size_t at = 0; at < hits.size(); ++at)
            for (const auto& member : expected[at].as_object())
                EXPECT_EQ(hits[at].at(member.key()), member.value()) << member.key();
    }
}

TEST(WatchRpcTest, FindNamesTheEntityThatWasAskedFor) {
    RunningSession session;
    const auto result = session.resultOf("find", {{"name", "filter"}, {"limit", 1}});
    EXPECT_EQ(result.at("total"), 3);
    EXPECT_THAT(keys(firstHit(result)),
                ElementsAre("name", "type", "product", "purpose", "href", "deprecated"));
    EXPECT_EQ(firstHit(result).at("name"), "filter");
}

TEST(WatchRpcTest, ShowHasThePageAsItIsShown) {
    RunningSession session;
    const auto shown = session.resultOf("show", {{"question", "filter"}});
    EXPECT_EQ(textAt(shown, "/text"), runTool({"show", "filter"}).output);
    EXPECT_EQ(shown.at("total"), 6);
    EXPECT_EQ(shown.at("hit").at("name"), "filter");
    EXPECT_TRUE(shown.at("hit").as_object().contains("syntaxGroups"));

    const auto second =
        session.resultOf("show", {{"question", "filter"}, {"nth", 2}, {"fields", {"product"}}});
    EXPECT_EQ(textAt(second, "/text"), runTool({"show", "filter", "--nth", "2"}).output);
    EXPECT_THAT(keys(second.at("hit").as_object()), ElementsAre("product"));

    const auto page =
        session.resultOf("show", {{"href", "ref/filter.html"}, {"products", {"lumora"}}});
    EXPECT_EQ(textAt(page, "/text"),
              runTool({"show", "ref/filter.html", "--product", "lumora"}).output);

    const auto narrow = session.resultOf("show", {{"question", "filter"}, {"width", 40}});
    EXPECT_NE(narrow.at("text"), shown.at("text"));

    for (const json::object& params : {json::object{{"question", "filter"}, {"nth", 50}},
                                       json::object{{"href", "ref/absent.html"}}}) {
        const auto none = session.resultOf("show", params);
        EXPECT_EQ(none.at("hit"), json::value());
        EXPECT_EQ(none.at("text"), "");
    }
}

TEST(WatchRpcTest, CompleteGoesOnFromABeginning) {
    RunningSession session;
    const auto result = session.resultOf("complete", {{"prefix", "filt"}, {"limit", 3}});
    EXPECT_EQ(result.at("completions"),
              runTool({"complete", "filt", "--limit", "3", "--json"}).json());
    ASSERT_FALSE(result.at("completions").as_array().empty());
    EXPECT_EQ(result.at("completions").at(0).at("text"), "filter");
    EXPECT_THAT(session.resultOf("complete", {{"prefix", "zzz"}}).at("completions").as_array(),
                IsEmpty());
    EXPECT_TRUE(session.call("complete", {{"prefix", ""}}).contains("result"));
    EXPECT_THAT(session.resultOf("complete", {{"prefix", "filt"}, {"products", {"pendrake"}}})
                    .at("completions")
                    .as_array(),
                IsEmpty());
}

TEST(WatchRpcTest, ProductsAreListed) {
    RunningSession session;
    EXPECT_EQ(session.resultOf("products").at("products"), runTool({"products", "--json"}).json());
}

TEST(WatchRpcTest, ShutdownEndsTheSessionAfterAllAnswers) {
    RunningSession session;
    static_cast<void>(session.read());
    session.send(R"({"jsonrpc":"2.0","id":1,"method":"ask","params":{"question":"t"}})"
                 "\n"
                 R"({"jsonrpc":"2.0","id":2,"method":"shutdown"})"
                 "\nfilter\n");
    EXPECT_EQ(session.read().at("id"), 1);
    EXPECT_EQ(json::serialize(session.read()), R"({"jsonrpc":"2.0","id":2,"result":null})");
    EXPECT_THROW(static_cast<void>(session.read()), std::runtime_error);
    EXPECT_EQ(session.end(), 0);
}

TEST(WatchRpcTest, TheEndOfTheInputLeavesNothingUnanswered) {
    const TempFolder folder;
    std::string lines;
    constexpr int requests = 200;
    for (int id = 0; id < requests; ++id)
        lines += R"({"jsonrpc":"2.0","id":)" + std::to_string(id) +
                 R"(,"method":"ask","params":{"question":"table"}})" + "\n";
    folder.write("input", lines + R"([{"jsonrpc":"2.0","id":"last","method":"products"}])");
    const std::string command = std::string(VELTRA_VREF " watch --json <") +
                                (folder.path() / "input").string() + " >" +
                                (folder.path() / "output").string();
    EXPECT_EQ(std::system(command.c_str()), 0);
    const std::string output = folder.read("output");
    EXPECT_EQ(std::count(output.begin(), output.end(), '\n'), requests + 2);
    EXPECT_THAT(output, HasSubstr("[{\"jsonrpc\":\"2.0\",\"id\":\"last\",\"result\""));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
