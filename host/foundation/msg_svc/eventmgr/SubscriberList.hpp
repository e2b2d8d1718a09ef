// The subscribers to one kind of event. Internal: no public header includes it.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

#include "foundation/core/Mutex.hpp"
#include "foundation/msg_svc/eventmgr/BaseEvent.hpp"
#include "foundation/msg_svc/eventmgr/Connection.hpp"

namespace foundation::msg_svc::eventmgr {

// Callbacks in the order of their subscription. Keeps what EventMgr and Connection promise about
// callbacks. Any thread, and from within callbacks.
//
// Requires: owned by a std::shared_ptr, so that connections can outlive it.
class SubscriberList : public std::enable_shared_from_this<SubscriberList> {
  public:
    using Callback = std::function<void(const BaseEvent&)>;

    SubscriberList();
    SubscriberList(const SubscriberList&) = delete;  // connections belong to one list
    SubscriberList& operator=(const SubscriberList&) = delete;
    ~SubscriberList();

    [[nodiscard]] std::unique_ptr<Connection> add(Callback callback);

    // Calls the callbacks that are in the list now, one after the other. What a callback throws is
    // logged.
    void deliver(const BaseEvent& event) const;

    [[nodiscard]] std::size_t size() const;

  private:
    class Subscriber;
    class ListConnection;
    using Subscribers = std::vector<std::shared_ptr<Subscriber>>;

    [[nodiscard]] std::shared_ptr<const Subscribers> current() const;
    void remove(const Subscriber* subscriber);

    mutable core::Mutex m_mutex;
    // Replaced, never changed, so that a delivery finishes with the list that it began with. Never
    // null.
    std::shared_ptr<const Subscribers> m_subscribers VELTRA_GUARDED_BY(m_mutex);
};

}  // namespace foundation::msg_svc::eventmgr
