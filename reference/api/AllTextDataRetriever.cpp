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

// The words of the items are asked at once; the pages that the lookup records nominate are mostly
// all that there are.
void AllTextDataRetriever::findReferenceData(const search::Snapshot& snapshot,
                                             std::vector<ReferenceData>& results) const {
    const search::TextSearch text(ext());
    const search::LookupIndex& index = *snapshot.index();
    for (const std::uint32_t number : index.wantedProducts(ext())) {
        const docimage::LookupImage& lookup = *index.products()[number].lookup;
        if (!text.isWanted(lookup))
            continue;
        try {
            const search::JoinedPages* const joined = snapshot.pagesOf(number);
            if (joined == nullptr)
                continue;
            const search::ProductPages& pages = joined->pages();
            for (const std::uint32_t item : text.itemsOf(lookup, *joined))
                results.emplace_back(pages.resource().getHeaderInfo(), pages.item(item));
        } catch (const docparser::DocParserException&) {
            // The other products are still searched.
        }
    }
}

const char* AllTextDataRetriever::getZORBClassName() noexcept {
    return "AllTextDataRetriever";
}

}  // namespace reference::api
