// How often a question's right answer is found, first and among the first five: by the library, and
// by what could be used in its place, over the same entities. The documentation is that of
// VELTRA_DOC_ROOT. Times are processor times. docs/relevance.md tells what comes out.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <map>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>

#include "measure/Clock.hpp"
#include "relevance/DevDocsSearcher.hpp"
#include "relevance/Entities.hpp"
#include "relevance/FtsSearcher.hpp"
#include "relevance/LibrarySearcher.hpp"
#include "relevance/Question.hpp"
#include "relevance/Score.hpp"
#include "relevance/Table.hpp"
#include "relevance/XapianSearcher.hpp"

namespace {

using namespace reference::bench;

using Searchers = std::vector<std::unique_ptr<Searcher>>;

constexpr std::size_t answersToQuestion = 10;
constexpr const char* everyKind = "all";

struct Options {
    std::vector<std::filesystem::path> files;
    TableForm form = TableForm::Plain;
    bool showsFailures = false;
};

// What one searcher made of a list.
struct Outcome {
    std::map<std::string, Score> byKind;
    std::vector<std::size_t> ranks;
    std::vector<std::string> first;
};

std::filesystem::path documentationSet() {
    const char* const root = std::getenv("VELTRA_DOC_ROOT");
    if (root == nullptr)
        throw std::runtime_error(
            "VELTRA_DOC_ROOT is not set: it says where the documentation set is.");
    return root;
}

Searchers makeSearchers(const std::vector<Entity>& entities) {
    Searchers searchers;
    searchers.push_back(std::make_unique<LibrarySearcher>());
    searchers.push_back(std::make_unique<FtsSearcher>(entities));
    searchers.push_back(std::make_unique<XapianSearcher>(entities));
    searchers.push_back(std::make_unique<DevDocsSearcher>(entities));
    return searchers;
}

// Reads a list. A right answer's other names are right as well, and one that is not in the
// documentation set at all is an error: it would be counted against everybody.
std::vector<Question> readList(const std::filesystem::path& file,
                               const std::vector<Entity>& entities) {
    std::unordered_map<std::string, std::uint32_t> entries;
    std::unordered_multimap<std::uint32_t, std::string> names;
    for (const Entity& entity : entities) {
        entries.emplace(entity.label, entity.entry);
        names.emplace(entity.entry, entity.label);
    }
    std::vector<Question> questions = readQuestions(file);
    for (Question& question : questions) {
        std::vector<std::string> right;
        for (const std::string& label : question.right)
            if (const auto entry = entries.find(label); entry != entries.end())
                for (auto [name, end] = names.equal_range(entry->second); name != end; ++name)
                    right.push_back(name->second);
        if (right.empty())
            throw std::runtime_error(file.string() + ": no right answer to \"" + question.text +
                                     "\" is a name of the documentation set.");
        question.right = std::move(right);
    }
    return questions;
}

Outcome ask(Searcher& searcher, const std::vector<Question>& questions) {
    Outcome outcome;
    for (const Question& question : questions) {
        // What is read once is read.
        static_cast<void>(searcher.ask(question.text, answersToQuestion));
        const double begin = processorSeconds();
        const auto found = searcher.ask(question.text, answersToQuestion);
        const double microseconds = 1e6 * (processorSeconds() - begin);
        const std::size_t rank = question.rankIn(found);
        outcome.byKind[question.kind].add(rank, microseconds);
        outcome.byKind[everyKind].add(rank, microseconds);
        outcome.ranks.push_back(rank);
        outcome.first.push_back(found.empty() ? "nothing" : found.front());
    }
    return outcome;
}

std::string fixed(double number, int digits) {
    std::ostringstream text;
    text << std::fixed << std::setprecision(digits) << number;
    return text.str();
}

std::string percent(double share) {
    return fixed(100 * share, 0);
}

Table summary(const Searchers& searchers, std::vector<Outcome>& outcomes) {
    Table table{.header = {"", "first %", "among five %", "MRR", "median us", "95 % us"}};
    for (std::size_t n = 0; n < searchers.size(); ++n) {
        const Score& score = outcomes[n].byKind[everyKind];
        table.rows.push_back({searchers[n]->name(), percent(score.first()),
                              percent(score.amongFive()), fixed(score.meanReciprocalRank(), 3),
                              fixed(score.time(0.5), 0), fixed(score.time(0.95), 0)});
    }
    return table;
}

Table kinds(const Searchers& searchers, std::vector<Outcome>& outcomes) {
    Table table{.header = {"kind", "questions"}};
    for (const auto& searcher : searchers)
        table.header.push_back(searcher->name());
    for (const auto& [kind, ours] : outcomes.front().byKind) {
        if (kind == everyKind)
            continue;
        std::vector<std::string> row = {kind, std::to_string(ours.count())};
        for (Outcome& outcome : outcomes) {
            const Score& score = outcome.byKind[kind];
            row.push_back(percent(score.first()) + " / " + percent(score.amongFive()) + " / " +
                          fixed(score.meanReciprocalRank(), 2));
        }
        table.rows.push_back(std::move(row));
    }
    return table;
}

void printFailures(const std::vector<Question>& questions, const Searchers& searchers,
                   const std::vector<Outcome>& outcomes) {
    for (std::size_t n = 0; n < questions.size(); ++n) {
        if (outcomes.front().ranks[n] == 1)
            continue;
        std::cout << questions[n].kind << ": " << questions[n].text << '\n';
        for (std::size_t by = 0; by < searchers.size(); ++by)
            std::cout << "    " << searchers[by]->name() << ": right at " << outcomes[by].ranks[n]
                      << ", first is " << outcomes[by].first[n] << '\n';
    }
}

// How many names come first, in whichever product, when they are asked as they stand.
std::size_t firstByName(Searcher& searcher, const std::vector<Entity>& entities) {
    const auto name = [](const std::string& label) { return label.substr(label.find(':') + 1); };
    return static_cast<std::size_t>(std::ranges::count_if(entities, [&](const Entity& entity) {
        const auto found = searcher.ask(name(entity.label), 1);
        return !found.empty() && name(found.front()) == name(entity.label);
    }));
}

void run(const Options& options) {
    const auto root = documentationSet();
    const std::vector<Entity> entities = readEntities(root);
    const Searchers searchers = makeSearchers(entities);
    for (const auto& file : options.files) {
        const std::vector<Question> questions = readList(file, entities);
        std::vector<Outcome> outcomes;
        outcomes.reserve(searchers.size());
        for (const auto& searcher : searchers)
            outcomes.push_back(ask(*searcher, questions));
        std::cout << (options.form == TableForm::Markdown ? "### " : "") << file.filename().string()
                  << ": " << questions.size() << " questions, " << entities.size() << " names\n\n";
        summary(searchers, outcomes).print(std::cout, options.form);
        std::cout << '\n';
        kinds(searchers, outcomes).print(std::cout, options.form);
        std::cout << '\n';
        if (options.showsFailures)
            printFailures(questions, searchers, outcomes);
    }
    std::cout << "Of " << entities.size() << " names, " << firstByName(*searchers.front(), entities)
              << " come first when they are asked as they stand.\n";
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App app("How often questions find what they ask for");
    Options options;
    bool isMarkdown = false;
    app.add_option("files", options.files, "Lists of questions")
        ->required()
        ->type_name("FILE")
        ->check(CLI::ExistingFile);
    app.add_flag("--markdown", isMarkdown, "Print the tables of docs/relevance.md");
    app.add_flag("--failures", options.showsFailures,
                 "Also print the questions that the library does not answer first");
    CLI11_PARSE(app, argc, argv);
    options.form = isMarkdown ? TableForm::Markdown : TableForm::Plain;
    try {
        run(options);
    } catch (const std::exception& error) {
        std::cerr << "relevance_benchmark: " << error.what() << '\n';
        return 1;
    }
}
