#include "relevance/DevDocsRule.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <regex>
#include <vector>

namespace reference::bench {
namespace {

constexpr char dot = '.';

struct Replacement {
    std::regex pattern;
    const char* text;
};

std::string replaced(std::string text, const std::vector<Replacement>& replacements) {
    for (const auto& [pattern, replacement] : replacements)
        text = std::regex_replace(text, pattern, replacement);
    return text;
}

bool beginsComponent(std::string_view name, std::size_t place) {
    return place == 0 || name[place - 1] == dot;
}

int dotsIn(std::string_view text) {
    return static_cast<int>(std::ranges::count(text, dot));
}

std::optional<int> scoreOfPlace(std::string_view name, std::string_view question,
                                std::size_t place) {
    const std::string_view before = name.substr(0, place);
    const std::string_view after = name.substr(place + question.size());
    int score = 100 - static_cast<int>(before.size() + after.size());
    if (place > 0) {
        if (beginsComponent(name, place)) {
            // What stands before a component costs no more than its dots.
            score += static_cast<int>(place) - 1;
        } else {
            if (question.size() == 1)
                return std::nullopt;
            const std::size_t component = before.rfind(dot) + 1;
            score -= static_cast<int>(place - component + 1 + after.size());
        }
        score -= dotsIn(before.substr(0, place - 1));
    }
    return std::max(1, score - 5 * dotsIn(after));
}

struct Span {
    std::size_t begin;
    std::size_t end;
};

// The first way to find all letters in their order, each as early as it can be after the one before
// it. Where the first letter's first place leads to none, no later one does.
std::optional<Span> firstSpan(std::string_view name, std::string_view letters) {
    const std::size_t begin = name.find(letters.front());
    std::size_t end = begin;
    for (const char letter : letters) {
        end = end == std::string_view::npos ? end : name.find(letter, end);
        if (end == std::string_view::npos)
            return std::nullopt;
        ++end;
    }
    return Span{begin, end};
}

int scoreOfSpan(std::string_view name, Span span) {
    const int length = static_cast<int>(span.end - span.begin);
    if (beginsComponent(name, span.begin))
        return std::max(66, 100 - length);
    if (span.end == name.size())
        return std::max(33, 67 - length);
    return std::max(1, 34 - length);
}

}  // namespace

std::string normalizedName(std::string_view name) {
    // Only in this order: a later one works on what an earlier one has made.
    static const std::vector<Replacement> replacements = {
        {std::regex(R"(\.\.\.)"), ""},
        {std::regex(R"( event$)"), ""},
        {std::regex(R"( \(\w+\)$)"), ""},
        {std::regex(R"(#|::|:-|->|\$(?=\w)|-(?=\w)|:(?=\w)| [/&-] |: | )"), "."},
        {std::regex(R"(\.+)"), "."},
        {std::regex(R"(\(\))"), ""},
        {std::regex(R"(\s)"), ""}};
    std::string lower(name);
    std::ranges::transform(lower, lower.begin(), [](char character) {
        return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                    : character;
    });
    return replaced(std::move(lower), replacements);
}

std::string normalizedQuestion(std::string_view question) {
    // Somebody who has typed a separator's first sign means the separator.
    static const std::regex unfinishedSeparator(R"((\w)[-:]$)");
    return std::regex_replace(normalizedName(question), unfinishedSeparator, "$1.");
}

std::optional<int> containedScore(std::string_view name, std::string_view question) {
    const std::size_t first = name.find(question);
    if (first == std::string_view::npos)
        return std::nullopt;
    const std::size_t last = name.rfind(question);
    return std::max(scoreOfPlace(name, question, first), scoreOfPlace(name, question, last));
}

std::optional<int> scatteredScore(std::string_view name, std::string_view question) {
    if (name.size() <= question.size() || name.find(question) != std::string_view::npos)
        return std::nullopt;
    const auto span = firstSpan(name, question);
    if (!span)
        return std::nullopt;
    int score = scoreOfSpan(name, *span);
    const std::size_t component = name.rfind(dot) + 1;
    if (const auto inLast = firstSpan(name.substr(component), question))
        score = std::max(score,
                         scoreOfSpan(name, {component + inLast->begin, component + inLast->end}));
    return score;
}

}  // namespace reference::bench
