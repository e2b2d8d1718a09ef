#pragma once

#include <cstddef>
#include <memory>
#include <ostream>
#include <vector>

#include <boost/json/array.hpp>

#include "corpus/Corpus.hpp"
#include "engines/Engine.hpp"

namespace reference::bench {

// How many answers in a second `threads` threads get from each engine together, beside what one
// thread gets alone. Each thread has its own object and begins with another query.
[[nodiscard]] boost::json::array measureThreads(const Corpus& corpus,
                                                const std::vector<std::unique_ptr<Engine>>& engines,
                                                std::size_t threads, std::ostream& out);

}  // namespace reference::bench
