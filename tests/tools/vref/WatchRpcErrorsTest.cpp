// What version 2 of the protocol answers to requests that cannot be carried out.
#include <random>
#include <string>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "RunningSession.hpp"
#include "vref/LineReader.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

namespace json = boost::json;
using ::testing::HasSubstr;

std::string member(const json::object& object, const char* name) {
    const auto* const found = object.if_contains(name);
    return found != nullptr && found->is_string() ? std::string(found->as_string()) : std::string();
}

struct ErrorRow {
    const char* method;
    const char* params;
    int code;
    const char* parameter;  // empty: the error names none
    const char* message;    // a part of it
};

constexpr ErrorRow errorRows[] = {
    {"aks", "{}", -32601, "", "did you mean \"ask\""},
    {"", "{}", -32601, "", "there is: initialize, ask"},
    {"ask", "[1]", -32602, "params", "must be an object"},
    {"ask", "{}", -32602, "question", "is missing"},
    {"ask", R"({"question":""})", -32602, "question", "is empty"},
    {"ask", R"({"question":5})", -32602, "question", "must be a text"},
    {"ask", R"({"question":"x","limit":1001})", -32602, "limit", "from 0 to 1000"},
    {"ask", R"({"question":"x","limit":-1})", -32602, "limit", "out of range"},
    {"ask", R"({"question":"x","limit":1.5})", -32602, "limit", "whole number"},
    {"ask", R"({"question":"x","limit":"5"})", -32602, "limit", "is no number"},
    {"ask", R"({"question":"x","limits":5})", -32602, "limits", "did you mean \"limit\""},
    {"ask", R"({"question":"x","fields":["name","purpos"]})", -32602, "fields[1]",
     "did you mean \"purpose\""},
    {"ask", R"({"question":"x","fields":{}})", -32602, "fields", "a list of texts"},
    {"ask", R"({"question":"x","fields":["all","name"]})", -32602, "fields[0]", "there is: name"},
    {"ask", R"({"question":"x","types":["clas"]})", -32602, "types[0]", "did you mean \"class\""},
    {"ask", R"({"question":"x","types":[5]})", -32602, "types[0]", "is no text"},
    {"ask", R"({"question":"x","products":["lumoro"]})", -32602, "products[0]",
     "did you mean \"lumora\""},
    {"ask", R"({"question":"x type:foo"})", -32602, "question", "no value of the filter"},
    {"find", "{}", -32602, "name", "is missing"},
    {"find", R"({"name":"x","all":true})", -32602, "name", "\"all\" matches everything"},
    {"find", R"({"name":"x","all":1})", -32602, "all", "true or false"},
    {"find", R"({"name":"x","search":"names"})", -32602, "search", "there is: entity, class"},
    {"find", R"({"name":"x","order":["deep"]})", -32602, "order", "a list of keys"},
    {"find", R"({"name":"x","exact":false})", -32602, "exact", "\"ask\" takes questions"},
    {"find", R"({"name":"x","product":"nothing"})", -32602, "product", "there is: veltra"},
    {"find", R"({"name":"x","ignorecase":true})", -32602, "ignorecase",
     "did you mean \"ignore-case\""},
    {"show", "{}", -32602, "question", "is missing, and so is \"href\""},
    {"show", R"({"question":"x","href":"y"})", -32602, "question", "stands beside"},
    {"show", R"({"question":"x","nth":0})", -32602, "nth", "from 1"},
    {"show", R"({"question":"x","width":5})", -32602, "width", "from 20"},
    {"show", R"({"question":"x in:foo"})", -32602, "question", "in:"},
    {"complete", "{}", -32602, "prefix", "is missing"},
    {"complete", R"({"prefix":["x"]})", -32602, "prefix", "must be a text"},
    {"complete", R"({"prefix":"x","products":["no"]})", -32602, "products[0]", "there is: veltra"},
    {"products", R"({"x":1})", -32602, "x", "there is: none"},
    {"reload", R"({"x":1})", -32602, "x", "there is: none"},
    {"setLanguage", "{}", -32602, "language", "is missing"},
    {"setLanguage", R"({"language":"xx"})", -32602, "language", "there is: en_US, ja_JP"},
    {"initialize", R"({"protocol":1})", -32602, "protocol", "must be 2"},
};

TEST(WatchRpcErrorsTest, EachErrorSaysWhatIsWrongAndWhatWouldBeRight) {
    RunningSession session;
    for (const ErrorRow& row : errorRows) {
        SCOPED_TRACE(std::string(row.method) + " " + row.params);
        session.send(R"({"jsonrpc":"2.0","id":"e","method":")" + std::string(row.method) +
                     R"(","params":)" + row.params + "}\n");
        json::object answer;
        do
            answer = session.read();
        while (!answer.contains("id"));
        ASSERT_TRUE(answer.contains("error"));
        const auto& error = answer.at("error").as_object();
        EXPECT_EQ(error.at("code"), row.code);
        EXPECT_THAT(member(error, "message"), HasSubstr(row.message));
        if (*row.parameter != '\0') {
            EXPECT_EQ(error.at("data").at("parameter"), row.parameter);
            EXPECT_FALSE(member(error.at("data").as_object(), "problem").empty());
        }
    }
    EXPECT_TRUE(session.call("products").contains("result"));
    EXPECT_EQ(session.end(), 0);
}

TEST(WatchRpcErrorsTest, AQuestionsFaultHasAPlaceInUtf16Units) {
    RunningSession session;
    // Beyond the first plane a character is two units.
    const auto answer = session.call("ask", {{"question", "\xF0\x9F\x98\x80 \xC3\xA9 type:foo"}});
    const auto& data = answer.at("error").at("data");
    EXPECT_EQ(data.at("position"), 10);
    EXPECT_EQ(data.at("length"), 3);
    EXPECT_EQ(data.at("text"), "foo");
    // Longer than a question may be.
    EXPECT_EQ(session.call("ask", {{"question", std::string(5000, 'x')}}).at("error").at("code"),
              -32602);
}

TEST(WatchRpcErrorsTest, LongLinesAreRefusedInTheirOwnVersion) {
    constexpr std::size_t most = tools::LineReader::maxLineLength;
    RunningSession session;
    const std::string begin = R"({"jsonrpc":"2.0","id":1,"method":"find","params":{"name":")";
    const std::string end = "\"}}";
    session.send(begin + std::string(most - begin.size() - end.size(), 'x') + end + "\n");
    json::object answer;
    do
        answer = session.read();
    while (!answer.contains("id"));
    EXPECT_EQ(answer.at("result").at("total"), 0);

    session.send(begin + std::string(2 * most, 'x') + end + "\n");
    answer = session.read();
    EXPECT_EQ(answer.at("id"), json::value());
    EXPECT_EQ(answer.at("error").at("code"), -32600);
    EXPECT_THAT(member(answer.at("error").as_object(), "message"), HasSubstr("longer than"));

    const auto old = session.ask(std::string(most + 1, 'x'));
    EXPECT_EQ(old.at("line"), 3);
    EXPECT_THAT(member(old, "error"), HasSubstr("longer than"));
    EXPECT_TRUE(session.call("products").contains("result"));
}

// Whatever comes, each line has one answer of a version, and the session goes on.
TEST(WatchRpcErrorsTest, AnyBytesAreAnsweredInJson) {
    const auto seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const std::string sound =
        R"({"jsonrpc":"2.0","id":"a","method":"find","params":{"name":"filter","type":["class"]}})";
    const std::string alphabet("\"\\{}[]:,0e-.x \x80\xff\xe3\x81\x82\t", 20);
    RunningSession session;
    EXPECT_TRUE(session.call("products").contains("result"));
    static_cast<void>(session.notices());
    for (int round = 0; round < 500; ++round) {
        std::string line = sound;
        for (int change = 0; change < 1 + round % 3; ++change)
            line[2 + random() % (line.size() - 2)] = alphabet[random() % alphabet.size()];
        SCOPED_TRACE(testing::PrintToString(line));
        session.send(line + "\n");
        // Where the id is lost, it is a notification: what follows shows that the session lives.
        const auto answer = session.call("complete", {{"prefix", "filt"}});
        EXPECT_TRUE(answer.contains("result"));
        EXPECT_LE(session.notices().size(), 1U);
    }
    EXPECT_EQ(session.end(), 0);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
