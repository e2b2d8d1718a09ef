#include "settings/in_veltra/settingsRoot.hpp"

#include <map>
#include <string>
#include <vector>

#include "foundation/core/Mutex.hpp"
#include "foundation/core/NeverDestroyed.hpp"

namespace settings::in_veltra {
namespace {

using foundation::core::Mutex;
using foundation::core::MutexLock;
using foundation::core::NeverDestroyed;
using foundation::core::context::ContextId;

struct State {
    Mutex mutex;
    std::map<ContextId, std::shared_ptr<core::Settings>> roots VELTRA_GUARDED_BY(mutex);
};
NeverDestroyed<State> s_state;

std::shared_ptr<core::Settings> makeContextRoot() {
    auto root = core::Settings::makeRoot();
    // Empty: the environment decides, and after it what was installed with the library.
    root->declare(docRootSetting, std::string());
    // Empty: the first locale of the documentation set.
    root->declare(docLanguageSetting, std::string());
    root->declare(supportPackageRootsSetting, std::vector<std::string>());
    // Empty: the environment decides.
    root->declare(logSetting, std::string());
    return root;
}

}  // namespace

std::shared_ptr<core::Settings> getSettingsRoot(ContextId contextId) {
    State& state = *s_state;
    const MutexLock lock(state.mutex);
    auto& root = state.roots[contextId];
    if (!root)
        root = makeContextRoot();
    return root;
}

}  // namespace settings::in_veltra
