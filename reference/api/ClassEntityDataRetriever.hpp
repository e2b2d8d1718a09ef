#pragma once

#include <string>

#include "reference/api/ReferenceDataRetriever.hpp"
#include "reference/api/export.hpp"

namespace reference::api {

// Finds classes, enumerations and interfaces by name, each with all of its properties, and members
// by the name of their class.
//
// If the request admits properties, a class's item is followed by one item for each property, in
// page order. The request's types do not keep the class's own item out.
//
// Everything else, threads included, is as in ReferenceDataRetriever.
class VELTRA_REFERENCE_API ClassEntityDataRetriever final : public ReferenceDataRetriever {
  public:
    // A retriever whose request is set later. Until then a search finds nothing.
    ClassEntityDataRetriever();
    explicit ClassEntityDataRetriever(ReferenceRequest request);
    ClassEntityDataRetriever(ClassEntityDataRetriever&& other) noexcept;
    ClassEntityDataRetriever& operator=(ClassEntityDataRetriever&& other) noexcept;
    ~ClassEntityDataRetriever() override;

    [[nodiscard]] static const char* getZORBClassName() noexcept;

  private:
    [[nodiscard]] bool shouldAddParentEntity(const property::RefEntity& entity,
                                             const property::RefItem& item) const override;
    [[nodiscard]] cache_manager::ReferenceCacheManager::SearchMethod getSearchMethod()
        const override;
    [[nodiscard]] bool isPropertyContentMatch(
        const std::u16string& qualifiedName,
        const property::ClassProperty& property) const override;
};

}  // namespace reference::api
