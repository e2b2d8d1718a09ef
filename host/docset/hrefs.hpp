#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "foundation/core/export.hpp"

namespace reference::docset {

// What may stand as an href in a documentation set. Any thread.

// Why the href cannot be that of a page: it must lead to a place below the product's help folder,
// by a relative reference (RFC 3986) without a scheme. A sentence; nothing for one that can.
[[nodiscard]] VELTRA_HOST_API std::optional<std::string> whyNotAPage(std::u16string_view href);

// Why the href cannot be what a text of a product with this help folder points to: a page of this
// or, as "../other/page.html", of another product, a place on the same page, or an address of the
// schemes http and https. It may not lead out of the folder that all help folders are in, and a
// browser would run "javascript:…". Nothing for one that can, or is empty.
[[nodiscard]] VELTRA_HOST_API std::optional<std::string> whyNotATarget(
    std::u16string_view href, std::u16string_view helpFolder);

}  // namespace reference::docset
