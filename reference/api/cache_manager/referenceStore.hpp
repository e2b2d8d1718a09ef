// The process's documentation, and what a request asks it for. Internal: no public header includes
// it.
#pragma once

#include <cstdint>

#include "reference/api/ReferenceRequest.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "reference/search/ReferenceRequestExt.hpp"
#include "reference/search/ReferenceStore.hpp"
#include "reference/search/SearchMethod.hpp"

namespace reference::cache_manager {

// The one store of the process, which is never destroyed; it reads from the parser's current
// source.
[[nodiscard]] search::ReferenceStore& referenceStore();

[[nodiscard]] search::ReferenceRequestExt toExt(const api::ReferenceRequest& request);

// A number without a name stays what it is.
[[nodiscard]] constexpr search::SearchMethod toSearchMethod(
    ReferenceCacheManager::SearchMethod method) {
    return static_cast<search::SearchMethod>(static_cast<std::uint32_t>(method));
}
static_assert(toSearchMethod(ReferenceCacheManager::ReferenceSearch) == search::ReferenceSearch &&
              toSearchMethod(ReferenceCacheManager::ClassEntitySearch) ==
                  search::ClassEntitySearch &&
              toSearchMethod(ReferenceCacheManager::NameAndPurposeSearch) ==
                  search::NameAndPurposeSearch &&
              toSearchMethod(ReferenceCacheManager::AllTextSearch) == search::AllTextSearch &&
              toSearchMethod(ReferenceCacheManager::PageNameSearch) == search::PageNameSearch);

}  // namespace reference::cache_manager
