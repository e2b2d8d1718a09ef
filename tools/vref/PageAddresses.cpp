#include "vref/PageAddresses.hpp"

#include <algorithm>

#include "fl/i18n/utf.hpp"

namespace reference::tools {

std::string PageAddresses::of(const api::ReferenceData& result) {
    return of(result.getHeaderInfo().getShortName(), result.getRefItem().getHref());
}

std::string PageAddresses::of(const std::u16string& product, const std::u16string& reference) {
    const std::string* const folder = folderOf(product);
    if (folder == nullptr)
        return {};
    const std::string href = fl::i18n::toUtf8(reference);
    const auto end = std::min(href.find('#'), href.size());
    Page page{product, href.substr(0, end)};
    auto known = m_places.find(page);
    if (known == m_places.end()) {
        auto place = placeOf(*folder, page.second);
        known = m_places.emplace(std::move(page), std::move(place)).first;
    }
    if (!known->second)
        return {};
    PagePlace place = *known->second;
    place.fragment = href.substr(std::min(end + 1, href.size()));
    return place.address();
}

std::vector<std::string> PageAddresses::ofAll(std::span<const api::ReferenceData> results) {
    std::vector<std::string> addresses;
    addresses.reserve(results.size());
    for (const auto& result : results)
        addresses.push_back(of(result));
    return addresses;
}

const std::string* PageAddresses::folderOf(const std::u16string& product) {
    auto known = m_folders.find(product);
    if (known == m_folders.end()) {
        const auto source = m_documentation.sourceOf(product);
        known =
            m_folders.emplace(product, source ? std::optional(source->folder) : std::nullopt).first;
    }
    return known->second ? &*known->second : nullptr;
}

}  // namespace reference::tools
