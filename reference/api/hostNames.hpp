// The names under which the scripting language sees the library's classes. Internal: no public
// header includes it.
#pragma once

#include "reference/api/EntityCaseSensitivity.hpp"
#include "reference/api/EntityPrecision.hpp"
#include "zorb/HostName.hpp"

namespace reference::api {

inline constexpr const char* apiPackageName = "veltra.internal.reference.api";
inline constexpr const char* comparatorPackageName = "veltra.internal.reference.api.comparator";

}  // namespace reference::api

// Enumerations are named by the classes that they are nested in.
template <>
struct zorb::HostName<reference::api::EntityCaseSensitivity::Value>
    : zorb::HostName<reference::api::EntityCaseSensitivity> {};
template <>
struct zorb::HostName<reference::api::EntityPrecision::Value>
    : zorb::HostName<reference::api::EntityPrecision> {};
