#include "reference/api/EntityPurposeDataRetriever.hpp"

#include <utility>

#include "reference/utils/toLowerCopy.hpp"

namespace reference::api {

using cache_manager::ReferenceCacheManager;

EntityPurposeDataRetriever::EntityPurposeDataRetriever() = default;
EntityPurposeDataRetriever::EntityPurposeDataRetriever(ReferenceRequest request)
    : ReferenceDataRetriever(std::move(request)) {}
EntityPurposeDataRetriever::EntityPurposeDataRetriever(
    EntityPurposeDataRetriever&& other) noexcept = default;
EntityPurposeDataRetriever& EntityPurposeDataRetriever::operator=(
    EntityPurposeDataRetriever&& other) noexcept = default;
EntityPurposeDataRetriever::~EntityPurposeDataRetriever() = default;

bool EntityPurposeDataRetriever::shouldAddParentEntity(const property::RefEntity& entity,
                                                       const property::RefItem& item) const {
    if (!isTypeMatch(entity.getRefEntityType()))
        return false;
    return isAllTextMatch() || isNameOrPurposeMatch(entity.getName(), item.getPurpose());
}

ReferenceCacheManager::SearchMethod EntityPurposeDataRetriever::getSearchMethod() const {
    return ReferenceCacheManager::NameAndPurposeSearch;
}

bool EntityPurposeDataRetriever::isPropertyContentMatch(
    const std::u16string& qualifiedName, const property::ClassProperty& property) const {
    return isNameOrPurposeMatch(qualifiedName, property.getPurpose());
}

// The cache manager folds the purpose itself, but expects a folded name.
bool EntityPurposeDataRetriever::isNameOrPurposeMatch(const std::u16string& name,
                                                      const std::u16string& purpose) const {
    return ReferenceCacheManager::IsNameAndPurposeContentMatch(
        getSearchedText(), isCaseSensitive() ? name : utils::toLowerCopy(name), purpose,
        isCaseSensitive());
}

const char* EntityPurposeDataRetriever::getZORBClassName() noexcept {
    return "EntityPurposeDataRetriever";
}

}  // namespace reference::api
