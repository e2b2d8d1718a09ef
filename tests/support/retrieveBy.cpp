#include "support/retrieveBy.hpp"

#include "reference/api/AllTextDataRetriever.hpp"
#include "reference/api/ClassEntityDataRetriever.hpp"
#include "reference/api/EntityPurposeDataRetriever.hpp"
#include "reference/api/PageNameDataRetriever.hpp"
#include "reference/api/ReferenceDataRetriever.hpp"

namespace reference::tests {

std::vector<api::ReferenceData> retrieveBy(Search search, const api::ReferenceRequest& request) {
    switch (search) {
        case Search::Class:
            return api::ClassEntityDataRetriever(request).getReferenceData();
        case Search::Purpose:
            return api::EntityPurposeDataRetriever(request).getReferenceData();
        case Search::AllText:
            return api::AllTextDataRetriever(request).getReferenceData();
        case Search::Page:
            return api::PageNameDataRetriever(request).getReferenceData();
        case Search::Entity:
            break;
    }
    return api::ReferenceDataRetriever(request).getReferenceData();
}

}  // namespace reference::tests
