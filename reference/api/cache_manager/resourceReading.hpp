// What a search needs of the caches besides their public operations. Internal: no public header
// includes it.
#pragma once

#include <memory>
#include <string>

#include "reference/api/cache_manager/ReferenceCacheManager.hpp"

namespace reference::cache_manager {

// The lookup resources of the installed products, after loading them when they are not loaded. Not
// empty merely because somebody clears the caches at this moment. Never null.
[[nodiscard]] std::shared_ptr<const ReferenceCacheManager::LookupCache> loadedLookupCache();

// The resource of `product` as `resourceFile` has it, whatever is cached, and null when the file
// does not hold the product. `replacesCached`: it takes the place of the product's cached resource.
// Throws what the parser throws.
[[nodiscard]] std::shared_ptr<const ReferenceCacheManager::Resource> readResourceAgain(
    const std::u16string& resourceFile, const std::u16string& product, bool replacesCached);

}  // namespace reference::cache_manager
