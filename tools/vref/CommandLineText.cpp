#include "vref/CommandLineText.hpp"

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <string_view>
#include <utility>

#include <boost/json/array.hpp>

#include "docset/JsonText.hpp"
#include "fl/i18n/utf.hpp"
#include "vref/ExitStatus.hpp"

namespace reference::tools {
namespace {

constexpr std::string_view whiteSpace = " \t\r\n\v\f";

// The text without those characters at either end.
std::string_view without(std::string_view characters, std::string_view text) {
    const auto begin = text.find_first_not_of(characters);
    if (begin == std::string_view::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(characters) - begin + 1);
}

}  // namespace

std::u16string fromCommandLine(const std::string& text) {
    try {
        return fl::i18n::toUtf16(text);
    } catch (const std::invalid_argument&) {
        throw UnusableError("The command line holds text that is not UTF-8.");
    }
}

std::string trimmed(const std::string& text) {
    return std::string(without(whiteSpace, text));
}

std::string nameInPastedCode(const std::string& text) {
    std::string_view name = without(whiteSpace, text);
    for (const std::string_view prompt : {">>>", "..."})
        if (name.starts_with(prompt))
            name = without(whiteSpace, name.substr(prompt.size()));
    name = name.substr(0, name.find('('));
    if (const auto assignment = name.rfind('='); assignment != std::string_view::npos)
        name = name.substr(assignment + 1);
    name = without(" \t\r\n.,;:\"'`)", name);
    // What is left of it: "return f", "new Table", "x + f". Words without any code are words.
    const bool isCode = text.find_first_of("(=") != std::string::npos;
    if (const auto space = name.find_last_of(whiteSpace); isCode && space != std::string_view::npos)
        name = name.substr(space + 1);
    return name.empty() ? text : std::string(name);
}

std::vector<std::string> splitLine(std::string_view line) {
    constexpr std::string_view quotes = "\"'`";
    std::vector<std::string> arguments;
    for (std::size_t at = line.find_first_not_of(whiteSpace); at < line.size();
         at = line.find_first_not_of(whiteSpace, at)) {
        std::string argument;
        if (quotes.find(line[at]) != std::string_view::npos) {
            const char quote = line[at++];
            for (; at < line.size() && line[at] != quote; ++at) {
                if (line.substr(at, 2) == std::string{'\\', quote})
                    ++at;
                argument += line[at];
            }
            at = std::min(at + 1, line.size());
        } else {
            const std::size_t begin = at;
            const bool isOption = line[begin] == '-';
            const auto endsOption = [&] {
                return isOption && line[at] == '=' && at + 1 < line.size() &&
                       quotes.find(line[at + 1]) != std::string_view::npos;
            };
            while (at < line.size() && whiteSpace.find(line[at]) == std::string_view::npos &&
                   !endsOption())
                ++at;
            argument = line.substr(begin, at - begin);
            if (at < line.size())
                ++at;
        }
        if (!argument.empty())
            arguments.push_back(std::move(argument));
    }
    return arguments;
}

std::string joinLine(std::span<const std::string> arguments) {
    std::string line;
    for (const auto& argument : arguments) {
        const bool isPlain = splitLine(argument) == std::vector<std::string>{argument};
        std::string quoted = "\"";
        for (const char unit : argument)
            quoted += unit == '"' ? std::string("\\\"") : std::string(1, unit);
        line += (line.empty() ? "" : " ") + (isPlain ? argument : quoted + "\"");
    }
    const bool isOneLine = line.find_first_of("\r\n") == std::string::npos;
    if (isOneLine && std::ranges::equal(splitLine(line), arguments))
        return line;
    return docset::toJsonText(boost::json::array(arguments.begin(), arguments.end()));
}

}  // namespace reference::tools
