#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "reference/api/ReferenceRequest.hpp"
#include "reference/api/cache_manager/ProductMatchData.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"

namespace reference::tests {

// What ReferenceCacheManager::GetProductsWithEntity must answer: every key of every product is
// walked, folded and asked. Slow, and without any index; what the library answers by its index is
// held against it.
[[nodiscard]] std::map<std::u16string, cache_manager::ProductMatchData> walkProductsWithEntity(
    const api::ReferenceRequest& request, cache_manager::ReferenceCacheManager::SearchMethod method,
    const cache_manager::ReferenceCacheManager::LookupCache& lookup);

// Whether the walk over this one key finds anything.
[[nodiscard]] bool walkFinds(const api::ReferenceRequest& request,
                             cache_manager::ReferenceCacheManager::SearchMethod method,
                             const std::u16string& key,
                             const std::vector<property::RefItemLookup>& records);

}  // namespace reference::tests
