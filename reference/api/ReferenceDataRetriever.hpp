#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <span>
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

namespace reference::search {
struct ClassExpansion;
class JoinedPages;
class ReferenceRequestExt;
class Snapshot;
}  // namespace reference::search

namespace reference::api {

// Turns one request into the ordered list of items that answer it: here, those with an entity of
// the requested name. Derived retrievers look for something else by overriding the private hooks;
// the way from request to result is the same for all.
//
// If the request admits properties of classes, a class's item is replaced by one synthetic item for
// each of its properties that matches.
//
// Any number of threads may search with one object; one thread at a time may change it or read its
// property.
class VELTRA_REFERENCE_API ReferenceDataRetriever {
  public:
    // A retriever whose request is set later. Until then a search finds nothing.
    ReferenceDataRetriever();

    // Takes the request over and derives from it what every item is compared with.
    explicit ReferenceDataRetriever(ReferenceRequest request);

    ReferenceDataRetriever(ReferenceDataRetriever&& other) noexcept;
    ReferenceDataRetriever& operator=(ReferenceDataRetriever&& other) noexcept;

    virtual ~ReferenceDataRetriever();

    // Searches, and orders the results with a copy of the request's comparator; ties keep the order
    // of product name, href and place on the page. Nothing is de-duplicated. The results outlive
    // the caches, and nothing that happens to these is seen in them.
    //
    // A product whose documentation cannot be parsed is left out. Throws what the parser throws for
    // the lookup files, what the comparator throws, and std::bad_function_call if the comparator is
    // empty and there are two results.
    [[nodiscard]] virtual std::vector<ReferenceData> getReferenceData() const;

    // The request as an object of the scripting language, in a 1-by-1 array that is valid until
    // this object is changed or destroyed. Changing that request does not change this retriever;
    // set the property again for that. One thread at a time, as for a search.
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

    // Whether the request admits entities of this type: it lists the type, or no type at all.
    [[nodiscard]] bool isTypeMatch(property::RefEntityType::Value type) const;

    // The request's text, in lower case unless case counts. Valid until this object is changed.
    [[nodiscard]] const std::u16string& getSearchedText() const noexcept;
    [[nodiscard]] bool isAllTextMatch() const noexcept;
    [[nodiscard]] bool isCaseSensitive() const noexcept;
    [[nodiscard]] bool isExactMatch() const noexcept;

  private:
    // Whether a class's item comes before the items of its matching properties. Called for each
    // entity of the item, in order, until it is true. Here: if everything of the entity's type is
    // wanted.
    [[nodiscard]] virtual bool shouldAddParentEntity(const property::RefEntity& entity,
                                                     const property::RefItem& item) const;

    // How the lookup resources are searched for pages. Called once a search. Here: by entity name.
    [[nodiscard]] virtual cache_manager::ReferenceCacheManager::SearchMethod getSearchMethod()
        const;

    // The results from one product: what its resource holds on the pages that matched. Called once
    // for each product with matches. A DocParserException leaves the product out; any other
    // exception ends the search. Here: every item of those pages, with classes expanded as
    // described above.
    [[nodiscard]] virtual std::vector<ReferenceData> filterReferenceData(
        const Resource& resource, const std::set<std::u16string>& hrefs) const;

    // Whether a property of a class is wanted; `qualifiedName` is the class entity's name, a dot
    // and the property's name. Called for each property, unless everything matches. Here: if it is
    // the requested name.
    [[nodiscard]] virtual bool isPropertyContentMatch(
        const std::u16string& qualifiedName, const property::ClassProperty& property) const;

    // Appends what the documentation has for the request, in the order of product, href and place
    // on the page. Called once a search. Here: what the pages of matching lookup records hold; the
    // hook above is asked only of classes that are not the library's own, which need no hrefs.
    virtual void findReferenceData(const search::Snapshot& snapshot,
                                   std::vector<ReferenceData>& results) const;

  protected:
    // For the library's own classes.
    [[nodiscard]] const search::ReferenceRequestExt& ext() const noexcept;

  private:
    // A request, and what follows from it, which refers to the request.
    struct Prepared;

    void setupRetriever();
    [[nodiscard]] const Prepared& prepared() const noexcept;
    [[nodiscard]] bool overridesFilter() const;
    void addPages(const search::JoinedPages& joined, std::span<const std::uint32_t> hrefs,
                  std::vector<ReferenceData>& results) const;
    void addItem(const property::HeaderInfo& header, const property::RefItem& item,
                 const search::ClassExpansion& expansion,
                 std::vector<ReferenceData>& results) const;

    // Null where no request was given.
    std::shared_ptr<const Prepared> m_prepared;
    bool m_isPropertySearch = false;

    // The request as the scripting language sees it; null until it is first read or set.
    mutable vqArrayPtr m_requestCache;
};

}  // namespace reference::api
