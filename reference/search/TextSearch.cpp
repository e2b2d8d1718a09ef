#include "reference/search/TextSearch.hpp"

#include <algorithm>
#include <string>

#include "docimage/searchedTexts.hpp"
#include "reference/search/NumberSet.hpp"

namespace reference::search {

using docimage::LookupImage;
using docimage::StoredRecord;

bool TextSearch::isWanted(const LookupImage& lookup) const {
    if (m_ext.admitsAllTypes())
        return lookup.recordCount() > 0;
    for (std::uint32_t number = 0; number < lookup.recordCount(); ++number) {
        const StoredRecord& record = lookup.record(number);
        if (m_ext.isTypeAccepted(record.type, record.functionType))
            return true;
    }
    return false;
}

std::vector<std::uint32_t> TextSearch::itemsOf(const LookupImage& lookup, const JoinedPages& joined,
                                               TextQuery::Words words) const {
    const ProductPages& pages = joined.pages();
    const bool isConfirmed =
        m_ext.searchText().empty() || (m_query.isExact() && pages.words().isWellFormed());
    std::vector<std::uint32_t> items = proposedItems(pages, words);
    StoredTextMatcher matcher(m_ext);
    std::erase_if(items, [&](std::uint32_t item) {
        const std::uint32_t href = joined.hrefOfPage(pages.pageOfItem(item));
        return href == JoinedPages::none || !isNominated(lookup, href) ||
               !(isConfirmed || hasContentMatch(pages, item, matcher));
    });
    return items;
}

// The lexicon knows words. For a text that has none, such as "->", all that is stored of the items
// is gone through in one pass: it has no letters, so that it stands there as it is.
std::vector<std::uint32_t> TextSearch::proposedItems(const ProductPages& pages,
                                                     TextQuery::Words& words) const {
    if (m_query.hasParts())
        return TextQuery::textsWithAll(pages.words(), words, pages.itemCount());
    const std::string_view wanted = m_ext.partForm();
    if (pages.image() == nullptr || wanted.empty())
        return allNumbers(pages.itemCount());
    const docimage::TextTable& records = pages.image()->records();
    const std::string_view all = records.bytes();
    std::vector<std::uint32_t> items;
    for (std::size_t at = all.find(wanted); at != std::string_view::npos;) {
        const std::size_t item = records.textAt(at);
        items.push_back(static_cast<std::uint32_t>(item));
        // Onward even where the starts are damaged.
        at = all.find(wanted, std::max(records.startOf(item + 1), at + 1));
    }
    return items;
}

// Whether one of the item's texts holds the text that is looked for.
bool TextSearch::hasContentMatch(const ProductPages& pages, std::uint32_t item,
                                 StoredTextMatcher& matcher) const {
    if (const docimage::PageImage* image = pages.image())
        return image->anySearchedText(
            item, [&matcher](std::string_view text) { return matcher.matches(text); });
    return docimage::anySearchedText(
        pages.item(item), [this](const std::u16string& text) { return m_ext.isTextMatch(text); });
}

bool TextSearch::isNominated(const LookupImage& lookup, std::uint32_t href) const {
    return m_ext.admitsAllTypes() ||
           std::ranges::any_of(lookup.recordsOfHref(href), [&](std::uint32_t number) {
               const StoredRecord& record = lookup.record(number);
               return m_ext.isTypeAccepted(record.type, record.functionType);
           });
}

}  // namespace reference::search
