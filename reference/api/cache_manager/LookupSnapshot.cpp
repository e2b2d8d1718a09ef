#include "reference/api/cache_manager/LookupSnapshot.hpp"

#include <algorithm>

#include "reference/api/cache_manager/EntitySearch.hpp"
#include "reference/api/cache_manager/resourceReading.hpp"

namespace reference::cache_manager {

LookupSnapshot::LookupSnapshot() : m_lookup(loadedLookupCache()) {}

std::map<std::u16string, ProductMatchData> LookupSnapshot::productsWithEntity(
    const api::ReferenceRequest& request, ReferenceCacheManager::SearchMethod method) const {
    return EntitySearch(request, method).run(*m_lookup);
}

std::shared_ptr<const LookupSnapshot::Resource> LookupSnapshot::resourceOf(
    const std::u16string& product, const std::u16string& referenceFileName) const {
    auto cached = ReferenceCacheManager::GetResourceCacheForProduct(referenceFileName, product);
    if (!cached || isOfSameReading(*cached, referenceFileName))
        return cached;
    const bool isCurrent = ReferenceCacheManager::GetLookupCache() == m_lookup;
    return readResourceAgain(referenceFileName, product, isCurrent);
}

// A resource tells by the name of its file which reading of the documentation it is of. It need not
// be the file that the product is listed with: a product that came along in another product's file
// is kept from there. It must be a file that these lookup resources know. A source that does not
// name its files tells nothing, and is taken at its word.
bool LookupSnapshot::isOfSameReading(const Resource& resource,
                                     const std::u16string& referenceFileName) const {
    const std::u16string& file = resource.getHeaderInfo().getReferenceFileName();
    if (file == referenceFileName || file.empty() || referenceFileName.empty())
        return true;
    return std::ranges::any_of(*m_lookup, [&](const auto& product) {
        return product.second.getHeaderInfo().getReferenceFileName() == file;
    });
}

}  // namespace reference::cache_manager
