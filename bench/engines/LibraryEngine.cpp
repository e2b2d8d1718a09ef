#include "engines/LibraryEngine.hpp"

#include <utility>

#include "docparser/DocResourceParser.hpp"
#include "docparser/FileDocSource.hpp"
#include "reference/api/AllTextDataRetriever.hpp"
#include "reference/api/ClassEntityDataRetriever.hpp"
#include "reference/api/EntityPurposeDataRetriever.hpp"
#include "reference/api/PageNameDataRetriever.hpp"
#include "reference/api/ReferenceDataRetriever.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"

namespace reference::bench {
namespace {

using api::EntityCaseSensitivity;
using api::EntityPrecision;
using api::ReferenceRequest;
using cache_manager::ReferenceCacheManager;

ReferenceRequest requestOf(Ask ask, const Query& query) {
    ReferenceRequest request(query.text);
    switch (ask) {
        case Ask::LastComponentHrefs:
        case Ask::LastTwoComponentsHrefs:
        case Ask::PageResults:
            request.setEntityPrecision(EntityPrecision::Ignore_Package);
            break;
        case Ask::AnyCaseHrefs:
        case Ask::PartHrefs:
        case Ask::PartResults:
        case Ask::TextResults:
            request.setEntityCaseSensitivity(EntityCaseSensitivity::Insensitive);
            break;
        case Ask::ExactHrefs:
        case Ask::ExactResults:
        case Ask::ClassResults:
            break;
    }
    return request;
}

void deliverHrefs(const ReferenceRequest& request, ReferenceCacheManager::SearchMethod method,
                  Delivery& delivery) {
    for (const auto& [product, match] :
         ReferenceCacheManager::GetProductsWithEntity(request, method))
        for (const auto& href : match.hrefs)
            delivery.add(std::u16string_view(product), std::u16string_view(href));
}

template <typename Retriever>
void deliverResults(ReferenceRequest request, Delivery& delivery) {
    const Retriever retriever(std::move(request));
    for (const auto& result : retriever.getReferenceData()) {
        const auto& item = result.getRefItem();
        const auto& entities = item.getRefEntities();
        delivery.add(
            std::u16string_view(result.getHeaderInfo().getShortName()),
            std::u16string_view(item.getHref()),
            entities.empty() ? std::u16string_view() : std::u16string_view(entities[0].getName()),
            std::u16string_view(item.getPurpose()));
    }
}

}  // namespace

void openLibrary(const std::filesystem::path& root) {
    docparser::DocResourceParser::setSource(std::make_shared<docparser::FileDocSource>(
        [root] { return docparser::DocumentationLocation{.docRoot = root}; }));
    ReferenceCacheManager::ClearAllCaches();
}

void loadLibrary(const std::filesystem::path& root) {
    openLibrary(root);
    ReferenceCacheManager::PopulateAllCaches();
    // Tables of all products are made once they pay for themselves. What is measured is a process
    // that has come that far.
    constexpr int questions = 40000;
    const Query rare{.text = u"zqxzqx", .utf8 = "zqxzqx", .folded = "zqxzqx"};
    LibraryEngine engine;
    Delivery delivery(Delivery::Mode::Timed);
    for (int question = 0; question < questions; ++question)
        for (const Ask ask : {Ask::PartHrefs, Ask::TextResults})
            engine.answer(ask, rare, delivery);
}

Meaning LibraryEngine::meaning(Ask /*ask*/, const Query& /*query*/) const {
    return Meaning::Same;
}

void LibraryEngine::answer(Ask ask, const Query& query, Delivery& delivery) {
    ReferenceRequest request = requestOf(ask, query);
    switch (ask) {
        case Ask::ExactHrefs:
        case Ask::AnyCaseHrefs:
        case Ask::LastComponentHrefs:
        case Ask::LastTwoComponentsHrefs:
            return deliverHrefs(request, ReferenceCacheManager::ReferenceSearch, delivery);
        case Ask::PartHrefs:
            return deliverHrefs(request, ReferenceCacheManager::NameAndPurposeSearch, delivery);
        case Ask::ExactResults:
            return deliverResults<api::ReferenceDataRetriever>(std::move(request), delivery);
        case Ask::ClassResults:
            return deliverResults<api::ClassEntityDataRetriever>(std::move(request), delivery);
        case Ask::PageResults:
            return deliverResults<api::PageNameDataRetriever>(std::move(request), delivery);
        case Ask::PartResults:
            return deliverResults<api::EntityPurposeDataRetriever>(std::move(request), delivery);
        case Ask::TextResults:
            return deliverResults<api::AllTextDataRetriever>(std::move(request), delivery);
    }
}

std::unique_ptr<Engine> LibraryEngine::another() const {
    return std::make_unique<LibraryEngine>();
}

}  // namespace reference::bench
