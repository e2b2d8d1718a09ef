#include "vref/NamedEntries.hpp"

#include <functional>
#include <iostream>
#include <span>

#include "docparser/DocParserException.hpp"
#include "property/RefEntityType.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "vref/DisplayText.hpp"
#include "vref/ExitStatus.hpp"
#include "vref/Ordering.hpp"
#include "vref/ResultList.hpp"
#include "vref/Terminal.hpp"

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
std::vector<ReferenceData> entriesOfPage(const ReferenceRequest& request) {
    std::vector<ReferenceData> found;
    const auto lookup = ReferenceCacheManager::GetLookupCache();
    const auto everything = ReferenceCacheManager::GetProductsWithEntity(
        ReferenceRequest::createMatchAllTextRequest(request.getTypes(), request.getProducts()),
        ReferenceCacheManager::ReferenceSearch);
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

std::vector<ReferenceData> firstReading(const ReferenceRequest& request) {
    ReferenceRequest loose = request;
    loose.setEntityPrecision(api::EntityPrecision::Ignore_Package);
    ReferenceRequest loosest = loose;
    loosest.setEntityCaseSensitivity(api::EntityCaseSensitivity::Insensitive);
    const std::function<std::vector<ReferenceData>()> readings[] = {
        [&] { return retrieve(Search::Entity, request); },
        [&] { return entriesOfPage(request); },
        [&] { return retrieve(Search::Entity, loose); },
        [&] { return retrieve(Search::Entity, loosest); },
        [&] { return propertiesOfPage(request); },
    };
    for (const auto& reading : readings)
        if (auto found = reading(); !found.empty())
            return found;
    return {};
}

}  // namespace

std::vector<ReferenceData> entriesNamed(const QueryOptions& query,
                                        const Documentation& documentation) {
    ReferenceRequest request = toRequest(query, documentation);
    request.setRefRequestComparator(
        Ordering::forPerson(request.getEntityText(), request.getEntityCaseSensitivity())
            .comparator());
    auto found = firstReading(request);
    if (found.empty() && documentation.unreadableFiles() > 0)
        throw UnusableError("What was found could not be read (see above).");
    if (found.empty())
        std::cerr << "vref: there is neither an entity nor a page called \""
                  << printable(query.name) << "\"\n";
    return found;
}

void tellOthers(const std::vector<ReferenceData>& results) {
    if (results.size() < 2)
        return;
    std::cout.flush();
    std::cerr << "\nvref: " << results.size() - 1
              << " more by this name; --product, --type or the page tell them apart:\n";
    writeList(std::cerr, Terminal::ofStandardError(), std::span(results).subspan(1),
              {.hrefs = true});
}

}  // namespace reference::tools
