// How texts are stored in an image: each UTF-16 unit by itself in one to three bytes (CESU-8,
// Unicode Technical Report 26). Half the size of UTF-16 for Latin text, and, unlike UTF-8, exact
// for any units, paired or not: a text holds another, or goes before it in order, exactly if its
// bytes do.
#pragma once

#include <string>
#include <string_view>

#include "foundation/core/export.hpp"

namespace reference::docimage {

[[nodiscard]] VELTRA_HOST_API std::string toUnitBytes(std::u16string_view text);
VELTRA_HOST_API void appendUnitBytes(std::u16string_view text, std::string& bytes);

// The text of bytes that toUnitBytes() made. For other bytes, some text.
[[nodiscard]] VELTRA_HOST_API std::u16string fromUnitBytes(std::string_view bytes);
// The same into `text`, whose memory is used again.
VELTRA_HOST_API void assignUnitBytes(std::string_view bytes, std::u16string& text);

// Whether the bytes are those of the text.
[[nodiscard]] VELTRA_HOST_API bool areUnitBytesOf(std::string_view bytes,
                                                  std::u16string_view text) noexcept;

}  // namespace reference::docimage
