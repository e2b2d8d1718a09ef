#include "foundation/msg_svc/eventmgr/SubscriberList.hpp"

#include <algorithm>
#include <atomic>
#include <exception>
#include <string>
#include <utility>

#include "foundation/log/basic_diagnostic_logger.hpp"

namespace foundation::msg_svc::eventmgr {
namespace {

// How many callbacks this thread is in, one within the other.
thread_local int callbacksOfThread = 0;

void logFailure(const BaseEvent& event, const char* what) noexcept {
    try {
        log::diagnostic_logger("eventmgr")
            .log(log::Error, "a subscriber of " + event.getTypeInformation().getTypeName() +
                                 " failed: " + what);
    } catch (...) {
        // Delivery goes on even if the failure cannot be logged.
    }
}

}  // namespace

// A callback, and which threads are in it. It lives until the last delivery that found it in the
// list is done with it.
class SubscriberList::Subscriber {
  public:
    explicit Subscriber(Callback callback) : m_callback(std::move(callback)) {}

    void call(const BaseEvent& event) {
        // Counts first and checks afterwards; end() does the reverse. So one of the two always sees
        // the other.
        ++m_calls;
        if (!m_ended) {
            ++callbacksOfThread;
            try {
                m_callback(event);
            } catch (const std::exception& exception) {
                logFailure(event, exception.what());
            } catch (...) {
                logFailure(event, "it threw something that is no std::exception");
            }
            --callbacksOfThread;
        }
        --m_calls;
        m_calls.notify_all();
    }

    void end() {
        m_ended = true;
        if (callbacksOfThread > 0)
            return;
        while (const int calls = m_calls)
            m_calls.wait(calls);
    }

  private:
    const Callback m_callback;
    std::atomic<int> m_calls{0};
    std::atomic<bool> m_ended{false};
};

class SubscriberList::ListConnection final : public Connection {
  public:
    ListConnection(std::weak_ptr<SubscriberList> list, std::shared_ptr<Subscriber> subscriber)
        : m_list(std::move(list)), m_subscriber(std::move(subscriber)) {}

    ~ListConnection() override {
        m_subscriber->end();
        try {
            if (const auto list = m_list.lock())
                list->remove(m_subscriber.get());
        } catch (...) {
            // If there is no memory for the shorter list, the subscriber stays in it and is
            // skipped.
        }
    }

  private:
    const std::weak_ptr<SubscriberList> m_list;
    const std::shared_ptr<Subscriber> m_subscriber;
};

SubscriberList::SubscriberList() : m_subscribers(std::make_shared<const Subscribers>()) {}

SubscriberList::~SubscriberList() = default;

std::unique_ptr<Connection> SubscriberList::add(Callback callback) {
    auto subscriber = std::make_shared<Subscriber>(std::move(callback));
    auto connection = std::make_unique<ListConnection>(weak_from_this(), subscriber);
    std::shared_ptr<const Subscribers> old;  // dies after the lock is released
    const core::MutexLock lock(m_mutex);
    auto longer = std::make_shared<Subscribers>(*m_subscribers);
    longer->push_back(std::move(subscriber));
    old = std::exchange(m_subscribers, std::move(longer));
    return connection;
}

void SubscriberList::remove(const Subscriber* subscriber) {
    std::shared_ptr<const Subscribers> old;  // dies after the lock is released
    const core::MutexLock lock(m_mutex);
    auto shorter = std::make_shared<Subscribers>(*m_subscribers);
    std::erase_if(*shorter, [&](const auto& one) { return one.get() == subscriber; });
    old = std::exchange(m_subscribers, std::move(shorter));
}

std::shared_ptr<const SubscriberList::Subscribers> SubscriberList::current() const {
    const core::MutexLock lock(m_mutex);
    return m_subscribers;
}

void SubscriberList::deliver(const BaseEvent& event) const {
    const auto subscribers = current();
    for (const auto& subscriber : *subscribers)
        subscriber->call(event);
}

std::size_t SubscriberList::size() const {
    return current()->size();
}

}  // namespace foundation::msg_svc::eventmgr
