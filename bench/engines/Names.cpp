#include "engines/Names.hpp"

#include <algorithm>
#include <utility>

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
    for (std::uint32_t result = begin; result < end; ++result) {
        const bool isMeant = corpus.resultTexts[result].find(part) != std::string_view::npos;
        if (isMeant || (!corpus.resultIsProperty[result] && !isPropertyMeant))
            deliverResult(corpus, result, delivery);
        // An item is the last of its results, so that the next one belongs to another item.
        isPropertyMeant = corpus.resultIsProperty[result] && (isPropertyMeant || isMeant);
    }
}

}  // namespace reference::bench
