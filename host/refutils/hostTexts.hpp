#pragma once

#include <string>
#include <vector>

#include "foundation/core/export.hpp"
#include "vq/vqArray.hpp"

namespace reference::utils {

// Passes texts between native fields and the scripting language. One thread at a time may use one
// field.

// Assigns `*value` to `text`; null is ignored.
VELTRA_HOST_API void setStringProperty(std::u16string& text, const std::u16string* value);

// Assigns the texts of `value` to `texts`, and a host value that equals it to `cache`; null is
// ignored. Throws "VELTRA:class:RequireStringArray", and changes nothing, for a value that is no
// array of texts.
VELTRA_HOST_API void setStringVectorAndCache(const vqArray* value, vqArrayPtr& cache,
                                             std::vector<std::u16string>& texts);

// The host form of `texts`: `cache` as it is if it is filled, even if `texts` have changed since;
// an empty cache is filled from `texts` first. Lives as long as the cache keeps it.
[[nodiscard]] VELTRA_HOST_API const vqArray* accessStringVectorCache(
    vqArrayPtr& cache, const std::vector<std::u16string>& texts);

// A value that equals the given one and shares its elements, for a cache; null for null.
[[nodiscard]] VELTRA_HOST_API vqArrayPtr copyVqArrayToSharedVqArrayPtr(const vqArray* value);

}  // namespace reference::utils
