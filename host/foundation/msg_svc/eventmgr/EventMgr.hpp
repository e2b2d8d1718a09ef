#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <stdexcept>
#include <typeindex>
#include <utility>

#include "foundation/core/export.hpp"
#include "foundation/msg_svc/eventmgr/BaseEvent.hpp"
#include "foundation/msg_svc/eventmgr/Connection.hpp"

namespace foundation::msg_svc::eventmgr {

// Delivers published events to the subscribers of their type. Starts no thread.
//
// Any thread, several at once, and from within callbacks, which are called outside every lock: a
// callback may subscribe, end a subscription (its own too) and publish.
class VELTRA_HOST_API EventMgr {
  public:
    EventMgr();
    EventMgr(const EventMgr&) = delete;  // connections belong to one manager
    EventMgr& operator=(const EventMgr&) = delete;

    // Ends all subscriptions; events that are still pending are dropped. Requires: no other call is
    // under way.
    ~EventMgr();

    // Calls `callback` with every event of exactly the class Event that is published from now on,
    // until the connection that is returned is destroyed. A publication that is already under way
    // does not reach it. Several publishing threads may be in the callback at once.
    //
    // Throws std::invalid_argument for an empty callback.
    template <typename Event>
    [[nodiscard]] std::unique_ptr<Connection> subscribe(
        std::function<void(const Event&)> callback) {
        if (!callback)
            throw std::invalid_argument("A subscription needs a callback; this one is empty.");
        return subscribeTo(typeid(Event), [callback = std::move(callback)](const BaseEvent& event) {
            callback(static_cast<const Event&>(event));
        });
    }

    // Calls every subscriber of the event's type, in the order of their subscription: with
    // `immediately` on this thread before it returns, else with the next deliverPending(). If a
    // callback throws, that is written to the log channel "eventmgr" as an error, and the next
    // callback is called.
    //
    // Throws std::invalid_argument for a null event.
    void publish(std::shared_ptr<const BaseEvent> event, bool immediately);

    // Delivers the pending events on this thread, in the order of their publication, including
    // those that callbacks add meanwhile. The host calls this from its event loop.
    void deliverPending();

    // How many subscriptions there are for events of a class.
    [[nodiscard]] std::size_t getSubscriptionCount(std::type_index type) const;

  private:
    class Impl;

    std::unique_ptr<Connection> subscribeTo(std::type_index type,
                                            std::function<void(const BaseEvent&)> callback);

    const std::unique_ptr<Impl> m_impl;
};

}  // namespace foundation::msg_svc::eventmgr
