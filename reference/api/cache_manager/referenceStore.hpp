// The process's documentation, and what a request asks it for. Internal: no public header includes
// it.
#pragma once

#include "reference/api/ReferenceRequest.hpp"
#include "reference/search/ReferenceRequestExt.hpp"
#include "reference/search/ReferenceStore.hpp"

namespace reference::cache_manager {

// The one store of the process, which is never destroyed; it reads from the parser's current
// source.
[[nodiscard]] search::ReferenceStore& referenceStore();

[[nodiscard]] search::ReferenceRequestExt toExt(const api::ReferenceRequest& request);

}  // namespace reference::cache_manager
