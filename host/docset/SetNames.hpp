// The names that files and folders of a documentation root have or may have. Internal: no public
// header includes it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace reference::docset {

// The lock file, which a process holds locked while it publishes.
inline constexpr const char* lockFileName = ".documentation-set.lock";

// The manifest while it is being written.
inline constexpr const char* newManifestFileName = "documentation-set.json.new";

// Why `locale` may not be a locale of a set, or nothing when it may. It is the name of a folder of
// the root: UTF-8 without control characters, one part of up to 50 characters (so that files can be
// named after it), and no name that a file of the set has.
[[nodiscard]] std::optional<std::string> whyNotALocale(std::string_view locale);

}  // namespace reference::docset
