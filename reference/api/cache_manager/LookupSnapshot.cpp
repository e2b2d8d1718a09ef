#include "reference/api/cache_manager/LookupSnapshot.hpp"

#include "reference/api/cache_manager/EntitySearch.hpp"
#include "reference/api/cache_manager/requestCaches.hpp"

namespace reference::cache_manager {

LookupSnapshot::LookupSnapshot() : m_lookups(loadedLookupCaches()) {}

std::map<std::u16string, ProductMatchData> LookupSnapshot::productsWithEntity(
    const api::ReferenceRequest& request, ReferenceCacheManager::SearchMethod method) const {
    if (!m_lookups->installed)
        return {};
    return EntitySearch(request, method).run(*m_lookups->installed);
}

std::shared_ptr<const LookupSnapshot::Resource> LookupSnapshot::resourceOf(
    const std::u16string& product, const std::u16string& referenceFileName) const {
    return resourceFor(*m_lookups, product, referenceFileName);
}

}  // namespace reference::cache_manager
