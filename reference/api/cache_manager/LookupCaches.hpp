// The two lookup caches as one value. Internal: no public header includes it.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "reference/api/cache_manager/ReferenceCacheManager.hpp"

namespace reference::cache_manager {

using LookupCachePtr = std::shared_ptr<const ReferenceCacheManager::LookupCache>;
using ResourcePtr = std::shared_ptr<const ReferenceCacheManager::Resource>;

// One reading of the lookup files, and the resources that requests of this reading keep to
// themselves because the resource cache has, or will have, those of another reading.
struct LookupReading {
    // Guarded by the mutex of the resource cache. Never null.
    std::map<std::u16string, ResourcePtr> ownResources;
};

// The lookup caches at one moment. Immutable except for what `reading` refers to.
struct LookupCaches {
    // Null: not loaded.
    LookupCachePtr installed;
    LookupCachePtr uninstalled;
    // What `installed` comes from; null with it. Two values are of the same reading when this is
    // the same.
    std::shared_ptr<LookupReading> reading;

    [[nodiscard]] bool isLoaded() const noexcept { return installed || uninstalled; }
};

// Both lookup caches as one value that is replaced in one step. A load stores what it read only if
// nothing was stored or cleared since it began: what it read may be out of date.
//
// std::atomic<std::shared_ptr> would do the same as these functions, but in GCC 12's library its
// load() is a data race with a later store (it lets go of the pointer with relaxed order).
class LookupState {
  public:
    using Value = std::shared_ptr<const LookupCaches>;

    // Never null. Two values are the same as long as nothing was stored or cleared between them.
    [[nodiscard]] Value load() const { return std::atomic_load(&m_value); }

    // Stores `value` if the current value is still `expected`; else sets `expected` to the current
    // one.
    bool storeInPlaceOf(Value& expected, Value value) {
        return std::atomic_compare_exchange_strong(&m_value, &expected, std::move(value));
    }

    // Stores what `change` makes of the value, and returns the old one.
    template <typename Change>
    Value update(const Change& change) {
        Value old = load();
        while (!storeInPlaceOf(old, std::make_shared<const LookupCaches>(change(*old)))) {
        }
        return old;
    }

  private:
    Value m_value = std::make_shared<const LookupCaches>();
};

}  // namespace reference::cache_manager
