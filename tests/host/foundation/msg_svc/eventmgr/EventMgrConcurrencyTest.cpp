// What an event manager promises where several threads use it.
#include <atomic>
#include <memory>

#include <gtest/gtest.h>

#include "foundation/msg_svc/eventmgr/EventMgr.hpp"
#include "foundation/msg_svc/eventmgr/SubscriptionCountByType.hpp"
#include "host/foundation/msg_svc/eventmgr/Events.hpp"
#include "support/Threads.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using namespace foundation::msg_svc::eventmgr;

constexpr int rounds = 2000;

TEST(EventMgrConcurrencyTest, EverySubscriberHearsEveryEventOfEveryThreadOnce) {
    EventMgr manager;
    std::atomic<long> first{0};
    std::atomic<long> second{0};
    const auto a =
        manager.subscribe<NumberEvent>([&](const NumberEvent& event) { first += event.number(); });
    const auto b =
        manager.subscribe<NumberEvent>([&](const NumberEvent& event) { second += event.number(); });
    const auto publish = [&] {
        for (int number = 1; number <= rounds; ++number)
            manager.publish(std::make_shared<NumberEvent>(number), number % 2 == 0);
    };
    runTogether({publish, publish, [&] {
                     for (int round = 0; round < rounds; ++round)
                         manager.deliverPending();
                 }});
    manager.deliverPending();
    EXPECT_EQ(first, rounds * (rounds + 1L));
    EXPECT_EQ(second, rounds * (rounds + 1L));
}

// What a callback refers to may be destroyed as soon as its connection is.
TEST(EventMgrConcurrencyTest, NoCallbackRunsOnceItsConnectionIsDestroyed) {
    EventMgr manager;
    std::atomic<bool> done{false};
    std::atomic<int> late{0};
    const auto publish = [&] {
        while (!done)
            manager.publish(std::make_shared<NumberEvent>(1), true);
    };
    const auto comeAndGo = [&] {
        for (int round = 0; round < rounds; ++round) {
            auto alive = std::make_unique<std::atomic<bool>>(true);
            auto connection =
                manager.subscribe<NumberEvent>([&late, state = alive.get()](const NumberEvent&) {
                    for (int look = 0; look < 10; ++look)
                        if (!*state)
                            ++late;
                });
            connection.reset();
            *alive = false;
        }
        done = true;
    };
    runTogether({publish, comeAndGo});
    EXPECT_EQ(late, 0);
    EXPECT_EQ(SubscriptionCountByType<NumberEvent>(manager).get(), 0U);
}

TEST(EventMgrConcurrencyTest, CallbacksThatEndEachOthersSubscriptionsDoNotWaitForever) {
    for (int round = 0; round < rounds; ++round) {
        EventMgr manager;
        std::unique_ptr<Connection> a;
        std::unique_ptr<Connection> b;
        std::atomic<int> calls{0};
        a = manager.subscribe<NumberEvent>([&](const NumberEvent&) {
            ++calls;
            b.reset();
        });
        b = manager.subscribe<OtherEvent>([&](const OtherEvent&) {
            ++calls;
            a.reset();
        });
        runTogether({[&] { manager.publish(std::make_shared<NumberEvent>(1), true); },
                     [&] { manager.publish(std::make_shared<OtherEvent>(), true); }});
        EXPECT_GE(calls, 1);
    }
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
