#pragma once

#include <cstddef>

#include "reference/api/cache_manager/ReferenceCacheManager.hpp"

namespace reference::tools {

using LookupResource = cache_manager::ReferenceCacheManager::LookupCache::mapped_type;

// How many entities a product's lookup resource lists.
[[nodiscard]] std::size_t countEntities(const LookupResource& resource);

// How many pages these are on: places on one page count once.
[[nodiscard]] std::size_t countPages(const LookupResource& resource);

// How many pages the items of a product's parsed reference resource are on.
[[nodiscard]] std::size_t countPages(
    const cache_manager::ReferenceCacheManager::Resource& resource);

}  // namespace reference::tools
