#include "relevance/Question.hpp"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>
#include <boost/json/value_to.hpp>

namespace reference::bench {

std::size_t Question::rankIn(const std::vector<std::string>& found) const {
    const auto first = std::ranges::find_if(found, [this](const std::string& label) {
        return std::ranges::find(right, label) != right.end();
    });
    return first == found.end() ? 0 : static_cast<std::size_t>(first - found.begin()) + 1;
}

std::vector<Question> readQuestions(const std::filesystem::path& file) {
    std::ifstream stream(file);
    if (!stream)
        throw std::runtime_error("There is no file " + file.string() + ".");
    const std::string content{std::istreambuf_iterator<char>(stream), {}};
    const boost::json::value list = boost::json::parse(content);
    std::vector<Question> questions;
    questions.reserve(list.as_array().size());
    for (const auto& value : list.as_array())
        questions.push_back(
            {.text = boost::json::value_to<std::string>(value.at("question")),
             .kind = boost::json::value_to<std::string>(value.at("kind")),
             .right = boost::json::value_to<std::vector<std::string>>(value.at("right"))});
    return questions;
}

}  // namespace reference::bench
