#include "settings/core/SettingsValueChangeEvent.hpp"

#include <utility>

#include "foundation/msg_svc/eventmgr/detail/DerivedTypeInformation.hpp"

namespace settings::core {

using foundation::msg_svc::eventmgr::detail::DerivedTypeInformation;

SettingsValueChangeEvent::SettingsValueChangeEvent(std::string fullName, SettingsValue oldValue,
                                                   SettingsValue newValue)
    : BaseEvent(DerivedTypeInformation<SettingsValueChangeEvent>::shared()),
      m_fullName(std::move(fullName)),
      m_oldValue(std::move(oldValue)),
      m_newValue(std::move(newValue)) {}

SettingsValueChangeEvent::~SettingsValueChangeEvent() = default;

}  // namespace settings::core
