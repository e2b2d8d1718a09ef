#include "reference/ask/hitData.hpp"

#include <algorithm>
#include <cstddef>

#include <boost/container/small_vector.hpp>

#include "docimage/unitBytes.hpp"
#include "docparser/DocParserException.hpp"
#include "reference/api/comparator/PreferredOrderComparator.hpp"
#include "reference/search/ProductPages.hpp"

namespace reference::ask {

using search::JoinedPages;
using search::ProductPages;

namespace {

// The item of a page that documents the name; the page's first where none says so.
api::ReferenceData itemOf(const ProductPages& pages, std::uint32_t page,
                          const std::u16string& name) {
    const auto& header = pages.resource().getHeaderInfo();
    const auto [first, last] = pages.itemsOfPage(page);
    for (std::uint32_t number = first; number < last; ++number) {
        auto item = pages.item(number);
        if (std::ranges::any_of(item.getRefEntities(),
                                [&](const auto& entity) { return entity.getName() == name; }))
            return {header, std::move(item)};
    }
    for (std::uint32_t number = first; number < last; ++number)
        for (const auto& property : pages.expansion(number).properties)
            if (property.qualifiedName == name)
                return {header, property.item};
    return {header, pages.item(first)};
}

}  // namespace

std::vector<api::ReferenceData> dataOf(const search::Snapshot& snapshot, std::uint32_t product,
                                       std::uint32_t key,
                                       std::span<const property::RefEntityType::Value> types) {
    std::vector<api::ReferenceData> data;
    const auto& lookup = snapshot.index()->lookup(product);
    try {
        const JoinedPages* const joined = snapshot.pagesOf(product);
        if (joined == nullptr)
            return data;
        const std::u16string name = docimage::fromUnitBytes(lookup.key(key));
        const auto [first, last] = lookup.recordsOfKey(key);
        boost::container::small_vector<std::uint32_t, 4> seen;
        for (std::uint32_t record = first; record < last; ++record) {
            if (!types.empty() &&
                std::ranges::find(types, lookup.record(record).type) == types.end())
                continue;
            const std::uint32_t page = joined->pageOfHref(lookup.record(record).href);
            if (page == JoinedPages::none || std::ranges::find(seen, page) != seen.end())
                continue;
            seen.push_back(page);
            const auto [begin, end] = joined->pages().itemsOfPage(page);
            if (begin < end)
                data.push_back(itemOf(joined->pages(), page, name));
        }
        std::ranges::stable_sort(data, api::comparator::PreferredOrderComparator());
    } catch (const docparser::DocParserException&) {
        data.clear();
    }
    return data;
}

}  // namespace reference::ask
