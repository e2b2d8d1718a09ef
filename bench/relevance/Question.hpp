#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace reference::bench {

// A question with its right answers, in UTF-8.
struct Question {
    std::string text;
    std::string kind;
    // Labels of entities; any of them is right.
    std::vector<std::string> right;

    // The place of the first right answer among those that were found, counted from 1; 0 where
    // there is none.
    [[nodiscard]] std::size_t rankIn(const std::vector<std::string>& found) const;
};

// Reads a JSON array of {"question", "kind", "right": ["product:name"]}. Throws std::runtime_error
// where the file cannot be read, and what the JSON parser throws.
[[nodiscard]] std::vector<Question> readQuestions(const std::filesystem::path& file);

}  // namespace reference::bench
