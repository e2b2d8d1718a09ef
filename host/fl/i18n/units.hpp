#pragma once

#include "foundation/core/export.hpp"

namespace fl::i18n {

// What a UTF-16 unit is by the Unicode character database. Any thread. One unit of a surrogate pair
// counts as a letter: what it is part of cannot be told from it.
[[nodiscard]] VELTRA_HOST_API bool isLetterOrDigit(char16_t unit) noexcept;
[[nodiscard]] VELTRA_HOST_API bool isWhiteSpace(char16_t unit) noexcept;

}  // namespace fl::i18n
