#include "measure/expectedWords.hpp"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "corpus/words.hpp"
#include "engines/Names.hpp"

namespace reference::bench {
namespace {

std::vector<std::string_view> wordsWithin(std::string_view text) {
    std::vector<std::string_view> words;
    forEachWord(text, [&](std::string_view word) {
        words.push_back(word);
        return true;
    });
    return words;
}

bool holds(std::string_view text, const std::vector<std::string_view>& sought) {
    const auto words = wordsWithin(text);
    return std::search(words.begin(), words.end(), sought.begin(), sought.end()) != words.end();
}

}  // namespace

std::vector<std::string> expectedWords(const Corpus& corpus, Ask ask, const Query& query) {
    Delivery delivery(Delivery::Mode::Kept);
    const auto sought = wordsWithin(query.folded);
    const auto search = [&](const TextColumn& column, const auto& deliver) {
        // Every row that holds the words holds the first of them as a part.
        column.forEachWith(sought.front(), [&](std::uint32_t row) {
            if (holds(column[row], sought))
                deliver(row);
            return true;
        });
    };
    if (ask == Ask::PartHrefs)
        search(corpus.recordTexts, [&](std::uint32_t n) { deliverRecord(corpus, n, delivery); });
    else if (ask == Ask::PartResults)
        search(corpus.resultTexts, [&](std::uint32_t n) { deliverResult(corpus, n, delivery); });
    else
        search(corpus.itemTexts,
               [&](std::uint32_t n) { deliverResult(corpus, corpus.itemResults[n], delivery); });
    return delivery.takeHits();
}

}  // namespace reference::bench
