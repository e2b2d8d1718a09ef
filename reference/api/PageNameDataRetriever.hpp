#pragma once

#include <string>

#include "reference/api/ReferenceDataRetriever.hpp"
#include "reference/api/export.hpp"

namespace reference::api {

// Finds the items with a given href, or, if the request ignores packages, with an href that ends
// with the text after a "/" or ".".
//
// The whole href is compared, fragment included. If a page holds many items, each has an href of
// its own, and the page's name alone finds none of them: "library/os.html" is not
// "library/os.html#os.getcwd". To find the items of a page, take the hrefs that begin with its name
// from the lookup cache and ask for those.
//
// Classes are not expanded into their properties: a page means its items. A match-all-text request
// is the exception: for it every property is wanted, so every property becomes an item, and the
// classes' own items are left out.
//
// Everything else, threads included, is as in ReferenceDataRetriever.
class VELTRA_REFERENCE_API PageNameDataRetriever final : public ReferenceDataRetriever {
  public:
    // A retriever whose request is set later. Until then a search finds nothing.
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
