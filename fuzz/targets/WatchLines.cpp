// A session of version 1: each line gets one answer, each answer is one line of JSON, and a
// suggestion can be sent as it stands and then finds something.
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>

#include "FuzzTarget.hpp"
#include "WatchedSession.hpp"
#include "vref/RpcMessage.hpp"

namespace reference::fuzz {
namespace VELTRA_TEST_FILE {

namespace json = boost::json;

json::object objectIn(std::string_view line) {
    json::error_code problem;
    const json::value value = json::parse({line.data(), line.size()}, problem);
    require(!problem && value.is_object(), "A line is an object of JSON", line);
    return value.get_object();
}

bool isBlank(std::string_view line) {
    return line.find_first_not_of(" \t\r\n\v\f") == std::string_view::npos;
}

// The answers of a session, which have the numbers of the lines, in their order.
std::vector<json::object> answersTo(const std::string& input) {
    std::vector<json::object> answers;
    std::size_t last = 0;
    const std::string output = watched(input);
    require(output.ends_with('\n'), "The last line has an end", output);
    for (const auto line : linesOf(output)) {
        json::object object = objectIn(line);
        if (object.contains("notice"))
            continue;
        require(object.contains("line") && object.at("line").is_int64(), "An answer has a line",
                line);
        const auto number = static_cast<std::size_t>(object.at("line").get_int64());
        require(number > last, "Answers come in the order of their lines", line);
        last = number;
        int kinds = 0;
        for (const char* const kind : {"results", "error", "help", "done"})
            kinds += object.contains(kind) ? 1 : 0;
        require(kinds == 1, "An answer is of one kind", line);
        answers.push_back(std::move(object));
    }
    return answers;
}

void checkSuggestion(const json::object& suggestion) {
    const std::string line(suggestion.at("line").as_string());
    require(line.find('\n') == std::string::npos, "A suggestion is one line", line);
    const auto answers = answersTo(line + "\n");
    require(answers.size() == 1 && answers.front().contains("total"), "A suggestion is understood",
            line);
    require(answers.front().at("total").to_number<std::size_t>() > 0,
            "A suggestion finds something", line);
}

void run(std::string_view input) {
    std::string text;
    std::size_t expected = 0;
    std::size_t lines = 0;
    for (const auto line : linesOf(input)) {
        // A cap: a request takes a while. And other lines than those of version 1 have a target of
        // their own.
        constexpr std::size_t mostLines = 12;
        if (++lines > mostLines)
            break;
        if (tools::isRpcLine(line, false))
            continue;
        text += std::string(line) + "\n";
        expected += isBlank(line) ? 0U : 1U;
    }
    const auto answers = answersTo(text);
    require(answers.size() == expected, "Each line that is not blank has one answer",
            std::to_string(answers.size()) + " for " + std::to_string(expected));
    for (const auto& answer : answers)
        if (const auto* const suggestion = answer.if_contains("suggestion"))
            checkSuggestion(suggestion->as_object());
}

const FuzzTarget target("WatchLines", &run);

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::fuzz
