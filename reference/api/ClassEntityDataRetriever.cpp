#include "reference/api/ClassEntityDataRetriever.hpp"

#include <utility>

namespace reference::api {

using cache_manager::ReferenceCacheManager;

ClassEntityDataRetriever::ClassEntityDataRetriever() = default;
ClassEntityDataRetriever::ClassEntityDataRetriever(ReferenceRequest request)
    : ReferenceDataRetriever(std::move(request)) {}
ClassEntityDataRetriever::ClassEntityDataRetriever(ClassEntityDataRetriever&& other) noexcept =
    default;
ClassEntityDataRetriever& ClassEntityDataRetriever::operator=(
    ClassEntityDataRetriever&& other) noexcept = default;
ClassEntityDataRetriever::~ClassEntityDataRetriever() = default;

bool ClassEntityDataRetriever::shouldAddParentEntity(const property::RefEntity& entity,
                                                     const property::RefItem& /*item*/) const {
    return ReferenceCacheManager::IsClassLikeType(entity.getRefEntityType());
}

ReferenceCacheManager::SearchMethod ClassEntityDataRetriever::getSearchMethod() const {
    return ReferenceCacheManager::ClassEntitySearch;
}

bool ClassEntityDataRetriever::isPropertyContentMatch(
    const std::u16string& /*qualifiedName*/, const property::ClassProperty& /*property*/) const {
    return true;
}

const char* ClassEntityDataRetriever::getZORBClassName() noexcept {
    return "ClassEntityDataRetriever";
}

}  // namespace reference::api
