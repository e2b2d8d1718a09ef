// Warming the caches while requests may already arrive.
#include <chrono>
#include <initializer_list>
#include <string>
#include <vector>

#include "foundation/core/Mutex.hpp"
#include "foundation/core/NeverDestroyed.hpp"
#include "foundation/log/basic_diagnostic_logger.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"

namespace reference::cache_manager {
namespace {

using foundation::core::Mutex;
using foundation::core::MutexLock;
using foundation::core::NeverDestroyed;
using foundation::log::diagnostic_logger;
using foundation::log::FunctionTrace;
using Clock = std::chrono::steady_clock;

Mutex s_startupMutex;
bool m_startupProcessDone VELTRA_GUARDED_BY(s_startupMutex) = false;

// The products whose pages are wanted first, in the order in which they are parsed.
const NeverDestroyed<std::vector<std::u16string>> s_startupProducts(
    std::initializer_list<std::u16string>{u"veltra", u"brisk", u"caldera", u"lumora", u"qix",
                                          u"tarvel", u"merisk", u"dornel", u"yarl", u"pendrake"});

// Readers of start-up logs know the trace by this number, so it does not follow the source.
constexpr int startupTraceLine = 677;

void logElapsed(const diagnostic_logger& logger, const std::string& what, Clock::time_point start) {
    constexpr int severity = foundation::log::Information;
    if (!logger.isEnabled(severity))
        return;
    const std::chrono::duration<double> elapsed = Clock::now() - start;
    // std::to_string writes six decimals.
    logger.log(severity, what + std::to_string(elapsed.count()) + "s.");
}

}  // namespace

void ReferenceCacheManager::PerformStartupOperations() {
    const diagnostic_logger logger("referenceApi::startup");
    const FunctionTrace trace(logger, __FILE__, __PRETTY_FUNCTION__, startupTraceLine);
    const auto start = Clock::now();

    InitializeListener();
    PopulateLookupCache();
    for (const auto& product : *s_startupProducts) {
        try {
            static_cast<void>(GetResourceCacheForProduct(product, product));
        } catch (...) {
            // A product that is broken, or not there, does not hold up the others.
        }
    }
    SetStartupDone();
    logElapsed(logger, "ReferenceApiStartup ready time: ", start);

    // Where memory was short at first, the language must not stay unheard for good.
    InitializeListener();

    // Filled with the first, unless somebody cleared it meanwhile.
    PopulateUninstalledLookupCache();
    logElapsed(logger, "ReferenceApiStartup final thread time: ", start);
}

bool ReferenceCacheManager::IsStartupDone() {
    const MutexLock lock(s_startupMutex);
    return m_startupProcessDone;
}

void ReferenceCacheManager::SetStartupDone() {
    const MutexLock lock(s_startupMutex);
    m_startupProcessDone = true;
}

}  // namespace reference::cache_manager
