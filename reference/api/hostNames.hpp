// The package names under which the scripting language sees the library's classes. Internal: no
// public header includes it.
#pragma once

namespace reference::api {

inline constexpr const char* apiPackageName = "veltra.internal.reference.api";
inline constexpr const char* comparatorPackageName = "veltra.internal.reference.api.comparator";

}  // namespace reference::api
