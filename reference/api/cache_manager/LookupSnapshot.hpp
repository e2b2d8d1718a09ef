// The documentation as one request sees it. Internal: no public header includes it.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "reference/api/cache_manager/ProductMatchData.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"

namespace reference::cache_manager {

// The lookup resources that one request works with from its first look to its last result, however
// often the caches are cleared and the language is changed meanwhile. Immutable; any thread.
class LookupSnapshot {
  public:
    using Resource = ReferenceCacheManager::Resource;

    // What the lookup cache holds, after loading it when it is not loaded. Throws what the parser
    // throws.
    LookupSnapshot();

    // What ReferenceCacheManager::GetProductsWithEntity says of these lookup resources.
    [[nodiscard]] std::map<std::u16string, ProductMatchData> productsWithEntity(
        const api::ReferenceRequest& request, ReferenceCacheManager::SearchMethod method) const;

    // The resource of a product that was found, as
    // ReferenceCacheManager::GetResourceCacheForProduct has it; null when the file does not hold
    // the product. Throws what the parser throws.
    //
    // When a change of language is on its way, the cache may hold the product in the one language
    // and this have it in the other. An answer that mixed the two would be wrong in both, so that
    // the product is then read from the file that this names. The cache is mended with it, unless
    // it is this that is out of date.
    [[nodiscard]] std::shared_ptr<const Resource> resourceOf(
        const std::u16string& product, const std::u16string& referenceFileName) const;

  private:
    [[nodiscard]] bool isOfSameReading(const Resource& resource,
                                       const std::u16string& referenceFileName) const;

    std::shared_ptr<const ReferenceCacheManager::LookupCache> m_lookup;
};

}  // namespace reference::cache_manager
