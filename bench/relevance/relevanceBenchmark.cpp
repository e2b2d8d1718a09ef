// How often a question's right answer is found, first and among the first five.
//
//   relevance_benchmark FILE... [--failures]
//
// A file is a JSON array of {"question", "kind", "right": ["product:name"]}. The documentation is
// that of VELTRA_DOC_ROOT.
#include <algorithm>
#include <chrono>
#include <cstddef>
#include <exception>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>
#include <boost/json/value_to.hpp>

#include "fl/i18n/utf.hpp"
#include "reference/ask/ask.hpp"

namespace {

using Clock = std::chrono::steady_clock;

struct Question {
    std::string text;
    std::string kind;
    std::vector<std::string> right;
};

std::vector<Question> readQuestions(const std::string& path) {
    std::ifstream file(path);
    if (!file)
        throw std::runtime_error("There is no file " + path + ".");
    const std::string content{std::istreambuf_iterator<char>(file), {}};
    const boost::json::value list = boost::json::parse(content);
    std::vector<Question> questions;
    for (const auto& value : list.as_array())
        questions.push_back(
            {.text = boost::json::value_to<std::string>(value.at("question")),
             .kind = boost::json::value_to<std::string>(value.at("kind")),
             .right = boost::json::value_to<std::vector<std::string>>(value.at("right"))});
    return questions;
}

// The names that are found, first to last: "pandas:pandas.read_csv".
std::vector<std::string> ask(const Question& question) {
    const auto answer = reference::ask::ask(fl::i18n::toUtf16(question.text));
    std::vector<std::string> found;
    found.reserve(answer.hits.size());
    for (const auto& hit : answer.hits)
        found.push_back(fl::i18n::toUtf8(hit.data.getHeaderInfo().getShortName()) + ":" +
                        fl::i18n::toUtf8(hit.name));
    return found;
}

// The place of the first right one, counted from 1; 0 where there is none.
std::size_t rankOf(const Question& question, const std::vector<std::string>& found) {
    const auto first = std::ranges::find_if(found, [&](const std::string& name) {
        return std::ranges::find(question.right, name) != question.right.end();
    });
    return first == found.end() ? 0 : static_cast<std::size_t>(first - found.begin()) + 1;
}

class Score {
  public:
    void add(std::size_t rank, double microseconds) {
        m_first += rank == 1 ? 1 : 0;
        m_amongFive += rank >= 1 && rank <= 5 ? 1 : 0;
        m_reciprocals += rank > 0 ? 1.0 / static_cast<double>(rank) : 0.0;
        m_times.push_back(microseconds);
    }

    void print(const std::string& kind) {
        std::ranges::sort(m_times);
        const auto count = static_cast<double>(m_times.size());
        std::cout << std::left << std::setw(10) << kind << std::right << std::fixed << std::setw(6)
                  << m_times.size() << std::setprecision(1) << std::setw(9) << 100 * m_first / count
                  << std::setw(9) << 100 * m_amongFive / count << std::setprecision(3)
                  << std::setw(8) << m_reciprocals / count << std::setprecision(0) << std::setw(10)
                  << m_times[m_times.size() / 2] << '\n';
    }

  private:
    double m_first = 0;
    double m_amongFive = 0;
    double m_reciprocals = 0;
    std::vector<double> m_times;
};

void measure(const std::string& path, bool showsFailures) {
    std::map<std::string, Score> byKind;
    for (const Question& question : readQuestions(path)) {
        static_cast<void>(ask(question));  // what is read once is read
        const auto begin = Clock::now();
        const auto found = ask(question);
        const std::chrono::duration<double, std::micro> time = Clock::now() - begin;
        const std::size_t rank = rankOf(question, found);
        byKind[question.kind].add(rank, time.count());
        byKind["(all)"].add(rank, time.count());
        if (showsFailures && rank != 1)
            std::cout << question.kind << ": " << question.text << "\n    right at " << rank
                      << ", first is " << (found.empty() ? "nothing" : found.front()) << '\n';
    }
    std::cout << path << "\nkind       count  first %   five %     MRR        us\n";
    for (auto& [kind, score] : byKind)
        score.print(kind);
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const bool showsFailures = std::ranges::find(arguments, "--failures") != arguments.end();
    try {
        for (const auto& argument : arguments)
            if (!argument.starts_with("--"))
                measure(argument, showsFailures);
    } catch (const std::exception& error) {
        std::cerr << "relevance_benchmark: " << error.what() << '\n';
        return 1;
    }
}
