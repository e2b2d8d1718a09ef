#include "vref/SeeAlsoTargets.hpp"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <utility>

#include "reference/api/PageNameDataRetriever.hpp"
#include "reference/api/ReferenceDataRetriever.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"

namespace reference::tools {
namespace {

using api::ReferenceData;

// Whether one of the entities has the name, or a longer one that ends with it.
bool isCalled(const ReferenceData& data, const std::u16string& name) {
    return std::ranges::any_of(data.getRefItem().getRefEntities(), [&](const auto& entity) {
        return entity.getName() == name || entity.getName().ends_with(u"." + name);
    });
}

// The entry that the page has for the name: the only one, whatever it is called, or else the one
// with the name.
std::optional<ReferenceData> entryOf(std::vector<ReferenceData> found, const std::u16string& name) {
    if (found.size() != 1)
        std::erase_if(found, [&](const ReferenceData& data) { return !isCalled(data, name); });
    if (found.size() != 1)
        return std::nullopt;
    return std::move(found.front());
}

// A page, and the product that has it.
struct Place {
    std::u16string product;
    std::u16string href;
};

// Where the page of an entry is. A page of another product is given from the help folder of this
// one ("../qix/ref/filter.html"); one of a product that is not installed is not to be had.
std::optional<Place> placeOf(const std::u16string& page, const property::HeaderInfo& header) {
    if (page.empty())
        return std::nullopt;
    if (!page.starts_with(u"../"))
        return Place{header.getShortName(), page};
    namespace fs = std::filesystem;
    const std::u16string path =
        (fs::path(header.getHelpFolder()) / fs::path(page)).lexically_normal().u16string();
    std::optional<Place> place;
    std::size_t longest = 0;
    for (const auto& [product, lookup] : *cache_manager::ReferenceCacheManager::GetLookupCache()) {
        const std::u16string folder = lookup.getHeaderInfo().getHelpFolder() + u"/";
        if (folder.size() > longest && path.starts_with(folder)) {
            longest = folder.size();
            place = Place{product, path.substr(folder.size())};
        }
    }
    return place;
}

std::vector<ReferenceData> pagesAt(const Place& place) {
    return api::PageNameDataRetriever(api::ReferenceRequest(place.href, {}, {place.product}))
        .getReferenceData();
}

std::vector<ReferenceData> entitiesCalled(const std::u16string& name,
                                          const std::u16string& product) {
    if (name.empty())
        return {};
    return api::ReferenceDataRetriever(api::ReferenceRequest(name, {}, {product}))
        .getReferenceData();
}

}  // namespace

std::u16string nameOf(const property::SeeAlso& entry) {
    return entry.getName().substr(0, entry.getName().find(u" – "));
}

std::vector<SeeAlsoTarget> seeAlsoTargets(const ReferenceData& result, PageAddresses* addresses) {
    const auto& header = result.getHeaderInfo();
    std::vector<SeeAlsoTarget> targets;
    for (const auto& entry : result.getRefItem().getSeeAlsoInfo()) {
        const std::u16string name = nameOf(entry);
        const auto place = placeOf(entry.getPage(), header);
        auto target = place ? entryOf(pagesAt(*place), name) : std::nullopt;
        if (!target)
            target = entryOf(entitiesCalled(name, header.getShortName()), name);
        std::string address;
        if (addresses != nullptr && target)
            address = addresses->of(*target);
        else if (addresses != nullptr && place)
            address = addresses->of(place->product, place->href);
        targets.push_back({.purpose = target ? target->getRefItem().getPurpose() : u"",
                           .address = std::move(address)});
    }
    return targets;
}

}  // namespace reference::tools
