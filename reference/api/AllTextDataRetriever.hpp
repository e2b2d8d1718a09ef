#pragma once

#include <set>
#include <string>
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
    [[nodiscard]] std::vector<ReferenceData> filterReferenceData(
        const Resource& resource, const std::set<std::u16string>& hrefs) const override;

    [[nodiscard]] bool hasContentMatch(const property::RefItem& item) const;
    [[nodiscard]] bool isTextMatch(const std::u16string& text) const;
    [[nodiscard]] bool hasInfoMatch(const property::ObjectInfo& info) const;
    [[nodiscard]] bool hasClassPropertyMatch(
        const std::vector<property::ClassPropertyGroup>& groups) const;
    [[nodiscard]] bool hasExampleMatch(const std::vector<property::Example>& examples) const;
    [[nodiscard]] bool hasSyntaxGroupMatch(const std::vector<property::SyntaxGroup>& groups) const;
};

}  // namespace reference::api
