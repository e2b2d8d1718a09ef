#pragma once

#include <string>
#include <string_view>

#include "foundation/core/export.hpp"

namespace fl::i18n {

// Conversions between the UTF-8 of files and terminals and the UTF-16 of documentation content.
// Both may be called from any thread.

// The UTF-16 form of UTF-8 text. Throws std::invalid_argument, naming the byte offset, where the
// text is not well-formed UTF-8 (as the Unicode Standard, section 3.9, defines it).
[[nodiscard]] VELTRA_HOST_API std::u16string toUtf16(std::string_view utf8);

// The UTF-8 form of UTF-16 text; each unpaired surrogate becomes U+FFFD, so the result is always
// well formed.
[[nodiscard]] VELTRA_HOST_API std::string toUtf8(std::u16string_view utf16);

}  // namespace fl::i18n
