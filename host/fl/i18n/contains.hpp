#pragma once

#include <string_view>

#include "foundation/core/export.hpp"

namespace fl::i18n {

// Whether `text` holds `part`, unit by unit; every text holds the empty one. In time linear in the
// length of both, whatever they repeat: std::string_view::find() needs their product for a text
// such as "aaaa…" and a part such as "aaa…b". Any thread. The second throws std::bad_alloc when
// memory runs out.
[[nodiscard]] VELTRA_HOST_API bool contains(std::string_view text, std::string_view part) noexcept;
[[nodiscard]] VELTRA_HOST_API bool contains(std::u16string_view text, std::u16string_view part);

}  // namespace fl::i18n
