#include "vref/ProductFigures.hpp"

#include <set>
#include <string_view>

namespace reference::tools {
namespace {

std::u16string_view pageOf(std::u16string_view href) {
    return href.substr(0, href.find(u'#'));
}

}  // namespace

std::size_t countEntities(const LookupResource& resource) {
    std::size_t count = 0;
    for (const auto& [name, records] : resource.getItems())
        count += records.size();
    return count;
}

std::size_t countPages(const LookupResource& resource) {
    std::set<std::u16string_view> pages;
    for (const auto& [name, records] : resource.getItems())
        for (const auto& record : records)
            pages.insert(pageOf(record.getHref()));
    return pages.size();
}

std::size_t countPages(const cache_manager::ReferenceCacheManager::Resource& resource) {
    std::set<std::u16string_view> pages;
    for (const auto& [href, items] : resource.getItems())
        pages.insert(pageOf(href));
    return pages.size();
}

}  // namespace reference::tools
