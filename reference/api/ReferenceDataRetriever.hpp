#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "docparser/DocResource.hpp"
#include "property/ClassProperty.hpp"
#include "property/HeaderInfo.hpp"
#include "property/RefEntity.hpp"
#include "property/RefItem.hpp"
#include "reference/api/ReferenceData.hpp"
#include "reference/api/ReferenceRequest.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "reference/api/export.hpp"
#include "vq/vqArray.hpp"

namespace reference::api {

// Turns one request into the ordered list of documentation entries that answer it: here, those
// whose entity bears the requested name. Derived retrievers look for something else by overriding
// the private hooks; the way from request to result is the same for all.
//
// Where the request admits properties of classes, a class's entry gives way to one synthetic entry
// for each of its properties that matches.
//
// One object serves one thread at a time, getReferenceData() included although it is const;
// separate objects may search at the same time.
class VELTRA_REFERENCE_API ReferenceDataRetriever {
  public:
    // A retriever that is to be given its request later. Searching with it finds nothing.
    ReferenceDataRetriever();

    // Takes the request over and derives from it what is asked of every entry.
    explicit ReferenceDataRetriever(ReferenceRequest request);

    ReferenceDataRetriever(ReferenceDataRetriever&& other) noexcept;
    ReferenceDataRetriever& operator=(ReferenceDataRetriever&& other) noexcept;

    virtual ~ReferenceDataRetriever();

    // Searches, and orders what was found with a copy of the request's comparator; ties keep the
    // order of product name, href and place on the page. Nothing is de-duplicated. The results are
    // the caller's own.
    //
    // A product whose documentation cannot be parsed is left out. Throws what the parser throws for
    // the lookup files, what the comparator throws, and std::bad_function_call when the request
    // carries an empty comparator and there are results to compare.
    [[nodiscard]] virtual std::vector<ReferenceData> getReferenceData() const;

    // The request as an object of the scripting language, in a 1-by-1 array that lives as long as
    // this object is neither changed nor gone. What is set on the object later does not reach this
    // retriever; set the property again for that. Counts as a use by one thread, as a search does.
    [[nodiscard]] const vqArray* getReferenceRequestProperty() const;

    // Takes a copy of the request that the first element of `value` wraps, and searches by that
    // from now on. Null is ignored. Throws "VELTRA:referenceapi:ExpectedRequest" for an empty array
    // and "VELTRA:class:RequireClass" for anything else that is no ReferenceRequest; the request
    // stays as it was then.
    void setReferenceRequestProperty(const vqArray* value);

    [[nodiscard]] static const char* getZORBClassName() noexcept;
    [[nodiscard]] static const char* getZORBPackageName() noexcept;

  protected:
    using Resource = docparser::DocResource<property::RefItem>;

    // Whether the request admits entities of this type: it lists the type, or none at all.
    [[nodiscard]] bool isTypeMatch(property::RefEntityType::Value type) const;

    // The request's text, in lower case unless case counts. Lives as long as this object is not
    // changed.
    [[nodiscard]] const std::u16string& getSearchedText() const noexcept { return m_searchedText; }
    [[nodiscard]] bool isAllTextMatch() const noexcept { return m_request.isAllTextMatch(); }
    [[nodiscard]] bool isCaseSensitive() const noexcept { return m_request.isCaseSensitive(); }
    [[nodiscard]] bool isExactMatch() const noexcept { return m_request.isExactMatch(); }

  private:
    // Whether a class's entry itself goes before the entries of its matching properties. Asked of
    // each entity of the entry, in order, until one says yes. Here: when everything of the entity's
    // type is wanted.
    [[nodiscard]] virtual bool shouldAddParentEntity(const property::RefEntity& entity,
                                                     const property::RefItem& item) const;

    // How the lookup resources are searched for pages. Asked once a search. Here: by entity name.
    [[nodiscard]] virtual cache_manager::ReferenceCacheManager::SearchMethod getSearchMethod()
        const;

    // The results that one product's resource yields from the pages that matched. Called once for
    // each product with matches. A DocParserException leaves the product out; anything else ends
    // the search. Here: every entry of those pages, classes' entries as told above.
    [[nodiscard]] virtual std::vector<ReferenceData> filterReferenceData(
        const Resource& resource, const std::set<std::u16string>& hrefs) const;

    // Whether a property of a class is wanted; `qualifiedName` is the class entity's name, a dot
    // and the property's. Asked of each property, unless everything matches. Here: when that name
    // is the requested one.
    [[nodiscard]] virtual bool isPropertyContentMatch(
        const std::u16string& qualifiedName, const property::ClassProperty& property) const;

    void setupRetriever();
    [[nodiscard]] bool findPropertyEntities(const property::RefEntity& entity,
                                            const property::RefItem& item) const;
    [[nodiscard]] bool isPropertyMatch(const property::RefItem& item) const;
    void addPropertyMatches(const property::HeaderInfo& header, const property::RefItem& item,
                            std::vector<ReferenceData>& result) const;
    [[nodiscard]] property::RefItem createPropertyEntity(const property::RefItem& item,
                                                         const std::u16string& groupTitle,
                                                         const property::ClassProperty& property,
                                                         const std::u16string& qualifiedName,
                                                         const std::u16string& entityName) const;

    ReferenceRequest m_request;

    // Derived from the request by setupRetriever().
    std::u16string m_searchedText;
    std::size_t m_segmentCount = 0;
    bool m_isPropertySearch = false;

    // What the last successful property match made, on its way to addPropertyMatches(). The reason
    // why a const search is for one thread at a time.
    mutable std::optional<std::vector<property::RefItem>> m_pendingPropertyEntities;

    // The request as the scripting language sees it; null until it is first asked for, or set.
    mutable vqArrayPtr m_requestCache;
};

}  // namespace reference::api
