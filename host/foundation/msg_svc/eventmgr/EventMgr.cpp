#include "foundation/msg_svc/eventmgr/EventMgr.hpp"

#include <deque>
#include <map>

#include "foundation/core/Mutex.hpp"
#include "foundation/msg_svc/eventmgr/SubscriberList.hpp"

namespace foundation::msg_svc::eventmgr {

using core::Mutex;
using core::MutexLock;

class EventMgr::Impl {
  public:
    // The subscribers of a type; null if it never had any.
    [[nodiscard]] std::shared_ptr<SubscriberList> find(std::type_index type) const {
        const MutexLock lock(m_mutex);
        const auto found = m_subscribers.find(type);
        return found == m_subscribers.end() ? nullptr : found->second;
    }

    [[nodiscard]] std::shared_ptr<SubscriberList> findOrMake(std::type_index type) {
        const MutexLock lock(m_mutex);
        auto& list = m_subscribers[type];
        if (!list)
            list = std::make_shared<SubscriberList>();
        return list;
    }

    void deliver(const BaseEvent& event) const {
        if (const auto subscribers = find(event.getTypeInformation().getTypeIndex()))
            subscribers->deliver(event);
    }

    void addPending(std::shared_ptr<const BaseEvent> event) {
        const MutexLock lock(m_mutex);
        m_pending.push_back(std::move(event));
    }

    // Null when no event is pending.
    [[nodiscard]] std::shared_ptr<const BaseEvent> takePending() {
        const MutexLock lock(m_mutex);
        if (m_pending.empty())
            return nullptr;
        auto event = std::move(m_pending.front());
        m_pending.pop_front();
        return event;
    }

  private:
    mutable Mutex m_mutex;
    std::map<std::type_index, std::shared_ptr<SubscriberList>> m_subscribers
        VELTRA_GUARDED_BY(m_mutex);
    std::deque<std::shared_ptr<const BaseEvent>> m_pending VELTRA_GUARDED_BY(m_mutex);
};

EventMgr::EventMgr() : m_impl(std::make_unique<Impl>()) {}

EventMgr::~EventMgr() = default;

std::unique_ptr<Connection> EventMgr::subscribeTo(std::type_index type,
                                                  std::function<void(const BaseEvent&)> callback) {
    return m_impl->findOrMake(type)->add(std::move(callback));
}

void EventMgr::publish(std::shared_ptr<const BaseEvent> event, bool immediately) {
    if (!event)
        throw std::invalid_argument("There is no event to publish; the pointer is null.");
    if (immediately)
        m_impl->deliver(*event);
    else
        m_impl->addPending(std::move(event));
}

void EventMgr::deliverPending() {
    while (const auto event = m_impl->takePending())
        m_impl->deliver(*event);
}

std::size_t EventMgr::getSubscriptionCount(std::type_index type) const {
    const auto subscribers = m_impl->find(type);
    return subscribers ? subscribers->size() : 0;
}

}  // namespace foundation::msg_svc::eventmgr
