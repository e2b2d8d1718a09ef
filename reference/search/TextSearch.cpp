#include "reference/search/TextSearch.hpp"

#include <algorithm>
#include <string>

#include "docimage/searchedTexts.hpp"
#include "reference/search/NumberSet.hpp"

namespace reference::search {

using docimage::LookupImage;
using docimage::StoredRecord;

bool hasContentMatch(const ReferenceRequestExt& ext, const property::RefItem& item) {
    return docimage::anySearchedText(
        item, [&](const std::u16string& text) { return ext.isTextMatch(text); });
}

bool TextSearch::isWanted(const LookupImage& lookup) const {
    for (std::uint32_t number = 0; number < lookup.recordCount(); ++number) {
        const StoredRecord& record = lookup.record(number);
        if (m_ext.isTypeAccepted(record.type, record.functionType))
            return true;
    }
    return false;
}

std::vector<std::uint32_t> TextSearch::itemsOf(const LookupImage& lookup,
                                               const JoinedPages& joined) const {
    const ProductPages& pages = joined.pages();
    const bool lexiconTells = m_query.hasParts();
    const bool isConfirmed = m_ext.searchText().empty() ||
                             (lexiconTells && m_query.isExact() && pages.words().isWellFormed());
    std::vector<std::uint32_t> items = lexiconTells
                                           ? m_query.textsWithAll(pages.words(), pages.itemCount())
                                           : allNumbers(pages.itemCount());
    std::erase_if(items, [&](std::uint32_t item) {
        const std::uint32_t href = joined.hrefOfPage(pages.pageOfItem(item));
        return href == JoinedPages::none || !isNominated(lookup, href) ||
               !(isConfirmed || hasContentMatch(m_ext, pages.item(item)));
    });
    return items;
}

bool TextSearch::isNominated(const LookupImage& lookup, std::uint32_t href) const {
    return m_ext.admitsAllTypes() ||
           std::ranges::any_of(lookup.recordsOfHref(href), [&](std::uint32_t number) {
               const StoredRecord& record = lookup.record(number);
               return m_ext.isTypeAccepted(record.type, record.functionType);
           });
}

}  // namespace reference::search
