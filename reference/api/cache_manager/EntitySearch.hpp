// The rules by which a request finds pages in the lookup resources. Internal: no public header
// includes it.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "property/RefItemLookup.hpp"
#include "reference/api/ReferenceRequest.hpp"
#include "reference/api/cache_manager/ProductMatchData.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"

namespace reference::cache_manager {

// One search: a request with all that follows from it, worked out once. Immutable; any thread.
class EntitySearch {
  public:
    EntitySearch(const api::ReferenceRequest& request, ReferenceCacheManager::SearchMethod method);

    // The products of `lookup` that have a match, and their matching hrefs.
    [[nodiscard]] std::map<std::u16string, ProductMatchData> run(
        const ReferenceCacheManager::LookupCache& lookup) const;

  private:
    using LookupResource = docparser::DocResource<property::RefItemLookup>;
    using Record = property::RefItemLookup;
    using Hrefs = std::set<std::u16string>;
    // Whether the name test holds for the key that is being walked; empty until it has been asked.
    using NameMemo = std::optional<bool>;

    [[nodiscard]] bool coversAllProducts() const;
    [[nodiscard]] Hrefs searchResource(const LookupResource& resource) const;
    [[nodiscard]] Hrefs findExactEntries(const LookupResource& resource) const;
    [[nodiscard]] Hrefs searchLookupEntries(const LookupResource& resource) const;

    void visit(const std::u16string& key, const Record& record, NameMemo& memo, Hrefs& hrefs) const;
    void visitByName(const std::u16string& name, const Record& record, NameMemo& memo,
                     Hrefs& hrefs) const;
    void visitByClass(const std::u16string& key, const Record& record, NameMemo& memo,
                      Hrefs& hrefs) const;
    void insertIf(bool isMatch, const Record& record, Hrefs& hrefs) const;

    [[nodiscard]] bool isTypeAccepted(const Record& record) const;
    [[nodiscard]] bool isEntityNameMatch(const std::u16string& candidate,
                                         const Record& record) const;

    const api::ReferenceRequest m_request;
    const ReferenceCacheManager::SearchMethod m_method;
    // The request's text, in lower case unless case counts.
    const std::u16string m_searchText;
    // The number of dot-separated components of the search text.
    const std::size_t m_componentCount;
    const bool m_admitsMethods;
};

// The test behind ReferenceCacheManager::IsNameAndPurposeContentMatch, which says what it does.
[[nodiscard]] bool isNameOrPurposePart(const std::u16string& searchText, const std::u16string& name,
                                       const std::u16string& purpose, bool caseSensitive);

}  // namespace reference::cache_manager
