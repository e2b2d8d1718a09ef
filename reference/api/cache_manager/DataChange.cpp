// How the cache manager learns that the documentation changed, and how it tells its clients.
#include "reference/api/cache_manager/dataChange.hpp"

#include <atomic>
#include <memory>
#include <string>

#include <boost/smart_ptr/shared_ptr.hpp>

#include "foundation/core/NeverDestroyed.hpp"
#include "foundation/core/context/ContextRegistry.hpp"
#include "foundation/msg_svc/eventmgr/Connection.hpp"
#include "foundation/msg_svc/eventmgr/EventMgr.hpp"
#include "foundation/msg_svc/eventmgr/ScopedConnection.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "reference/api/cache_manager/ReferenceDataChangeEvent.hpp"
#include "settings/in_veltra/addListener.hpp"
#include "settings/in_veltra/settingsRoot.hpp"
#include "vvm/Factory.hpp"

namespace reference::cache_manager {
namespace {

using foundation::core::NeverDestroyed;
using foundation::core::context::ContextRegistry;
using foundation::msg_svc::eventmgr::Connection;
using foundation::msg_svc::eventmgr::EventMgr;
using foundation::msg_svc::eventmgr::ScopedConnection;
using settings::core::SettingsValueChangeEvent;

// Null where the process has no virtual machine, or cannot tell.
boost::shared_ptr<EventMgr> eventMgrOfLocalVVM() {
    try {
        const auto machine = vvm::Factory::getCurrentLocalVVM(vvm::ReturnNothing);
        return machine ? machine->getEventMgr() : nullptr;
    } catch (...) {
        return nullptr;
    }
}

// Set by the host before it uses the library, and read without a lock.
NeverDestroyed<std::function<boost::shared_ptr<EventMgr>()>> m_getEventMgrFcn(&eventMgrOfLocalVVM);

const NeverDestroyed<std::string> s_docLanguageSetting("veltra.desktop.help.DocLanguage");

// Made when the library is loaded: where memory has run out, the clients must still hear that what
// they show has changed.
const NeverDestroyed<ReferenceDataChangeEvent> s_event;

std::shared_ptr<const ReferenceDataChangeEvent> eventThatNobodyOwns() noexcept {
    return {std::shared_ptr<const void>(), &*s_event};
}

// Kept for the life of the process. Only the thread that has raised the flag may touch the
// listener. Not a mutex, because it would be held while the settings library runs.
std::atomic_flag s_isListenerInUse;
NeverDestroyed<std::unique_ptr<Connection>> s_docLanguageListener;

// Lowers the flag at the end of a scope.
class ListenerUse {
  public:
    ListenerUse() : m_isOurs(!s_isListenerInUse.test_and_set()) {}
    ListenerUse(const ListenerUse&) = delete;  // bound to its scope
    ListenerUse& operator=(const ListenerUse&) = delete;
    ~ListenerUse() {
        if (m_isOurs)
            s_isListenerInUse.clear();
    }

    [[nodiscard]] bool isOurs() const noexcept { return m_isOurs; }

  private:
    const bool m_isOurs;
};

// Until start-up is done, it is still filling the caches, and the host is settling its language.
void onDocLanguageChanged(const SettingsValueChangeEvent& /*event*/) {
    if (ReferenceCacheManager::IsStartupDone())
        ReferenceCacheManager::ClearAllCaches();
}

}  // namespace

void ReferenceCacheManager::InitializeListener() {
    const ListenerUse use;
    if (!use.isOurs() || *s_docLanguageListener)
        return;
    try {
        const auto root =
            settings::in_veltra::getSettingsRoot(ContextRegistry::getCurrentContextId());
        if (!root)
            return;
        *s_docLanguageListener = settings::in_veltra::addListener<SettingsValueChangeEvent>(
            root->getSettingsByFullName(*s_docLanguageSetting), &onDocLanguageChanged);
    } catch (...) {
        // Without the setting there is only one language; the next call tries again.
    }
}

void ReferenceCacheManager::SetGetEventMgrFcn(
    const std::function<boost::shared_ptr<EventMgr>()>& f) {
    *m_getEventMgrFcn = f;
}

void ReferenceCacheManager::ResetGetEventMgrFcn() {
    *m_getEventMgrFcn = &eventMgrOfLocalVVM;
}

void ReferenceCacheManager::SubscribeToDataChangeEvent(
    ScopedConnection& connection,
    const std::function<void(const ReferenceDataChangeEvent&)>& callback) {
    if (const auto manager = (*m_getEventMgrFcn)())
        connection.assign(manager->subscribe<ReferenceDataChangeEvent>(callback));
}

void publishDataChange() {
    constexpr bool immediately = true;
    if (const auto manager = (*m_getEventMgrFcn)())
        manager->publish(eventThatNobodyOwns(), immediately);
}

}  // namespace reference::cache_manager
