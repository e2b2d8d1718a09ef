// Finds the pages that a request asks for. Internal: no public header includes it.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string_view>

#include <boost/container/small_vector.hpp>

#include "reference/search/LookupIndex.hpp"
#include "reference/search/NumberSet.hpp"
#include "reference/search/ReferenceRequestExt.hpp"
#include "reference/search/SearchMethod.hpp"
#include "reference/search/StoredTextMatcher.hpp"
#include "reference/search/TextQuery.hpp"

namespace reference::search {

// One search of the lookup records. The index proposes keys, records or hrefs; each of them is then
// judged by the questions on the request as if all had been walked. One thread.
class EntitySearch {
  public:
    // Is told the hrefs of one product that match, by their numbers in its lookup records:
    // ascending, and so in the order of the texts; at least one. They are gone when it returns.
    using Visit = std::function<void(std::uint32_t product, std::span<const std::uint32_t> hrefs)>;

    // Index and request must outlive the object.
    EntitySearch(const LookupIndex& index, const ReferenceRequestExt& ext, SearchMethod method)
        : m_index(index), m_ext(ext), m_method(method) {}

    // Calls `visit` for each product that has a match, in their order. What it throws ends the
    // search.
    void run(const Visit& visit);

  private:
    using LookupImage = docimage::LookupImage;
    using Proposals = LookupIndex::Proposals;

    [[nodiscard]] Proposals proposals() const;
    void propose(docimage::NameKind whole, std::string_view form, Proposals& proposals) const;

    void searchNamesAndPurposes(const Visit& visit);
    void searchProductLookup(std::uint32_t product,
                             std::span<const LookupIndex::Proposal> proposals, const Visit& visit);

    void findExactEntries(const LookupImage& lookup, std::uint32_t key, NumberSet& hrefs) const;
    void doReferenceSearch(const LookupImage& lookup, std::uint32_t key, NumberSet& hrefs);
    void doClassEntitySearch(const LookupImage& lookup, std::uint32_t key, NumberSet& hrefs);
    void doPageNameSearch(const LookupImage& lookup, std::uint32_t href, NumberSet& hrefs);
    void doNameAndPurposeSearch(std::uint32_t product, const TextQuery& query,
                                TextQuery::Words words, const Visit& visit) const;
    void doAllTextSearch(const LookupImage& lookup, NumberSet& hrefs) const;

    [[nodiscard]] bool isTypeAccepted(const docimage::StoredRecord& record) const noexcept {
        return m_ext.isTypeAccepted(record.type, record.functionType);
    }
    void setName(std::string_view stored);
    [[nodiscard]] std::u16string_view name() const noexcept {
        return {m_name.data(), m_name.size()};
    }

    const LookupIndex& m_index;
    const ReferenceRequestExt& m_ext;
    const SearchMethod m_method;
    // The name that is being judged, folded unless case counts.
    boost::container::small_vector<char16_t, 128> m_name;
};

}  // namespace reference::search
