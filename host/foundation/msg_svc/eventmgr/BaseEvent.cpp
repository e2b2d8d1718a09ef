#include "foundation/msg_svc/eventmgr/BaseEvent.hpp"

#include <utility>

namespace foundation::msg_svc::eventmgr {

BaseEvent::BaseEvent(std::shared_ptr<const detail::TypeInformation> type)
    : m_type(std::move(type)) {}

BaseEvent::~BaseEvent() = default;

bool BaseEvent::isVELTRAClientsAllowed() const {
    return false;
}

}  // namespace foundation::msg_svc::eventmgr
