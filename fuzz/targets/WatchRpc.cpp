// A session of version 2: every line that is written is one value of JSON, and each request that
// has an id is answered once.
#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <variant>

#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>

#include "FuzzTarget.hpp"
#include "WatchedSession.hpp"
#include "vref/RpcMessage.hpp"

namespace reference::fuzz {
namespace VELTRA_TEST_FILE {

namespace json = boost::json;

// How many answers there are, by the id.
using Answers = std::map<std::string, std::size_t>;

void countAnswer(const json::value& value, std::string_view line, Answers& answers) {
    require(value.is_object(), "An answer is an object", line);
    const auto& object = value.get_object();
    require(object.contains("jsonrpc") && object.at("jsonrpc") == "2.0", "It is of version 2",
            line);
    require(object.contains("id"), "An answer has an id", line);
    require(object.contains("result") != object.contains("error"),
            "An answer is a result or an error", line);
    if (const auto* const error = object.if_contains("error"))
        require(error->is_object() && error->get_object().at("code").is_int64() &&
                    error->get_object().at("message").is_string(),
                "An error has a code and a message", line);
    ++answers[json::serialize(object.at("id"))];
}

Answers answersIn(const std::string& output) {
    Answers answers;
    for (const auto line : linesOf(output)) {
        json::error_code problem;
        const json::value value = json::parse({line.data(), line.size()}, problem);
        require(!problem, "A line is JSON", line);
        if (value.is_array()) {
            require(!value.get_array().empty(), "A list of answers has some", line);
            for (const auto& each : value.get_array())
                countAnswer(each, line, answers);
        } else if (value.is_object() && !value.get_object().contains("notice") &&
                   !value.get_object().contains("method")) {
            countAnswer(value, line, answers);
        }
    }
    return answers;
}

// Returns whether the session goes on after the line.
bool expect(std::string_view line, Answers& answers) {
    bool goesOn = true;
    for (const auto& message : tools::parseRpcLine(line).messages) {
        if (const auto* const refusal = std::get_if<tools::RpcRefusal>(&message)) {
            ++answers[json::serialize(refusal->id)];
            continue;
        }
        const auto& request = std::get<tools::RpcRequest>(message);
        goesOn = goesOn && request.method != "shutdown";
        if (request.id)
            ++answers[json::serialize(*request.id)];
    }
    return goesOn;
}

void run(std::string_view input) {
    std::string text = R"({"jsonrpc":"2.0","method":"initialize","id":"first"})"
                       "\n";
    Answers expected = {{"\"first\"", 1}};
    std::size_t lines = 0;
    for (const auto line : linesOf(input)) {
        // A cap: a request takes a while.
        constexpr std::size_t mostLines = 12;
        if (++lines > mostLines)
            break;
        if (!tools::isRpcLine(line, true))
            continue;
        text += std::string(line) + "\n";
        if (!expect(line, expected))
            break;
    }
    const Answers actual = answersIn(watched(text));
    for (const auto& [id, count] : expected) {
        const auto found = actual.find(id);
        require(found != actual.end() && found->second == count, "Each request is answered once",
                id);
    }
    require(actual.size() == expected.size(), "Nothing else is answered");
}

const FuzzTarget target("WatchRpc", &run);

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::fuzz
