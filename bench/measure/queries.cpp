#include "measure/queries.hpp"

#include <algorithm>
#include <iomanip>
#include <stdexcept>
#include <string_view>
#include <utility>

#include <boost/json/object.hpp>

#include "engines/Delivery.hpp"
#include "measure/Clock.hpp"
#include "measure/expectedWords.hpp"
#include "queries/QueryClass.hpp"
#include "queries/pickQueries.hpp"

namespace reference::bench {
namespace {

double median(std::vector<double> figures) {
    const auto middle = figures.begin() + static_cast<std::ptrdiff_t>(figures.size() / 2);
    std::ranges::nth_element(figures, middle);
    return *middle;
}

// A page counts once, however many of its records match; results count as often as they come.
std::vector<std::string> withoutRepeatedPages(Ask ask, std::vector<std::string> hits) {
    if (!answersWithResults(ask)) {
        hits.erase(std::unique(hits.begin(), hits.end()), hits.end());
    }
    return hits;
}

// "product href" of the answer, sorted.
std::vector<std::string> hitsOf(Engine& engine, Ask ask, const Query& query) {
    Delivery delivery(Delivery::Mode::Kept);
    engine.answer(ask, query, delivery);
    return withoutRepeatedPages(ask, delivery.takeHits());
}

// Seconds of processor time for one answer.
double timeOf(Engine& engine, Ask ask, const Query& query, double minTime) {
    static volatile std::size_t sink = 0;
    std::size_t count = 0;
    double total = 0;
    for (std::size_t batch = 1; total < minTime; batch *= 4) {
        const double begin = processorSeconds();
        for (std::size_t n = 0; n < batch; ++n) {
            Delivery delivery(Delivery::Mode::Timed);
            engine.answer(ask, query, delivery);
            sink = sink + delivery.checksum();
        }
        total += processorSeconds() - begin;
        count += batch;
    }
    return total / static_cast<double>(count);
}

struct Checked {
    std::vector<Query> queries;
    std::vector<double> hitCounts;
    std::size_t passedOver = 0;
};

// The library against an engine with the same meaning, or against what an index of words must find.
class Checker {
  public:
    Checker(const Corpus& corpus, const std::vector<std::unique_ptr<Engine>>& engines,
            const QueryClass& queryClass)
        : m_corpus(corpus), m_engines(engines), m_class(queryClass) {}

    Checked check(const std::vector<Query>& candidates, std::size_t wanted) {
        Checked checked;
        for (const Query& query : candidates) {
            if (checked.queries.size() == wanted)
                break;
            const auto hits = hitsOf(*m_engines.front(), m_class.ask, query);
            if (!agree(query, hits)) {
                ++checked.passedOver;
                continue;
            }
            checked.queries.push_back(query);
            checked.hitCounts.push_back(static_cast<double>(hits.size()));
        }
        // An answer that differs now and then has a reason in the rules; one that often does is
        // wrong.
        if (checked.passedOver * 5 > checked.queries.size() + checked.passedOver)
            throw std::runtime_error(std::string(m_class.name) + ": " +
                                     std::to_string(checked.passedOver) + " of " +
                                     std::to_string(checked.queries.size() + checked.passedOver) +
                                     " answers differ. " + m_difference);
        return checked;
    }

  private:
    // Whether the library's answer is that of every engine with the same meaning. An index of words
    // must find exactly what its own rule says.
    bool agree(const Query& query, const std::vector<std::string>& libraryHits) {
        bool libraryAgrees = true;
        for (const auto& engine : m_engines) {
            const Meaning meaning = engine->meaning(m_class.ask, query);
            if (engine == m_engines.front() || meaning == Meaning::None ||
                meaning == Meaning::Floor)
                continue;
            const auto hits = hitsOf(*engine, m_class.ask, query);
            if (meaning == Meaning::WholeWords) {
                if (hits !=
                    withoutRepeatedPages(m_class.ask, expectedWords(m_corpus, m_class.ask, query)))
                    throw std::runtime_error(describe(*engine, query) + " is wrong.");
                continue;
            }
            if (hits == libraryHits)
                continue;
            libraryAgrees = false;
            m_difference = describe(*engine, query) + " has " + std::to_string(hits.size()) +
                           " hits, the library's " + std::to_string(libraryHits.size()) + ".";
        }
        return libraryAgrees;
    }

    std::string describe(const Engine& engine, const Query& query) const {
        return engine.name() + "'s answer to \"" + query.utf8 + "\" (" + std::string(m_class.name) +
               ")";
    }

    const Corpus& m_corpus;
    const std::vector<std::unique_ptr<Engine>>& m_engines;
    const QueryClass& m_class;
    std::string m_difference;
};

bool isWanted(const QueryClass& queryClass, const std::vector<std::string>& only) {
    return only.empty() || std::ranges::any_of(only, [&](const std::string& part) {
               return queryClass.name.find(part) != std::string_view::npos;
           });
}

std::string_view nameOf(Meaning meaning) {
    return meaning == Meaning::Same ? "same" : meaning == Meaning::WholeWords ? "words" : "floor";
}

// Nothing where the engine cannot answer most of the queries.
boost::json::value measureEngine(Engine& engine, Ask ask, const std::vector<Query>& queries,
                                 const QueryOptions& options) {
    std::vector<double> figures;
    std::vector<double> hitCounts;
    std::size_t answerable = 0;
    Meaning meaning = Meaning::None;
    const double begin = wallSeconds();
    for (const Query& query : queries) {
        const Meaning here = engine.meaning(ask, query);
        if (here == Meaning::None)
            continue;
        meaning = here;
        ++answerable;
        // The others find what the library does.
        if (here == Meaning::WholeWords)
            hitCounts.push_back(static_cast<double>(hitsOf(engine, ask, query).size()));
        if (figures.size() < 3 || wallSeconds() - begin < options.budget)
            figures.push_back(timeOf(engine, ask, query, options.minTime));
    }
    if (answerable * 2 <= queries.size())
        return nullptr;
    boost::json::object figure{{"engine", engine.name()},
                               {"meaning", nameOf(meaning)},
                               {"seconds", median(figures)},
                               {"slowest", *std::ranges::max_element(figures)},
                               {"queries", figures.size()}};
    if (!hitCounts.empty())
        figure["hits"] = median(hitCounts);
    return figure;
}

void printFigures(const boost::json::object& row, std::ostream& out) {
    out << std::left << std::setw(28) << std::string_view(row.at("class").as_string()) << std::right
        << std::setw(9) << static_cast<long>(row.at("hits").to_number<double>()) << " hits ";
    for (const auto& figure : row.at("figures").as_array()) {
        const double micros = figure.at("seconds").to_number<double>() * 1e6;
        out << "  " << std::string_view(figure.at("engine").as_string())
            << (figure.at("meaning").as_string() == "words" ? "*" : "") << ' ' << std::fixed
            << std::setprecision(micros < 10 ? 2 : 0) << micros;
    }
    out << std::endl;
}

}  // namespace

boost::json::array measureQueries(const Corpus& corpus,
                                  const std::vector<std::unique_ptr<Engine>>& engines,
                                  const QueryOptions& options, std::ostream& out) {
    boost::json::array rows;
    out << "Microseconds of processor time for one answer; * finds whole words only.\n";
    for (const QueryClass& queryClass : queryClasses()) {
        if (!isWanted(queryClass, options.only))
            continue;
        Checker checker(corpus, engines, queryClass);
        const Checked checked = checker.check(
            pickQueries(corpus, queryClass, options.queries * 3 / 2), options.queries);
        if (checked.queries.empty()) {
            out << queryClass.name << ": nothing in the data fits." << std::endl;
            continue;
        }
        boost::json::array figures;
        for (const auto& engine : engines)
            if (auto figure = measureEngine(*engine, queryClass.ask, checked.queries, options);
                !figure.is_null())
                figures.push_back(std::move(figure));
        boost::json::object row{
            {"class", queryClass.name},          {"tier", nameOf(queryClass.tier)},
            {"remark", queryClass.remark},       {"queries", checked.queries.size()},
            {"passedOver", checked.passedOver},  {"example", checked.queries.front().utf8},
            {"hits", median(checked.hitCounts)}, {"figures", std::move(figures)}};
        printFigures(row, out);
        rows.push_back(std::move(row));
    }
    return rows;
}

}  // namespace reference::bench
