#pragma once

#include <string>

#include "reference/api/ReferenceDataRetriever.hpp"
#include "reference/api/export.hpp"

namespace reference::api {

// Finds items by a part of an entity's name or of its purpose; precision plays no part. Properties
// of classes are found by their own purpose too; their class's item comes with them only if it
// matches by itself.
//
// Everything else, threads included, is as in ReferenceDataRetriever.
class VELTRA_REFERENCE_API EntityPurposeDataRetriever final : public ReferenceDataRetriever {
  public:
    // A retriever whose request is set later. Until then a search finds nothing.
    EntityPurposeDataRetriever();
    explicit EntityPurposeDataRetriever(ReferenceRequest request);
    EntityPurposeDataRetriever(EntityPurposeDataRetriever&& other) noexcept;
    EntityPurposeDataRetriever& operator=(EntityPurposeDataRetriever&& other) noexcept;
    ~EntityPurposeDataRetriever() override;

    [[nodiscard]] static const char* getZORBClassName() noexcept;

  private:
    [[nodiscard]] bool shouldAddParentEntity(const property::RefEntity& entity,
                                             const property::RefItem& item) const override;
    [[nodiscard]] cache_manager::ReferenceCacheManager::SearchMethod getSearchMethod()
        const override;
    [[nodiscard]] bool isPropertyContentMatch(
        const std::u16string& qualifiedName,
        const property::ClassProperty& property) const override;

    [[nodiscard]] bool isNameOrPurposeMatch(const std::u16string& name,
                                            const std::u16string& purpose) const;
};

}  // namespace reference::api
