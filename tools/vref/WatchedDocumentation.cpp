#include "vref/WatchedDocumentation.hpp"

#include <exception>
#include <new>
#include <utility>

#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "reference/api/cache_manager/ReferenceDataChangeEvent.hpp"
#include "vref/ProductFigures.hpp"
#include "vvm/Factory.hpp"

namespace reference::tools {

using cache_manager::ReferenceCacheManager;
using cache_manager::ReferenceDataChangeEvent;

WatchedDocumentation::WatchedDocumentation(const DocumentationOptions& options, Reporter warn,
                                           Loaded loaded)
    : m_warn(std::move(warn)), m_loaded(std::move(loaded)), m_documentation(options, m_warn) {
    vvm::Factory::makeLocalVVM();
    ReferenceCacheManager::SubscribeToDataChangeEvent(
        m_connection, [this](const ReferenceDataChangeEvent&) { m_isOutdated = true; });
    static_cast<void>(hasChanged());
    ReferenceCacheManager::PerformStartupOperations();
    m_documentation.setLoaded();
    m_loaded("ready", whatIsLoaded());
}

WatchedDocumentation::~WatchedDocumentation() {
    vvm::Factory::setCurrentLocalVVM(nullptr);
}

bool WatchedDocumentation::hasChanged() {
    const auto roots = m_documentation.roots();
    const foundation::core::MutexLock lock(m_mutex);
    return m_manifests.hasChanged(roots) || canReadMore();
}

// A file that the system failed to read may be readable again, without a change of the manifest.
bool WatchedDocumentation::canReadMore() {
    const auto now = std::chrono::steady_clock::now();
    if (now < m_nextTry)
        return false;
    m_nextTry = now + betweenTries;
    return m_documentation.canReadMore();
}

bool WatchedDocumentation::readAnew() {
    try {
        m_documentation.prepareReading();
    } catch (const UnreadableDocumentation& error) {
        m_warn(error.what());
        return false;
    }
    ReferenceCacheManager::ClearAllCaches();
    static_cast<void>(loadIfOutdated("documentation"));
    return true;
}

bool WatchedDocumentation::setLanguage(const std::string& wanted) {
    m_documentation.setLanguage(wanted);
    return loadIfOutdated("language");
}

bool WatchedDocumentation::reload() {
    m_documentation.prepareReading();
    ReferenceCacheManager::ClearAllCaches();
    return loadIfOutdated("request");
}

LoadedDocumentation WatchedDocumentation::whatIsLoaded() const {
    LoadedDocumentation loaded{.language = m_documentation.language()};
    for (const auto& [name, lookup] : *ReferenceCacheManager::GetLookupCache()) {
        ++loaded.products;
        loaded.entities += countEntities(lookup);
    }
    return loaded;
}

// Loads the lookup files again at once, so that the next request need not wait for them.
bool WatchedDocumentation::loadIfOutdated(const std::string& why) {
    if (!std::exchange(m_isOutdated, false))
        return true;
    ++m_edition;
    try {
        ReferenceCacheManager::PopulateLookupCaches();
        m_documentation.setLoaded();
    } catch (const std::bad_alloc&) {
        m_warn("There is not enough memory to read the documentation.");
        return false;
    } catch (const std::exception& error) {
        m_warn(error.what());
        return false;
    }
    m_loaded(why, whatIsLoaded());
    return true;
}

}  // namespace reference::tools
