#pragma once

#include <cstdint>
#include <string_view>

#include "corpus/Corpus.hpp"
#include "engines/Delivery.hpp"
#include "queries/Query.hpp"
#include "queries/QueryClass.hpp"

namespace reference::bench {

// What engines that hold the corpus itself do alike.

// The column that a question about names of records is looked up in, and the text to look up.
[[nodiscard]] inline const TextColumn& nameColumn(const Corpus& corpus, Ask ask) {
    switch (ask) {
        case Ask::AnyCaseHrefs:
            return corpus.foldedKeys;
        case Ask::LastComponentHrefs:
            return corpus.lastComponents;
        case Ask::LastTwoComponentsHrefs:
            return corpus.lastTwoComponents;
        case Ask::PageResults:
            return corpus.fileNames;
        default:
            return corpus.keys;
    }
}

[[nodiscard]] inline std::string_view nameOf(const Query& query, Ask ask) {
    return ask == Ask::AnyCaseHrefs ? query.folded : query.utf8;
}

inline void deliverRecord(const Corpus& corpus, std::uint32_t record, Delivery& delivery) {
    delivery.add(corpus.productOfRecord(record), corpus.hrefOfRecord(record));
}

inline void deliverResult(const Corpus& corpus, std::uint32_t result, Delivery& delivery) {
    delivery.add(corpus.productOfResult(result), corpus.resultHrefs[result],
                 corpus.resultNames[result], corpus.resultPurposes[result]);
}

// What a record that was found by name puts into the answer.
void deliverNamed(const Corpus& corpus, Ask ask, std::uint32_t record, Delivery& delivery);

// What a page that was found by class, or by file name, puts into the answer.
void deliverPage(const Corpus& corpus, Ask ask, std::uint32_t page, Delivery& delivery);

// What a page that was found by a part of one of its records puts into the answer: the results that
// contain the part, and each item of which no property does.
void deliverParts(const Corpus& corpus, std::string_view part, std::uint32_t page,
                  Delivery& delivery);

}  // namespace reference::bench
