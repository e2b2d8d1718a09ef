#pragma once

#include <cstddef>

#include "foundation/msg_svc/eventmgr/EventMgr.hpp"

namespace foundation::msg_svc::eventmgr {

// How many subscriptions an event manager holds for events of the class Event. Where an event is
// expensive to make, ask first whether anybody listens. Any thread.
template <typename Event>
class SubscriptionCountByType {
  public:
    // `manager` must outlive this.
    explicit SubscriptionCountByType(const EventMgr& manager) noexcept : m_manager(manager) {}

    // The number at this moment.
    [[nodiscard]] std::size_t get() const { return m_manager.getSubscriptionCount(typeid(Event)); }

  private:
    const EventMgr& m_manager;
};

}  // namespace foundation::msg_svc::eventmgr
