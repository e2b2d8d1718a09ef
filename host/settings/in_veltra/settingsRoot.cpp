#include "settings/in_veltra/settingsRoot.hpp"

#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace settings::in_veltra {
namespace {

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

std::shared_ptr<core::Settings> getSettingsRoot(foundation::core::context::ContextId contextId) {
    static std::mutex mutex;
    static std::map<foundation::core::context::ContextId, std::shared_ptr<core::Settings>> roots;
    const std::lock_guard lock(mutex);
    auto& root = roots[contextId];
    if (!root)
        root = makeContextRoot();
    return root;
}

}  // namespace settings::in_veltra
