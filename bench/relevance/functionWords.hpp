#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace reference::bench {

// Words that ask rather than say what is asked for. Rivals that take a list of such words get this
// one. It is in lower case and sorted.
inline constexpr std::array functionWords = std::to_array<std::string_view>(
    {"a",       "an",    "and",   "any",  "are",    "as",   "at",    "be",   "by",   "can",
     "could",   "do",    "does",  "each", "every",  "for",  "from",  "get",  "has",  "have",
     "how",     "i",     "if",    "in",   "into",   "is",   "it",    "its",  "me",   "my",
     "of",      "on",    "or",    "out",  "should", "so",   "some",  "that", "the",  "their",
     "there",   "they",  "this",  "to",   "up",     "use",  "want",  "what", "when", "where",
     "whether", "which", "while", "who",  "will",   "with", "would", "you"});

[[nodiscard]] inline bool isFunctionWord(std::string_view word) {
    return std::ranges::binary_search(functionWords, word);
}

}  // namespace reference::bench
