// Who hears that the reference data changed, and what has happened by then.
#include <cstdlib>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <boost/smart_ptr/make_shared_object.hpp>
#include <gmock/gmock.h>

#include "docparser/DocResourceParser.hpp"
#include "foundation/msg_svc/eventmgr/EventMgr.hpp"
#include "foundation/msg_svc/eventmgr/ScopedConnection.hpp"
#include "foundation/msg_svc/eventmgr/SubscriptionCountByType.hpp"
#include "foundation/msg_svc/eventmgr/detail/DerivedTypeInformation.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "reference/api/cache_manager/ReferenceDataChangeEvent.hpp"
#include "support/Capture.hpp"
#include "support/LibraryTest.hpp"
#include "vvm/Factory.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using api::ReferenceRequest;
using cache_manager::ReferenceCacheManager;
using cache_manager::ReferenceDataChangeEvent;
using foundation::msg_svc::eventmgr::EventMgr;
using foundation::msg_svc::eventmgr::ScopedConnection;
using foundation::msg_svc::eventmgr::SubscriptionCountByType;
using property::RefEntityType;
using testing::ElementsAre;
using testing::IsEmpty;
using vvm::Factory;

void setLanguage(const std::string& locale) {
    setSetting("veltra.desktop.help.DocLanguage", locale);
}

// The library over one product, in a process with a virtual machine.
class DataChangeTest : public LibraryTest {
  protected:
    DataChangeTest() {
        add(ProductBuilder(u"alpha").entity(u"f", RefEntityType::Function, u"f.html"));
        add(ProductBuilder(u"absent").entity(u"g", RefEntityType::Function, u"g.html"), false);
        ReferenceCacheManager::InitializeListener();
        setLanguage("en_US");
        m_clearsBefore = source().clearCalls();
    }
    ~DataChangeTest() override {
        ReferenceCacheManager::ResetGetEventMgrFcn();
        Factory::setCurrentLocalVVM(nullptr);
        setLanguage("");
    }

    // Counts events, and does `then` within the callback.
    void subscribe(std::function<void()> then = [] {}) {
        ReferenceCacheManager::SubscribeToDataChangeEvent(
            m_connection, [this, then = std::move(then)](const ReferenceDataChangeEvent&) {
                ++m_events;
                then();
            });
    }

    static void fillCaches() { ReferenceCacheManager::PopulateAllCaches(); }

    static void expectEmptyCaches() {
        EXPECT_THAT(*ReferenceCacheManager::GetLookupCache(), IsEmpty());
        EXPECT_THAT(*ReferenceCacheManager::GetUninstalledLookupCache(), IsEmpty());
        EXPECT_THAT(*ReferenceCacheManager::GetResourceCache(), IsEmpty());
    }

    // How often the parser was made to forget its support packages in the test's body.
    [[nodiscard]] int clears() { return source().clearCalls() - m_clearsBefore; }

    [[nodiscard]] EventMgr& manager() const { return *m_machine->getEventMgr(); }
    [[nodiscard]] int events() const noexcept { return m_events; }
    [[nodiscard]] ScopedConnection& connection() noexcept { return m_connection; }

  private:
    std::shared_ptr<vvm::VVM> m_machine = Factory::makeLocalVVM();
    ScopedConnection m_connection;
    int m_events = 0;
    int m_clearsBefore = 0;
};

TEST_F(DataChangeTest, ClearingAllCachesPublishesOneEvent) {
    subscribe();
    ReferenceCacheManager::ClearAllCaches();
    EXPECT_EQ(events(), 1);
    ReferenceCacheManager::ClearAllCaches();
    EXPECT_EQ(events(), 2);
}

TEST_F(DataChangeTest, NoOtherClearingPublishes) {
    subscribe();
    fillCaches();
    ReferenceCacheManager::ClearLookupCache();
    ReferenceCacheManager::ClearUninstalledLookupCache();
    ReferenceCacheManager::ClearLookupCaches();
    ReferenceCacheManager::ClearResourceCache();
    EXPECT_EQ(events(), 0);
}

TEST_F(DataChangeTest, WhenTheEventArrivesTheCachesAreEmptyAndTheParserHasNotForgottenYet) {
    fillCaches();
    subscribe([this] {
        expectEmptyCaches();
        EXPECT_EQ(clears(), 0);
    });
    ReferenceCacheManager::ClearAllCaches();
    EXPECT_EQ(events(), 1);
    EXPECT_EQ(clears(), 1);
}

// It would wait forever if a lock of the library were held while subscribers run.
TEST_F(DataChangeTest, ASubscriberMayAskAtOnceAndIsAnsweredAnew) {
    fillCaches();
    std::vector<std::string> answer;
    subscribe([&] { answer = retrieve(ReferenceRequest(u"f")); });
    ReferenceCacheManager::ClearAllCaches();
    EXPECT_THAT(answer, ElementsAre("alpha:f[function]@f.html"));
    EXPECT_EQ(source().lookupCalls(), 2);
}

TEST_F(DataChangeTest, ASubscriberMayClearAndSubscribe) {
    int nested = 0;
    ScopedConnection second;
    subscribe([&] {
        if (++nested > 1)
            return;
        ReferenceCacheManager::SubscribeToDataChangeEvent(
            second, [&](const ReferenceDataChangeEvent&) { ++nested; });
        ReferenceCacheManager::ClearAllCaches();
    });
    ReferenceCacheManager::ClearAllCaches();
    EXPECT_EQ(events(), 2);
    EXPECT_EQ(nested, 3);
}

TEST_F(DataChangeTest, AChangeOfLanguageAfterStartUpClearsPublishesOnceAndMakesTheParserForget) {
    fillCaches();
    subscribe();
    setLanguage("ja_JP");
    expectEmptyCaches();
    EXPECT_EQ(events(), 1);
    EXPECT_EQ(clears(), 1);
    setLanguage("ja_JP");
    EXPECT_EQ(events(), 1) << "that was no change";
}

TEST_F(DataChangeTest, TheListenerIsInstalledOnce) {
    ReferenceCacheManager::SetStartupDone();
    for (int time = 0; time < 3; ++time)
        ReferenceCacheManager::InitializeListener();
    subscribe();
    setLanguage("ja_JP");
    EXPECT_EQ(events(), 1);
}

TEST_F(DataChangeTest, ASubscriptionEndsWithItsConnection) {
    subscribe();
    EXPECT_EQ(SubscriptionCountByType<ReferenceDataChangeEvent>(manager()).get(), 1U);
    connection().reset();
    EXPECT_EQ(SubscriptionCountByType<ReferenceDataChangeEvent>(manager()).get(), 0U);
    ReferenceCacheManager::ClearAllCaches();
    EXPECT_EQ(events(), 0);
}

TEST_F(DataChangeTest, SubscribingAgainEndsTheSubscriptionThatTheConnectionHeld) {
    subscribe();
    subscribe();
    ReferenceCacheManager::ClearAllCaches();
    EXPECT_EQ(events(), 1);
}

TEST_F(DataChangeTest, WithoutAVirtualMachineNothingIsSubscribedAndClearingStillClears) {
    Factory::setCurrentLocalVVM(nullptr);
    subscribe();
    EXPECT_FALSE(connection());
    fillCaches();
    EXPECT_NO_THROW(ReferenceCacheManager::ClearAllCaches());
    expectEmptyCaches();
    EXPECT_EQ(clears(), 1);
}

TEST_F(DataChangeTest, AFunctionThatReturnsNoManagerLeavesTheConnectionAndClearingAsTheyAre) {
    subscribe();
    ReferenceCacheManager::SetGetEventMgrFcn([] { return boost::shared_ptr<EventMgr>(); });
    subscribe([] { ADD_FAILURE() << "there was no manager to subscribe to"; });
    EXPECT_TRUE(connection());

    fillCaches();
    ReferenceCacheManager::ClearAllCaches();
    expectEmptyCaches();
    EXPECT_EQ(clears(), 1);
    EXPECT_EQ(events(), 0);

    ReferenceCacheManager::ResetGetEventMgrFcn();
    ReferenceCacheManager::ClearAllCaches();
    EXPECT_EQ(events(), 1) << "the first subscription is still there";
}

TEST_F(DataChangeTest, TheFunctionThatWasSetIsUsedUntilItIsReset) {
    const auto other = boost::make_shared<EventMgr>();
    ReferenceCacheManager::SetGetEventMgrFcn([&] { return other; });
    subscribe();
    EXPECT_EQ(SubscriptionCountByType<ReferenceDataChangeEvent>(*other).get(), 1U);
    EXPECT_EQ(SubscriptionCountByType<ReferenceDataChangeEvent>(manager()).get(), 0U);
    ReferenceCacheManager::ClearAllCaches();
    EXPECT_EQ(events(), 1);

    ReferenceCacheManager::ResetGetEventMgrFcn();
    ReferenceCacheManager::ClearAllCaches();
    EXPECT_EQ(events(), 1) << "the other manager is not used any more";
    subscribe();
    EXPECT_EQ(SubscriptionCountByType<ReferenceDataChangeEvent>(manager()).get(), 1U);
}

TEST_F(DataChangeTest, AnEmptyFunctionRaisesBadFunctionCall) {
    fillCaches();
    ReferenceCacheManager::SetGetEventMgrFcn(nullptr);
    EXPECT_THROW(subscribe(), std::bad_function_call);
    EXPECT_THROW(ReferenceCacheManager::ClearAllCaches(), std::bad_function_call);
    expectEmptyCaches();
}

TEST_F(DataChangeTest, WhatTheFunctionThrowsIsThrown) {
    ReferenceCacheManager::SetGetEventMgrFcn(
        []() -> boost::shared_ptr<EventMgr> { throw std::runtime_error("no manager today"); });
    EXPECT_THROW(subscribe(), std::runtime_error);
    EXPECT_THROW(ReferenceCacheManager::ClearAllCaches(), std::runtime_error);
    EXPECT_EQ(clears(), 1) << "the parser forgets all the same";
}

TEST_F(DataChangeTest, ASubscriberThatThrowsKeepsNeitherTheOthersNorTheParserFromHearing) {
    subscribe([] { throw std::runtime_error("out of paper"); });
    ScopedConnection second;
    int heard = 0;
    ReferenceCacheManager::SubscribeToDataChangeEvent(
        second, [&](const ReferenceDataChangeEvent&) { ++heard; });
    EXPECT_NO_THROW(ReferenceCacheManager::ClearAllCaches());
    EXPECT_EQ(heard, 1);
    EXPECT_EQ(clears(), 1);
}

TEST(ReferenceDataChangeEventTest, TellsItsTypeAndThatScriptsMayReceiveIt) {
    const ReferenceDataChangeEvent event;
    const ReferenceDataChangeEvent copy(event);
    const ReferenceDataChangeEvent moved(ReferenceDataChangeEvent{});
    for (const auto* one : {&event, &copy, &moved}) {
        EXPECT_EQ(one->getTypeInformation().getTypeName(),
                  "reference::cache_manager::ReferenceDataChangeEvent");
        EXPECT_TRUE(one->isVELTRAClientsAllowed());
    }
    EventMgr manager;
    const auto connection = manager.subscribe<ReferenceDataChangeEvent>([](const auto&) {});
    EXPECT_EQ(event.getTypeInformation().getSubscriptionCount(manager), 1U);
}

// Start-up is done once in a process, and tests before this one may have done it.
TEST(DataChangeBeforeStartUpDeathTest, AChangeOfLanguageClearsAndPublishesNothing) {
    testing::GTEST_FLAG(death_test_style) = "threadsafe";  // in a process of its own
    const auto inFreshProcess = [] {
        const auto source = std::make_shared<MemorySource>();
        source->add(ProductBuilder(u"alpha").build());
        docparser::DocResourceParser::setSource(source);
        const auto machine = Factory::makeLocalVVM();
        int events = 0;
        ScopedConnection connection;
        ReferenceCacheManager::SubscribeToDataChangeEvent(
            connection, [&](const ReferenceDataChangeEvent&) { ++events; });
        ReferenceCacheManager::InitializeListener();
        ReferenceCacheManager::PopulateLookupCaches();
        ReferenceCacheManager::PopulateResourceCache();
        setLanguage("ja_JP");
        const bool untouched = !ReferenceCacheManager::IsStartupDone() && events == 0 &&
                               ReferenceCacheManager::GetLookupCache()->size() == 1 &&
                               ReferenceCacheManager::GetResourceCache()->size() == 1 &&
                               source->clearCalls() == 0;
        ReferenceCacheManager::SetStartupDone();
        setLanguage("en_US");
        const bool cleared = ReferenceCacheManager::IsStartupDone() && events == 1 &&
                             ReferenceCacheManager::GetLookupCache()->empty() &&
                             ReferenceCacheManager::GetResourceCache()->empty() &&
                             source->clearCalls() == 1;
        std::_Exit(untouched && cleared ? 0 : 1);
    };
    EXPECT_EXIT(inFreshProcess(), testing::ExitedWithCode(0), "");
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
