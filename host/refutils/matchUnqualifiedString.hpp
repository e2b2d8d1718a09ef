#pragma once

#include <cstddef>
#include <string_view>

#include "foundation/core/export.hpp"

namespace reference::utils {

// Whether a name that is asked for names the candidate. Qualified: the two texts are equal.
// Unqualified: they are equal, or the candidate ends with the pattern and the unit before that
// ending is '.' or '/'. An empty pattern matches only an empty candidate. Units are compared as
// they are; the caller folds case if it wants to. `patternComponents` is the number of
// dot-separated components of the pattern.
//
// Guarantee: a candidate that matches ends with the pattern, at a component boundary.
//
// Throws nothing. Any thread.
[[nodiscard]] VELTRA_HOST_API bool matchUnqualifiedString(std::u16string_view pattern,
                                                          std::size_t patternComponents,
                                                          std::u16string_view candidate,
                                                          bool qualified) noexcept;

}  // namespace reference::utils
