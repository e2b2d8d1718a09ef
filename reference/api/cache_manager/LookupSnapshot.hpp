// The documentation as one request sees it. Internal: no public header includes it.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "reference/api/cache_manager/ProductMatchData.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"

namespace reference::cache_manager {

struct LookupCaches;

// The lookup resources that one request works with from its first look to its last result, however
// often the caches are cleared and the language is changed meanwhile. Immutable; any thread.
class LookupSnapshot {
  public:
    using Resource = ReferenceCacheManager::Resource;

    // What the lookup cache holds, after loading it when it is not loaded, which reads the lookup
    // files once at most. Throws what the parser throws.
    LookupSnapshot();

    // What ReferenceCacheManager::GetProductsWithEntity says of these lookup resources.
    [[nodiscard]] std::map<std::u16string, ProductMatchData> productsWithEntity(
        const api::ReferenceRequest& request, ReferenceCacheManager::SearchMethod method) const;

    // The resource of a product that was found, as
    // ReferenceCacheManager::GetResourceCacheForProduct has it; null when the file does not hold
    // the product. Throws what the parser throws where the product is not cached.
    //
    // While the language is being changed, the cache may hold the product in one language and this
    // may have it in the other. An answer that mixed the two would be wrong in both. The product is
    // then read from the file that this names, once at most for one reading of the lookups.
    [[nodiscard]] std::shared_ptr<const Resource> resourceOf(
        const std::u16string& product, const std::u16string& referenceFileName) const;

  private:
    std::shared_ptr<const LookupCaches> m_lookups;
};

}  // namespace reference::cache_manager
