#pragma once

#include <string>
#include <vector>

#include "foundation/core/export.hpp"
#include "vq/vqArray.hpp"

namespace reference::utils {

// How texts pass between native fields and the scripting language. By one thread at a time for one
// field.

// Assigns `*value` to `text`; null is ignored.
VELTRA_HOST_API void setStringProperty(std::u16string& text, const std::u16string* value);

// Assigns the texts of `value` to `texts`, and a host value that equals it to `cache`; null is
// ignored. Throws "VELTRA:class:RequireStringArray", and changes nothing, for a value that is no
// array of texts.
VELTRA_HOST_API void setStringVectorAndCache(const vqArray* value, vqArrayPtr& cache,
                                             std::vector<std::u16string>& texts);

// The host form of `texts`: `cache` as it stands when it is filled, also when `texts` have changed
// since; an empty one is filled from `texts` first. Lives as long as the cache keeps it.
[[nodiscard]] VELTRA_HOST_API const vqArray* accessStringVectorCache(
    vqArrayPtr& cache, const std::vector<std::u16string>& texts);

// A value that equals the given one and shares its elements, for a cache; null for null.
[[nodiscard]] VELTRA_HOST_API vqArrayPtr copyVqArrayToSharedVqArrayPtr(const vqArray* value);

}  // namespace reference::utils
