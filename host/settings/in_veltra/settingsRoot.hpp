#pragma once

#include <memory>

#include "foundation/core/context/ContextRegistry.hpp"
#include "foundation/core/export.hpp"
#include "settings/core/Settings.hpp"

namespace settings::in_veltra {

// The settings that the host declares in every context.
inline constexpr const char* docRootSetting = "veltra.desktop.help.DocRoot";
inline constexpr const char* docLanguageSetting = "veltra.desktop.help.DocLanguage";
inline constexpr const char* supportPackageRootsSetting = "veltra.desktop.help.SupportPackageRoots";
inline constexpr const char* logSetting = "veltra.diagnostics.Log";

// The root of the settings tree of a context; the same one for the same context, made with the
// settings above declared when it is first asked for. Never null. Lives to the end of the process.
// Any thread.
[[nodiscard]] VELTRA_HOST_API std::shared_ptr<core::Settings> getSettingsRoot(
    foundation::core::context::ContextId contextId);

}  // namespace settings::in_veltra
