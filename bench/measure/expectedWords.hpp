#pragma once

#include <string>
#include <vector>

#include "corpus/Corpus.hpp"
#include "queries/Query.hpp"
#include "queries/QueryClass.hpp"

namespace reference::bench {

// What an index of words must answer, found without one: "product href" of the rows that hold the
// query's words as whole words, one after the other; sorted.
// Requires: the query is about parts of texts.
[[nodiscard]] std::vector<std::string> expectedWords(const Corpus& corpus, Ask ask,
                                                     const Query& query);

}  // namespace reference::bench
