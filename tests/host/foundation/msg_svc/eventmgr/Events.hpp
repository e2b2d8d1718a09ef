// Events of two types, for tests of the event manager.
#pragma once

#include "foundation/msg_svc/eventmgr/BaseEvent.hpp"
#include "foundation/msg_svc/eventmgr/detail/DerivedTypeInformation.hpp"

namespace reference::tests {

class NumberEvent : public foundation::msg_svc::eventmgr::BaseEvent {
  public:
    explicit NumberEvent(int number)
        : BaseEvent(
              foundation::msg_svc::eventmgr::detail::DerivedTypeInformation<NumberEvent>::shared()),
          m_number(number) {}

    [[nodiscard]] int number() const noexcept { return m_number; }

  private:
    int m_number;
};

class OtherEvent : public foundation::msg_svc::eventmgr::BaseEvent {
  public:
    OtherEvent()
        : BaseEvent(
              foundation::msg_svc::eventmgr::detail::DerivedTypeInformation<OtherEvent>::shared()) {
    }
};

}  // namespace reference::tests
