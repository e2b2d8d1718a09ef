// The two lookup caches as one value. Internal: no public header includes it.
#pragma once

#include <memory>
#include <utility>

#include "reference/search/AtomicShared.hpp"
#include "reference/search/Reading.hpp"

namespace reference::search {

// The lookup caches at one moment.
struct LookupCaches {
    // Installed products; null while they are not loaded.
    std::shared_ptr<Reading> reading;
    // Products that are known but not installed; null while they are not loaded.
    std::shared_ptr<const LookupResources> uninstalled;

    [[nodiscard]] bool isLoaded() const noexcept { return reading || uninstalled; }
};

// Both lookup caches as one value that is replaced in one step. A load stores what it read only if
// nothing was stored or cleared since it began: what it read may be out of date.
class LookupState {
  public:
    using Value = std::shared_ptr<const LookupCaches>;

    // Never null. Two values are the same as long as nothing was stored or cleared between them.
    [[nodiscard]] Value load() const { return m_value.load(); }

    // Stores `value` if the current value is still `expected`; else sets `expected` to the current
    // one.
    bool storeInPlaceOf(Value& expected, Value value) {
        return m_value.exchangeIf(expected, value);
    }

    // Stores `value`, and returns the old one.
    Value replace(Value value) { return m_value.exchange(std::move(value)); }

    // Stores what `change` makes of the value, and returns the old one.
    template <typename Change>
    Value update(const Change& change) {
        Value old = load();
        while (!storeInPlaceOf(old, std::make_shared<const LookupCaches>(change(*old)))) {
        }
        return old;
    }

  private:
    AtomicShared<const LookupCaches> m_value{std::make_shared<const LookupCaches>()};
};

}  // namespace reference::search
