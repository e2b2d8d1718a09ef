#include "reference/api/PageNameDataRetriever.hpp"

#include <utility>

namespace reference::api {

using cache_manager::ReferenceCacheManager;

PageNameDataRetriever::PageNameDataRetriever() = default;
PageNameDataRetriever::PageNameDataRetriever(ReferenceRequest request)
    : ReferenceDataRetriever(std::move(request)) {}
PageNameDataRetriever::PageNameDataRetriever(PageNameDataRetriever&& other) noexcept = default;
PageNameDataRetriever& PageNameDataRetriever::operator=(PageNameDataRetriever&& other) noexcept =
    default;
PageNameDataRetriever::~PageNameDataRetriever() = default;

bool PageNameDataRetriever::shouldAddParentEntity(const property::RefEntity& /*entity*/,
                                                  const property::RefItem& /*item*/) const {
    return false;
}

ReferenceCacheManager::SearchMethod PageNameDataRetriever::getSearchMethod() const {
    return ReferenceCacheManager::PageNameSearch;
}

bool PageNameDataRetriever::isPropertyContentMatch(
    const std::u16string& /*qualifiedName*/, const property::ClassProperty& /*property*/) const {
    return false;
}

const char* PageNameDataRetriever::getZORBClassName() noexcept {
    return "PageNameDataRetriever";
}

}  // namespace reference::api
