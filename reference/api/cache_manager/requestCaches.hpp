// What a request needs of the caches besides their public operations. Internal: no public header
// includes it.
#pragma once

#include <memory>
#include <string>

#include "reference/api/cache_manager/LookupCaches.hpp"

namespace reference::cache_manager {

// The lookup caches for a request that begins now; loads them when they are not loaded. Reads the
// lookup files once at most: when the caches are cleared meanwhile, what was read serves this
// request and is not cached. Never null. Throws what the parser throws.
[[nodiscard]] std::shared_ptr<const LookupCaches> loadedLookupCaches();

// The resource of `product` for a request that works with `lookups`, whose header of the product
// names `resourceFile`. Null when the file does not hold the product. Throws what the parser throws
// where the product is not cached.
//
// It is the cached one, unless that was read for other lookups and comes from a file that these do
// not know, since it may then be in another language. In that case the file that these name is
// read, once for all requests of the reading; if that fails, the cached one serves them. The cache
// stays as it is: what it has handed out is never replaced. A request whose lookups have been
// cleared does not put anything into it, either.
[[nodiscard]] ResourcePtr resourceFor(const LookupCaches& lookups, const std::u16string& product,
                                      const std::u16string& resourceFile);

}  // namespace reference::cache_manager
