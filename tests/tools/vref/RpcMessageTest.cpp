// What the lines of version 2 mean, whatever the methods are.
#include <string>
#include <variant>

#include <boost/json/serialize.hpp>
#include <gtest/gtest.h>

#include "vref/RpcMessage.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

namespace json = boost::json;
using tools::isRpcLine;
using tools::parseRpcLine;

TEST(RpcMessageTest, ALineSaysItselfWhichVersionItIs) {
    struct Row {
        const char* line;
        bool isRpcOfStranger;
        bool isRpcOfKnownClient;
    };
    const Row rows[] = {
        {R"({"jsonrpc":"2.0","method":"ask"})", true, true},
        {R"(  { "id": 1, "jsonrpc":"2.0" })", true, true},
        {R"([{"jsonrpc":"2.0"}])", true, true},
        {R"( [ { "jsonrpc" : 1)", true, true},
        {R"({"a": 1}.items())", false, true},
        {R"([{"a": 1}].append(2))", false, true},
        {R"(["--limit", "20", "jsonrpc"])", false, false},
        {R"(["{\"jsonrpc\": 1}"])", false, false},
        {R"("jsonrpc")", false, false},
        {"{}", false, false},
        {"[]", false, false},
        {"{", false, false},
        {"{x}", false, false},
        {"[[{\"jsonrpc\":1}]]", false, false},
        {"filter --limit 1", false, false},
        {":reload", false, false},
        {"", false, false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(isRpcLine(row.line, false), row.isRpcOfStranger) << row.line;
        EXPECT_EQ(isRpcLine(row.line, true), row.isRpcOfKnownClient) << row.line;
    }
}

// A request as "method(params) -> id", a refusal as "code -> id".
std::string dump(const tools::RpcMessage& message) {
    if (const auto* const refusal = std::get_if<tools::RpcRefusal>(&message))
        return std::to_string(static_cast<int>(refusal->error.code())) + " -> " +
               json::serialize(refusal->id);
    const auto& request = std::get<tools::RpcRequest>(message);
    return request.method + "(" + json::serialize(request.params) + ")" +
           (request.id ? " -> " + json::serialize(*request.id) : "");
}

std::string dump(const tools::RpcLine& line) {
    std::string all;
    for (const auto& message : line.messages)
        all += (all.empty() ? "" : ", ") + dump(message);
    return line.isBatch ? "[" + all + "]" : all;
}

TEST(RpcMessageTest, RequestsNotificationsAndListsAreRead) {
    struct Row {
        const char* line;
        const char* meaning;
    };
    const Row rows[] = {
        {R"({"jsonrpc":"2.0","id":7,"method":"ask","params":{"a":1}})", R"(ask({"a":1}) -> 7)"},
        {R"({"method":"ask","id":"x","jsonrpc":"2.0"})", R"(ask({}) -> "x")"},
        {R"({"jsonrpc":"2.0","id":-1,"method":""})", R"(({}) -> -1)"},
        {R"({"jsonrpc":"2.0","id":18446744073709551615,"method":"m"})",
         R"(m({}) -> 18446744073709551615)"},
        {R"({"jsonrpc":"2.0","id":"","method":"m","params":[]})", R"(m([]) -> "")"},
        {R"({"jsonrpc":"2.0","method":"m"})", R"(m({}))"},
        {R"({"jsonrpc":"2.0","id":null,"method":"m","params":[1]})", R"(m([1]))"},
        {R"({"jsonrpc":"2.0","id":1,"method":"m","more":true})", R"(m({}) -> 1)"},

        {R"({"jsonrpc":"2.0","id":1)", "-32700 -> null"},
        {R"({"jsonrpc":"2.0","id":1,"method":"m"} x)", "-32700 -> null"},
        {"{\"jsonrpc\":\"\xff\"}", "-32700 -> null"},
        {R"({"jsonrpc":"\ud800"})", "-32700 -> null"},

        {R"({"jsonrpc":"1.0","id":1,"method":"m"})", "-32600 -> 1"},
        {R"({"jsonrpc":2.0,"id":1,"method":"m"})", "-32600 -> 1"},
        {R"({"id":1,"method":"m"})", "-32600 -> 1"},
        {R"({"jsonrpc":"2.0","id":"x"})", R"(-32600 -> "x")"},
        {R"({"jsonrpc":"2.0","id":1,"method":5})", "-32600 -> 1"},
        {R"({"jsonrpc":"2.0","id":[1],"method":"m"})", "-32600 -> null"},
        {R"({"jsonrpc":"2.0","id":true,"method":"m"})", "-32600 -> null"},
        {R"({"jsonrpc":"2.0","id":1,"method":"m","params":"x"})", "-32600 -> 1"},
        {R"({"jsonrpc":"2.0","id":1,"method":"m","params":null})", "-32600 -> 1"},
        {R"({"jsonrpc":"2.0","id":1,"result":5})", "-32600 -> 1"},

        {R"([{"jsonrpc":"2.0","id":1,"method":"a"},{"jsonrpc":"2.0","method":"b"},3,{}])",
         "[a({}) -> 1, b({}), -32600 -> null, -32600 -> null]"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(dump(parseRpcLine(row.line)), row.meaning) << row.line;
}

TEST(RpcMessageTest, ThereIsABoundToDepthAndToLists) {
    const std::string deep(100000, '[');
    EXPECT_EQ(dump(parseRpcLine(R"({"jsonrpc":"2.0","id":1,"params":)" + deep)), "-32700 -> null");

    const auto listOf = [](std::size_t count) {
        std::string line = "[{}";
        while (--count > 0)
            line += ",{}";
        return line + "]";
    };
    EXPECT_EQ(parseRpcLine(listOf(tools::RpcLine::maxBatch)).messages.size(),
              tools::RpcLine::maxBatch);
    EXPECT_EQ(dump(parseRpcLine(listOf(tools::RpcLine::maxBatch + 1))), "-32600 -> null");
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
