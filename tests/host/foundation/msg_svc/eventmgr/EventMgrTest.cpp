// What an event manager promises those who subscribe, on one thread.
#include <cstddef>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "foundation/msg_svc/eventmgr/EventMgr.hpp"
#include "foundation/msg_svc/eventmgr/ScopedConnection.hpp"
#include "foundation/msg_svc/eventmgr/SubscriptionCountByType.hpp"
#include "host/foundation/msg_svc/eventmgr/Events.hpp"
#include "support/Capture.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using namespace foundation::msg_svc::eventmgr;
using testing::ElementsAre;
using testing::IsEmpty;

class EventMgrTest : public testing::Test {
  protected:
    // Subscribes with a callback that notes `name` and the event's number, then does `then`.
    [[nodiscard]] std::unique_ptr<Connection> subscribe(
        const std::string& name, std::function<void()> then = [] {}) {
        return m_manager.subscribe<NumberEvent>([this, name, then](const NumberEvent& event) {
            m_heard.push_back(name + std::to_string(event.number()));
            then();
        });
    }

    void publish(int number, bool immediately = true) {
        m_manager.publish(std::make_shared<NumberEvent>(number), immediately);
    }

    [[nodiscard]] std::vector<std::string>& heard() { return m_heard; }
    [[nodiscard]] EventMgr& manager() { return m_manager; }

  private:
    EventMgr m_manager;
    std::vector<std::string> m_heard;
};

TEST_F(EventMgrTest, SubscribersHearInTheOrderTheyCame) {
    const auto a = subscribe("a");
    const auto b = subscribe("b");
    publish(1);
    publish(2);
    EXPECT_THAT(heard(), ElementsAre("a1", "b1", "a2", "b2"));
}

TEST_F(EventMgrTest, PublishingToNobodyDoesNothing) {
    publish(1);
    EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(EventMgrTest, OnlySubscribersOfTheEventsOwnTypeHearIt) {
    int others = 0;
    const auto other = manager().subscribe<OtherEvent>([&](const OtherEvent&) { ++others; });
    const auto a = subscribe("a");
    publish(1);
    EXPECT_EQ(others, 0);
    manager().publish(std::make_shared<OtherEvent>(), true);
    EXPECT_EQ(others, 1);
    EXPECT_THAT(heard(), ElementsAre("a1"));
}

TEST_F(EventMgrTest, TheSubscriberGetsTheVeryEvent) {
    const auto event = std::make_shared<NumberEvent>(7);
    const NumberEvent* got = nullptr;
    const auto connection =
        manager().subscribe<NumberEvent>([&](const NumberEvent& one) { got = &one; });
    manager().publish(event, true);
    EXPECT_EQ(got, event.get());
}

TEST_F(EventMgrTest, ADestroyedConnectionEndsItsSubscription) {
    auto a = subscribe("a");
    const auto b = subscribe("b");
    a.reset();
    publish(1);
    EXPECT_THAT(heard(), ElementsAre("b1"));
}

TEST_F(EventMgrTest, AnEventThatIsNotDeliveredAtOnceWaits) {
    const auto a = subscribe("a");
    publish(1, false);
    publish(2, false);
    EXPECT_THAT(heard(), IsEmpty());
    publish(3);
    EXPECT_THAT(heard(), ElementsAre("a3"));
    manager().deliverPending();
    EXPECT_THAT(heard(), ElementsAre("a3", "a1", "a2"));
    manager().deliverPending();
    EXPECT_THAT(heard(), ElementsAre("a3", "a1", "a2"));
}

TEST_F(EventMgrTest, EventsThatCallbacksPutOffAreDeliveredInTheSameRound) {
    int left = 3;
    const auto a = subscribe("a", [&] {
        if (--left > 0)
            publish(left, false);
    });
    publish(3, false);
    manager().deliverPending();
    EXPECT_THAT(heard(), ElementsAre("a3", "a2", "a1"));
}

TEST_F(EventMgrTest, ACallbackMayPublish) {
    int depth = 0;
    const auto a = subscribe("a", [&] {
        if (++depth < 3)
            publish(depth);
    });
    const auto b = subscribe("b");
    publish(0);
    EXPECT_THAT(heard(), ElementsAre("a0", "a1", "a2", "b2", "b1", "b0"));
}

TEST_F(EventMgrTest, ACallbackMaySubscribeAndIsHeardFromTheNextEventOn) {
    std::unique_ptr<Connection> late;
    const auto a = subscribe("a", [&] {
        if (!late)
            late = subscribe("late");
    });
    publish(1);
    EXPECT_THAT(heard(), ElementsAre("a1"));
    publish(2);
    EXPECT_THAT(heard(), ElementsAre("a1", "a2", "late2"));
}

TEST_F(EventMgrTest, ACallbackMayEndItsOwnSubscription) {
    std::unique_ptr<Connection> a;
    a = subscribe("a", [&] { a.reset(); });
    const auto b = subscribe("b");
    publish(1);
    publish(2);
    EXPECT_THAT(heard(), ElementsAre("a1", "b1", "b2"));
}

TEST_F(EventMgrTest, ASubscriptionThatAnEarlierCallbackEndedIsNotCalledAnyMore) {
    std::unique_ptr<Connection> b;
    const auto a = subscribe("a", [&] { b.reset(); });
    b = subscribe("b");
    publish(1);
    EXPECT_THAT(heard(), ElementsAre("a1"));
}

TEST_F(EventMgrTest, ACallbackOutlivesTheEndOfItsSubscription) {
    std::unique_ptr<Connection> connection;
    const auto shared = std::make_shared<int>(5);
    int seen = 0;
    connection = manager().subscribe<NumberEvent>([&, shared](const NumberEvent&) {
        connection.reset();
        seen = *shared;
    });
    publish(1);
    EXPECT_EQ(seen, 5);
    EXPECT_EQ(shared.use_count(), 1) << "the callback is gone with its last call";
}

TEST_F(EventMgrTest, ASubscriberThatThrowsDoesNotSilenceTheOthers) {
    const LogCapture log("eventmgr=2");
    const auto a = subscribe("a", [] { throw std::runtime_error("no paper"); });
    const auto b = subscribe("b", [] { throw 5; });
    const auto c = subscribe("c");
    EXPECT_NO_THROW(publish(1));
    EXPECT_THAT(heard(), ElementsAre("a1", "b1", "c1"));
    EXPECT_THAT(log.texts(),
                ElementsAre("a subscriber of reference::tests::NumberEvent failed: no paper",
                            "a subscriber of reference::tests::NumberEvent failed: it threw "
                            "something that is no std::exception"));
}

TEST_F(EventMgrTest, CountsSubscriptionsByType) {
    const SubscriptionCountByType<NumberEvent> count(manager());
    EXPECT_EQ(count.get(), 0U);
    auto a = subscribe("a");
    const auto b = subscribe("b");
    EXPECT_EQ(count.get(), 2U);
    EXPECT_EQ(SubscriptionCountByType<OtherEvent>(manager()).get(), 0U);
    a.reset();
    EXPECT_EQ(count.get(), 1U);
    EXPECT_EQ(NumberEvent(1).getTypeInformation().getSubscriptionCount(manager()), 1U);
}

TEST_F(EventMgrTest, RefusesNothingForACallbackOrAnEvent) {
    EXPECT_THROW(static_cast<void>(manager().subscribe<NumberEvent>(nullptr)),
                 std::invalid_argument);
    EXPECT_THROW(manager().publish(nullptr, true), std::invalid_argument);
    EXPECT_THROW(manager().publish(nullptr, false), std::invalid_argument);
}

TEST(ConnectionTest, MayOutliveItsManager) {
    auto manager = std::make_unique<EventMgr>();
    auto connection = manager->subscribe<NumberEvent>([](const NumberEvent&) {});
    manager.reset();
    EXPECT_NO_THROW(connection.reset());
}

TEST(ConnectionTest, AScopedConnectionHoldsOneAtATime) {
    EventMgr manager;
    std::vector<std::string> heard;
    const auto subscribe = [&](const std::string& name) {
        return manager.subscribe<NumberEvent>(
            [&heard, name](const NumberEvent&) { heard.push_back(name); });
    };
    ScopedConnection connection;
    EXPECT_FALSE(connection);
    connection.assign(subscribe("a"));
    EXPECT_TRUE(connection);
    connection.assign(subscribe("b"));
    manager.publish(std::make_shared<NumberEvent>(1), true);
    EXPECT_THAT(heard, ElementsAre("b"));

    ScopedConnection taken = std::move(connection);
    manager.publish(std::make_shared<NumberEvent>(2), true);
    EXPECT_THAT(heard, ElementsAre("b", "b"));

    taken.reset();
    EXPECT_FALSE(taken);
    {
        const ScopedConnection scoped(subscribe("c"));
        EXPECT_EQ(SubscriptionCountByType<NumberEvent>(manager).get(), 1U);
    }
    manager.publish(std::make_shared<NumberEvent>(3), true);
    EXPECT_THAT(heard, ElementsAre("b", "b"));
}

TEST(BaseEventTest, TellsItsTypeAndThatScriptsMayNotReceiveIt) {
    const NumberEvent event(1);
    EXPECT_EQ(event.getTypeInformation().getTypeName(), "reference::tests::NumberEvent");
    EXPECT_FALSE(event.isVELTRAClientsAllowed());
    const NumberEvent copy(event);
    EXPECT_EQ(&copy.getTypeInformation(), &event.getTypeInformation());
    EXPECT_NE(&OtherEvent().getTypeInformation(), &event.getTypeInformation());
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
