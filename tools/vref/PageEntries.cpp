#include "vref/PageEntries.hpp"

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "docparser/DocParserException.hpp"
#include "fl/i18n/transform.hpp"
#include "reference/api/PageNameDataRetriever.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"

namespace reference::tools {
namespace {

using api::ReferenceData;
using api::ReferenceRequest;
using cache_manager::ReferenceCacheManager;
using Matches = std::map<std::u16string, cache_manager::ProductMatchData>;

std::u16string lowered(const std::u16string& text) {
    using fl::i18n::detail::transform;
    const fl::i18n::to_lower rule;
    std::u16string result(transform(nullptr, 0, text.data(), text.size(), rule), u'\0');
    transform(result.data(), result.size(), text.data(), text.size(), rule);
    return result;
}

// The ways in which a typed name may be written in an href: as it is, or with one of the usual file
// name endings.
class PageName {
  public:
    explicit PageName(const ReferenceRequest& request) : m_ignoresCase(!request.isCaseSensitive()) {
        const std::u16string typed = folded(request.getEntityText());
        m_hasFragment = typed.find(u'#') != std::u16string::npos;
        m_spellings = {typed};
        if (m_hasFragment)
            return;
        m_spellings.push_back(typed + u".html");
        m_spellings.push_back(typed + (typed.ends_with(u'/') ? u"" : u"/") + u"index.html");
    }

    // Whether the href is the page of this whole name or lies on it.
    [[nodiscard]] bool isWhole(const std::u16string& helpFolder, const std::u16string& href) const {
        const std::u16string place = placeOf(href);
        const std::u16string withFolder = folded(helpFolder) + u"/" + place;
        return std::ranges::any_of(m_spellings, [&](const std::u16string& spelling) {
            return spelling == place || spelling == withFolder;
        });
    }

    // Whether the page's name ends with this name, from a "/" on.
    [[nodiscard]] bool isEnd(const std::u16string& href) const {
        const std::u16string place = u"/" + placeOf(href);
        return std::ranges::any_of(m_spellings, [&](const std::u16string& spelling) {
            return place.ends_with(u"/" + spelling);
        });
    }

  private:
    [[nodiscard]] std::u16string folded(const std::u16string& text) const {
        return m_ignoresCase ? lowered(text) : text;
    }
    // The part of an href that is compared.
    [[nodiscard]] std::u16string placeOf(const std::u16string& href) const {
        return folded(m_hasFragment ? href : href.substr(0, href.find(u'#')));
    }

    bool m_ignoresCase;
    bool m_hasFragment = false;
    std::vector<std::u16string> m_spellings;
};

// Adds the hrefs that `admits` accepts to what was found; returns whether there was one.
template <class Admits>
bool addHrefs(const Matches& all, Matches& found, const Admits& admits) {
    bool isAny = false;
    for (const auto& [product, matches] : all)
        for (const std::u16string& href : matches.hrefs)
            if (admits(product, href)) {
                auto& productMatches = found[product];
                productMatches.referenceFileName = matches.referenceFileName;
                productMatches.hrefs.insert(href);
                isAny = true;
            }
    return isAny;
}

void addEntries(const std::u16string& product, const cache_manager::ProductMatchData& matches,
                std::vector<ReferenceData>& entries) {
    try {
        const auto resource =
            ReferenceCacheManager::GetResourceCacheForProduct(matches.referenceFileName, product);
        if (!resource)
            return;
        for (const std::u16string& href : matches.hrefs)
            if (const auto items = resource->getItems().find(href);
                items != resource->getItems().end())
                for (const auto& item : items->second)
                    entries.emplace_back(resource->getHeaderInfo().copy(), item.copy());
    } catch (const docparser::DocParserException&) {
        // Already reported when it was read; the other products answer.
    }
}

}  // namespace

std::vector<ReferenceData> entriesOfNamedPages(const ReferenceRequest& request) {
    if (request.isAllTextMatch())
        return api::PageNameDataRetriever(request).getReferenceData();
    Matches found = ReferenceCacheManager::GetProductsWithEntity(
        request, ReferenceCacheManager::PageNameSearch);
    const Matches all = ReferenceCacheManager::GetProductsWithEntity(
        ReferenceRequest::createMatchAllTextRequest(request.getTypes(), request.getProducts()),
        ReferenceCacheManager::ReferenceSearch);
    const auto lookup = ReferenceCacheManager::GetLookupCache();
    const PageName name(request);
    const bool isWhole = addHrefs(all, found, [&](const auto& product, const auto& href) {
        const auto header = lookup->find(product);
        return header != lookup->end() &&
               name.isWhole(header->second.getHeaderInfo().getHelpFolder(), href);
    });
    if (!isWhole)
        addHrefs(all, found, [&](const auto&, const auto& href) { return name.isEnd(href); });

    std::vector<ReferenceData> entries;
    for (const auto& [product, matches] : found)
        addEntries(product, matches, entries);
    const auto comparator = request.getRefRequestComparator();
    std::stable_sort(entries.begin(), entries.end(), comparator);
    return entries;
}

}  // namespace reference::tools
