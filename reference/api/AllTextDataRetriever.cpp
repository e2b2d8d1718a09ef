#include "reference/api/AllTextDataRetriever.hpp"

#include <cstdint>
#include <utility>

#include "docparser/DocParserException.hpp"
#include "reference/search/ReferenceStore.hpp"
#include "reference/search/TextSearch.hpp"

namespace reference::api {

using cache_manager::ReferenceCacheManager;

AllTextDataRetriever::AllTextDataRetriever() = default;
AllTextDataRetriever::AllTextDataRetriever(ReferenceRequest request)
    : ReferenceDataRetriever(std::move(request)) {}
AllTextDataRetriever::AllTextDataRetriever(AllTextDataRetriever&& other) noexcept = default;
AllTextDataRetriever& AllTextDataRetriever::operator=(AllTextDataRetriever&& other) noexcept =
    default;
AllTextDataRetriever::~AllTextDataRetriever() = default;

ReferenceCacheManager::SearchMethod AllTextDataRetriever::getSearchMethod() const {
    return ReferenceCacheManager::AllTextSearch;
}

// The lexicons of the products' texts are asked, all at once where all products are wanted. The
// pages that the lookup records nominate are mostly all that there are.
void AllTextDataRetriever::findReferenceData(const search::Snapshot& snapshot,
                                             std::vector<ReferenceData>& results) const {
    const search::TextSearch text(ext());
    const search::LookupIndex& index = *snapshot.index();
    std::vector<std::pair<std::uint32_t, const search::JoinedPages*>> opened;
    for (const std::uint32_t number : index.wantedProducts(ext())) {
        if (!text.isWanted(index.lookup(number)))
            continue;
        try {
            if (const auto* const joined = snapshot.pagesOf(number))
                opened.emplace_back(number, joined);
        } catch (const docparser::DocParserException&) {
            // The other products are still searched.
        }
    }
    const auto add = [&](std::uint32_t number, const search::JoinedPages& joined,
                         search::TextQuery::Words words) {
        const search::ProductPages& pages = joined.pages();
        const auto& lookup = index.lookup(number);
        // cppcheck-suppress accessMoved; what is gone through is made once
        for (const std::uint32_t item : text.itemsOf(lookup, joined, std::move(words)))
            results.emplace_back(pages.resource().getHeaderInfo(), pages.item(item));
    };
    const search::TextQuery& query = text.query();
    const bool areAll = !opened.empty() && opened.size() == index.products().size();
    if (query.hasParts() && areAll) {
        for (auto& [number, words] : snapshot.wordsOfAll(query))
            add(number, *opened[number].second, std::move(words));
        return;
    }
    for (const auto& [number, joined] : opened) {
        auto words = query.wordsOf(joined->pages().words());
        if (!query.hasParts() || !words.empty())
            add(number, *joined, std::move(words));
    }
}

const char* AllTextDataRetriever::getZORBClassName() noexcept {
    return "AllTextDataRetriever";
}

}  // namespace reference::api
