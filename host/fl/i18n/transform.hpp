#pragma once

#include <cstddef>

#include "foundation/core/export.hpp"

namespace fl::i18n {

// The rule that lower-cases text: the full Unicode lower-case mapping (Unicode Standard, section
// 3.13, toLowercase) of the root locale, so that the answer is the same on every machine.
struct to_lower {};

namespace detail {

// Applies a rule to the `length` UTF-16 units at `in` and writes the result to `out`, as much of it
// as `capacity` units hold and without a terminator. Returns the length of the whole result, which
// may be larger or smaller than `length`; a caller that gets more than `capacity` calls again with
// a buffer of that size. `out` may be null when `capacity` is 0; the buffers must not overlap.
// Throws std::invalid_argument when the text is not well-formed UTF-16 (an unpaired surrogate).
// Any thread.
VELTRA_HOST_API std::size_t transform(char16_t* out, std::size_t capacity, const char16_t* in,
                                      std::size_t length, const to_lower& rule);

}  // namespace detail
}  // namespace fl::i18n
