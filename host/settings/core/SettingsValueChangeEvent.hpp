#pragma once

#include <string>

#include "foundation/core/export.hpp"
#include "foundation/msg_svc/eventmgr/BaseEvent.hpp"
#include "settings/core/SettingsValue.hpp"

namespace settings::core {

// A setting was given another value. Listeners read it; any thread.
class VELTRA_HOST_API SettingsValueChangeEvent : public foundation::msg_svc::eventmgr::BaseEvent {
  public:
    SettingsValueChangeEvent(std::string fullName, SettingsValue oldValue, SettingsValue newValue);
    SettingsValueChangeEvent(const SettingsValueChangeEvent&) = default;
    ~SettingsValueChangeEvent() override;

    // The setting's full name ("veltra.desktop.help.DocLanguage").
    [[nodiscard]] const std::string& getFullName() const noexcept { return m_fullName; }

    // The values before and after this change, which differ. The setting may have changed again
    // since.
    [[nodiscard]] const SettingsValue& getOldValue() const noexcept { return m_oldValue; }
    [[nodiscard]] const SettingsValue& getNewValue() const noexcept { return m_newValue; }

  private:
    std::string m_fullName;
    SettingsValue m_oldValue;
    SettingsValue m_newValue;
};

}  // namespace settings::core
