#pragma once

#include <string>

#include "reference/api/ReferenceDataRetriever.hpp"
#include "reference/api/export.hpp"

namespace reference::api {

// Finds the entries with a given href, or with one that ends with the text after a "/" or "." where
// the request ignores packages.
//
// The href is compared as a whole, fragment included. Where a page holds many entries, each has an
// href of its own, and the page's name alone finds none of them: "library/os.html" is not
// "library/os.html#os.getcwd". Whoever is given the name of a page takes the hrefs that begin with
// it from the lookup cache and asks for those.
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
