#pragma once

#include <cstddef>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include <boost/json/array.hpp>

#include "corpus/Corpus.hpp"
#include "engines/Engine.hpp"

namespace reference::bench {

struct QueryOptions {
    // Classes whose name contains one of these; all of them if there is none.
    std::vector<std::string> only;
    // Queries of a class.
    std::size_t queries = 15;
    // Seconds that one query is repeated for.
    double minTime = 0.02;
    // Seconds of one engine in one class, after which it is spared further queries. It answers
    // three at least.
    double budget = 10;
};

// Picks queries, checks that all engines answer them as they should, and then measures how long
// each takes. The first engine is the library, which the others are checked against. Prints a line
// for each class as soon as it is done, and returns everything.
//
// Throws std::runtime_error when an answer is wrong.
[[nodiscard]] boost::json::array measureQueries(const Corpus& corpus,
                                                const std::vector<std::unique_ptr<Engine>>& engines,
                                                const QueryOptions& options, std::ostream& out);

}  // namespace reference::bench
