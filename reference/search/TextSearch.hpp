// Finds the items that say a text. Internal: no public header includes it.
#pragma once

#include <cstdint>
#include <vector>

#include "docimage/LookupImage.hpp"
#include "reference/search/ProductPages.hpp"
#include "reference/search/ReferenceRequestExt.hpp"
#include "reference/search/StoredTextMatcher.hpp"
#include "reference/search/TextQuery.hpp"

namespace reference::search {

// A search of all texts: the items that say the text, on pages that a lookup record of an accepted
// type leads to. The lexicon of a product proposes items; hasContentMatch() confirms them where the
// lexicon alone cannot tell.
class TextSearch {
  public:
    // `ext` must outlive the object.
    explicit TextSearch(const ReferenceRequestExt& ext) : m_ext(ext), m_query(ext) {}

    // Whether any record of the product is of an accepted type; if not, its pages are not wanted.
    [[nodiscard]] bool isWanted(const docimage::LookupImage& lookup) const;

    [[nodiscard]] const TextQuery& query() const noexcept { return m_query; }

    // The items of a product, in the order of its pages. `words` are what the query finds in the
    // product's lexicon.
    [[nodiscard]] std::vector<std::uint32_t> itemsOf(const docimage::LookupImage& lookup,
                                                     const JoinedPages& joined,
                                                     TextQuery::Words words) const;

  private:
    [[nodiscard]] std::vector<std::uint32_t> proposedItems(const ProductPages& pages,
                                                           TextQuery::Words& words) const;
    [[nodiscard]] bool isNominated(const docimage::LookupImage& lookup, std::uint32_t href) const;
    [[nodiscard]] bool hasContentMatch(const ProductPages& pages, std::uint32_t item,
                                       StoredTextMatcher& matcher) const;

    const ReferenceRequestExt& m_ext;
    const TextQuery m_query;
};

}  // namespace reference::search
