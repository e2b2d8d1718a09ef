#include "measure/threads.hpp"

#include <atomic>
#include <barrier>
#include <string_view>
#include <thread>

#include <boost/json/object.hpp>

#include "measure/Clock.hpp"
#include "queries/QueryClass.hpp"
#include "queries/pickQueries.hpp"

namespace reference::bench {
namespace {

constexpr double duration = 1;

// Answers in a second of wall time.
double throughput(const Engine& engine, Ask ask, const std::vector<Query>& queries,
                  std::size_t threadCount) {
    std::atomic<std::size_t> answers = 0;
    std::atomic<std::size_t> sink = 0;
    std::barrier start(static_cast<std::ptrdiff_t>(threadCount + 1));
    std::atomic<bool> isOver = false;
    std::vector<std::jthread> threads;
    for (std::size_t n = 0; n < threadCount; ++n)
        threads.emplace_back([&, n] {
            const auto own = engine.another();
            std::size_t count = 0;
            std::size_t checksum = 0;
            // What is prepared or read at the first answer belongs to nobody's time.
            Delivery first(Delivery::Mode::Timed);
            own->answer(ask, queries[n % queries.size()], first);
            start.arrive_and_wait();
            while (!isOver) {
                Delivery delivery(Delivery::Mode::Timed);
                own->answer(ask, queries[(n + count) % queries.size()], delivery);
                checksum += delivery.checksum();
                ++count;
            }
            answers += count;
            sink += checksum;
        });
    start.arrive_and_wait();
    const double begin = wallSeconds();
    while (wallSeconds() - begin < duration)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    isOver = true;
    threads.clear();
    // Answers that were under way are waited for and counted.
    return static_cast<double>(answers) / (wallSeconds() - begin);
}

}  // namespace

boost::json::array measureThreads(const Corpus& corpus,
                                  const std::vector<std::unique_ptr<Engine>>& engines,
                                  std::size_t threads, std::ostream& out) {
    boost::json::array rows;
    for (const QueryClass& queryClass : queryClasses()) {
        if (queryClass.name != "name/exact, results" && queryClass.name != "part, hrefs/medium" &&
            queryClass.name != "text/medium")
            continue;
        const auto queries = pickQueries(corpus, queryClass, 15);
        boost::json::array figures;
        out << queryClass.name << ", answers in a second:";
        for (const auto& engine : engines) {
            const Meaning meaning = engine->meaning(queryClass.ask, queries.front());
            if (meaning != Meaning::Same && meaning != Meaning::WholeWords)
                continue;
            const double alone = throughput(*engine, queryClass.ask, queries, 1);
            const double together = throughput(*engine, queryClass.ask, queries, threads);
            out << "  " << engine->name() << (meaning == Meaning::WholeWords ? "*" : "") << ' '
                << static_cast<long>(alone) << " -> " << static_cast<long>(together);
            figures.push_back({{"engine", engine->name()},
                               {"meaning", meaning == Meaning::Same ? "same" : "words"},
                               {"alone", alone},
                               {"together", together}});
        }
        out << std::endl;
        rows.push_back(
            {{"class", queryClass.name}, {"threads", threads}, {"figures", std::move(figures)}});
    }
    return rows;
}

}  // namespace reference::bench
