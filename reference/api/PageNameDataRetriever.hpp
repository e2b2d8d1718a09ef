#pragma once

#include <string>

#include "reference/api/ReferenceDataRetriever.hpp"
#include "reference/api/export.hpp"

namespace reference::api {

// Finds all entries of a page, by its href, or without its folder where the request ignores
// packages.
//
// A page stands for its entries, not for the properties on it: classes are not expanded. A
// match-all-text request is the exception: it skips the question, so that every property becomes an
// entry, and then the classes' own entries are left out.
//
// Everything else, threads included, is as in ReferenceDataRetriever.
class VELTRA_REFERENCE_API PageNameDataRetriever final : public ReferenceDataRetriever {
  public:
    // A retriever that is to be given its request later. Searching with it finds nothing.
    PageNameDataRetriever();
    explicit PageNameDataRetriever(ReferenceRequest request);
    PageNameDataRetriever(PageNameDataRetriever&& other) noexcept;
    PageNameDataRetriever& operator=(PageNameDataRetriever&& other) noexcept;
    ~PageNameDataRetriever() override;

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
