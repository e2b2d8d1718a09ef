#include "engines/Names.hpp"

#include <algorithm>
#include <utility>
#include <vector>

namespace reference::bench {

void deliverNamed(const Corpus& corpus, Ask ask, std::uint32_t record, Delivery& delivery) {
    if (ask != Ask::ExactResults) {
        deliverRecord(corpus, record, delivery);
        return;
    }
    const auto& results = corpus.recordResults;
    for (auto row = std::ranges::lower_bound(results, std::pair(record, std::uint32_t{0}));
         row != results.end() && row->first == record; ++row)
        deliverResult(corpus, row->second, delivery);
}

void deliverPage(const Corpus& corpus, Ask ask, std::uint32_t page, Delivery& delivery) {
    const auto [begin, end] = corpus.pageResults[page];
    for (std::uint32_t result = begin; result < end; ++result)
        if (ask == Ask::ClassResults ? corpus.resultIsInClass[result]
                                     : !corpus.resultIsProperty[result])
            deliverResult(corpus, result, delivery);
}

void deliverParts(const Corpus& corpus, std::string_view part, std::uint32_t page,
                  Delivery& delivery) {
    const auto [begin, end] = corpus.pageResults[page];
    bool isPropertyMeant = false;
    std::vector<std::uint32_t> others;
    for (std::uint32_t result = begin; result < end; ++result) {
        if (corpus.resultTexts[result].find(part) != std::string_view::npos) {
            deliverResult(corpus, result, delivery);
            isPropertyMeant = isPropertyMeant || corpus.resultIsProperty[result];
        } else if (!corpus.resultIsProperty[result]) {
            others.push_back(result);
        }
    }
    if (!isPropertyMeant)
        for (const std::uint32_t result : others)
            deliverResult(corpus, result, delivery);
}

}  // namespace reference::bench
