#pragma once

#include <vector>

#include "reference/api/ReferenceDataRetriever.hpp"
#include "reference/api/export.hpp"

namespace reference::api {

// Finds items that contain the text in purpose, description, package, names, syntaxes, inputs,
// outputs, properties, the titles of examples or the names under "see also". The code of examples,
// input groups, parameters, href, version and status are not searched.
//
// Precision plays no part. The request's types select pages but not the items on a page, and
// classes are not expanded into their properties.
//
// Everything else, threads included, is as in ReferenceDataRetriever.
class VELTRA_REFERENCE_API AllTextDataRetriever final : public ReferenceDataRetriever {
  public:
    // A retriever whose request is set later. Until then a search finds every item, because an
    // empty text is part of any text.
    AllTextDataRetriever();
    explicit AllTextDataRetriever(ReferenceRequest request);
    AllTextDataRetriever(AllTextDataRetriever&& other) noexcept;
    AllTextDataRetriever& operator=(AllTextDataRetriever&& other) noexcept;
    ~AllTextDataRetriever() override;

    [[nodiscard]] static const char* getZORBClassName() noexcept;

  private:
    [[nodiscard]] cache_manager::ReferenceCacheManager::SearchMethod getSearchMethod()
        const override;
    void findReferenceData(const search::Snapshot& snapshot,
                           std::vector<ReferenceData>& results) const override;
};

}  // namespace reference::api
