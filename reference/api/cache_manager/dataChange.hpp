// Telling clients that the reference data changed. Internal: no public header includes it.
#pragma once

namespace reference::cache_manager {

// Publishes one ReferenceDataChangeEvent through the event manager, and nothing where there is
// none. Subscribers are called on this thread, before this returns. Throws what the function given
// to ReferenceCacheManager::SetGetEventMgrFcn throws.
// Requires: the caller holds no lock, because subscribers are foreign code.
void publishDataChange();

}  // namespace reference::cache_manager
