// How the library installs its listener where the settings are not there yet. This program brings a
// settings root of its own, which stands in for the host's: the dynamic linker finds it first.
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

#include <boost/smart_ptr/make_shared_object.hpp>
#include <gtest/gtest.h>

#include "docparser/DocResourceParser.hpp"
#include "foundation/core/context/ContextRegistry.hpp"
#include "foundation/msg_svc/eventmgr/EventMgr.hpp"
#include "foundation/msg_svc/eventmgr/ScopedConnection.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "reference/api/cache_manager/ReferenceDataChangeEvent.hpp"
#include "settings/in_veltra/settingsRoot.hpp"
#include "support/MemorySource.hpp"

namespace {

using settings::core::Settings;

// What getSettingsRoot does in this program, and how often it was asked, for which context.
std::function<std::shared_ptr<Settings>()> answer;
int timesAsked = 0;
foundation::core::context::ContextId lastContext = 0;

}  // namespace

[[gnu::visibility("default")]] std::shared_ptr<Settings> settings::in_veltra::getSettingsRoot(
    foundation::core::context::ContextId contextId) {
    ++timesAsked;
    lastContext = contextId;
    return answer();
}

namespace reference::tests {
namespace {

using cache_manager::ReferenceCacheManager;
using foundation::core::context::ContextRegistry;
using foundation::msg_svc::eventmgr::EventMgr;

// One test: the listener is installed once in a process.
TEST(ListenerInstallationTest, FailuresAreSilentAndTheNextCallTriesAgainUntilItIsInstalled) {
    const auto manager = boost::make_shared<EventMgr>();
    ReferenceCacheManager::SetGetEventMgrFcn([&] { return manager; });
    docparser::DocResourceParser::setSource(std::make_shared<MemorySource>());
    ReferenceCacheManager::SetStartupDone();
    int events = 0;
    foundation::msg_svc::eventmgr::ScopedConnection connection;
    ReferenceCacheManager::SubscribeToDataChangeEvent(
        connection, [&](const cache_manager::ReferenceDataChangeEvent&) { ++events; });

    ContextRegistry::setCurrentContextId(42);
    answer = [] { return nullptr; };
    EXPECT_NO_THROW(ReferenceCacheManager::InitializeListener());
    EXPECT_EQ(timesAsked, 1);
    EXPECT_EQ(lastContext, 42U);

    answer = []() -> std::shared_ptr<Settings> { throw std::runtime_error("no settings today"); };
    EXPECT_NO_THROW(ReferenceCacheManager::InitializeListener());
    answer = []() -> std::shared_ptr<Settings> { throw 5; };
    EXPECT_NO_THROW(ReferenceCacheManager::InitializeListener());
    EXPECT_EQ(timesAsked, 3);

    const auto root = Settings::makeRoot();
    answer = [&] { return root; };
    EXPECT_NO_THROW(ReferenceCacheManager::InitializeListener()) << "the setting is not declared";
    EXPECT_EQ(timesAsked, 4);

    const auto language = root->declare("veltra.desktop.help.DocLanguage", std::string("en_US"));
    language->setValue(std::string("de_DE"));
    EXPECT_EQ(events, 0) << "nobody listens yet";
    ReferenceCacheManager::InitializeListener();
    EXPECT_EQ(timesAsked, 5);
    language->setValue(std::string("ja_JP"));
    EXPECT_EQ(events, 1);

    ReferenceCacheManager::InitializeListener();
    EXPECT_EQ(timesAsked, 5) << "it is installed";
    language->setValue(std::string("en_US"));
    EXPECT_EQ(events, 2);
    ReferenceCacheManager::ResetGetEventMgrFcn();
}

}  // namespace
}  // namespace reference::tests
