#pragma once

#include <cstddef>
#include <vector>

#include "corpus/Corpus.hpp"
#include "queries/Query.hpp"
#include "queries/QueryClass.hpp"

namespace reference::bench {

// Texts for queries of the class, all different, picked from the data at random; the same data
// gives the same texts. Fewer than `count` when the data has no more that fit the rule.
[[nodiscard]] std::vector<Query> pickQueries(const Corpus& corpus, const QueryClass& queryClass,
                                             std::size_t count);

}  // namespace reference::bench
