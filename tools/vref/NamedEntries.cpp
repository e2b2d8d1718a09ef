#include "vref/NamedEntries.hpp"

#include <algorithm>
#include <iostream>
#include <span>
#include <utility>

#include "docparser/DocParserException.hpp"
#include "property/RefEntityType.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "reference/ask/Rung.hpp"
#include "vref/DisplayText.hpp"
#include "vref/ExitStatus.hpp"
#include "vref/Finding.hpp"
#include "vref/ResultList.hpp"
#include "vref/StandardStreams.hpp"

namespace reference::tools {
namespace {

using api::ReferenceData;
using api::ReferenceRequest;
using cache_manager::ReferenceCacheManager;
using property::RefEntityType;

// Whether what the user typed is this page: its href, with or without the help folder before it.
bool isPage(const std::u16string& typed, const std::u16string& helpFolder,
            const std::u16string& href) {
    return typed == href || typed == helpFolder + u"/" + href;
}

// The entries that are filed under the page that the request's text names.
std::vector<ReferenceData> entriesFiledUnder(const ReferenceRequest& request) {
    std::vector<ReferenceData> found;
    const auto everything = ReferenceCacheManager::GetProductsWithEntity(
        ReferenceRequest::createMatchAllTextRequest(request.getTypes(), request.getProducts()),
        ReferenceCacheManager::ReferenceSearch);
    // Loaded by the search.
    const auto lookup = ReferenceCacheManager::GetLookupCache();
    for (const auto& [product, matches] : everything) {
        const auto& helpFolder = lookup->at(product).getHeaderInfo().getHelpFolder();
        for (const auto& href : matches.hrefs) {
            if (!isPage(request.getEntityText(), helpFolder, href))
                continue;
            try {
                const auto resource = ReferenceCacheManager::GetResourceCacheForProduct(
                    matches.referenceFileName, product);
                if (!resource || !resource->getItems().contains(href))
                    continue;
                for (const auto& item : resource->getItems().at(href))
                    found.emplace_back(resource->getHeaderInfo().copy(), item.copy());
            } catch (const docparser::DocParserException&) {
                // Already reported when it was read; another product may have such a page too.
            }
        }
    }
    return found;
}

// The class properties that are documented on the page that the request's text names: they are
// filed under their class's page, not under their own.
std::vector<ReferenceData> propertiesOfPage(const ReferenceRequest& request) {
    auto found = retrieve(Search::Entity, ReferenceRequest::createMatchAllTextRequest(
                                              {RefEntityType::Property}, request.getProducts()));
    std::erase_if(found, [&](const ReferenceData& result) {
        return !isPage(request.getEntityText(), result.getHeaderInfo().getHelpFolder(),
                       result.getRefItem().getHref());
    });
    return found;
}

// What the options of a request say, or a question finds.
NamedEntries fromFinding(Finding finding) {
    NamedEntries found;
    found.alike = finding.results.size();
    if (!finding.foundBy.empty()) {
        const FoundBy& first = finding.foundBy.front();
        found.alike = static_cast<std::size_t>(
            std::ranges::count(finding.foundBy, first.rung, &FoundBy::rung));
        const bool isName = first.rung == ask::toString(ask::Rung::Name) ||
                            first.rung == ask::toString(ask::Rung::AnyCase) ||
                            first.rung == ask::toString(ask::Rung::WithoutPackage);
        if (!isName || !first.change.empty())
            found.change = first.description;
    }
    found.entries = std::move(finding.results);
    return found;
}

// What does not look at names.
NamedEntries fromResults(std::vector<ReferenceData> results) {
    NamedEntries found;
    found.alike = results.size();
    found.entries = std::move(results);
    return found;
}

// A page is not what a question describes.
bool looksLikePage(const std::string& text) {
    return text.ends_with(".html") || text.ends_with(".htm") ||
           text.find(".html#") != std::string::npos || text.find(".htm#") != std::string::npos;
}

NamedEntries firstReading(const FindOptions& options, const Documentation& documentation) {
    const ReferenceRequest request = toRequest(options.query, documentation);
    const bool isPage = looksLikePage(options.query.name);
    NamedEntries asked;
    if (!isPage)
        asked = fromFinding(findEntries(options, documentation));
    if (!asked.entries.empty() && asked.change.empty())
        return asked;
    if (auto page = entriesFiledUnder(request); !page.empty())
        return fromResults(std::move(page));
    if (!isPage)
        return asked;
    if (auto exact = retrieve(Search::Entity, request); !exact.empty())
        return fromResults(std::move(exact));
    return fromResults(propertiesOfPage(request));
}

}  // namespace

NamedEntries entriesNamed(const QueryOptions& query, std::size_t nth,
                          const Documentation& documentation) {
    // So many are listed at most.
    constexpr std::size_t mostAlike = 200;
    FindOptions options{.query = query, .limit = std::max(nth, mostAlike)};
    NamedEntries found = firstReading(options, documentation);
    if (found.entries.empty() && documentation.unreadableFiles() > 0)
        throw UnusableError("What was found could not be read (see above).");
    if (documentation.missesProducts() && found.entries.empty())
        throw UnusableError("Nothing is found in what could be read (see above).");
    if (found.entries.empty()) {
        say("there is neither an entity nor a page called \"" + printableLine(query.name) + "\"");
        return found;
    }
    if (nth > found.entries.size()) {
        say("there are only " + std::to_string(found.entries.size()) + " entries for \"" +
            printableLine(query.name) + "\"");
        return {};
    }
    found.entries.erase(found.entries.begin(),
                        found.entries.begin() + static_cast<std::ptrdiff_t>(nth - 1));
    found.alike = nth == 1 ? found.alike : 1;
    return found;
}

std::vector<ReferenceData> entriesOfPage(const QueryOptions& query,
                                         const Documentation& documentation) {
    const ReferenceRequest request = toRequest(query, documentation);
    auto filed = entriesFiledUnder(request);
    return filed.empty() ? propertiesOfPage(request) : std::move(filed);
}

void tellOthers(const NamedEntries& found, Colours colours) {
    std::cout.flush();
    if (!found.change.empty())
        std::cerr << "\nvref: " << printableLine(found.change) << '\n';
    if (found.alike < 2)
        return;
    std::cerr << "\nvref: " << found.alike - 1
              << " more like this; --nth, --product, --type or the page tell them apart:\n";
    constexpr std::size_t mostListed = 20;
    const std::size_t listed = std::min(found.alike - 1, mostListed);
    writeList(std::cerr, Terminal::ofStandardError(colours),
              std::span(found.entries).subspan(1, listed), {.hrefs = true});
    if (listed < found.alike - 1)
        std::cerr << "vref: and " << found.alike - 1 - listed << " more\n";
}

}  // namespace reference::tools
