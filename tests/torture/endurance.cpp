// Asks the library a million times and changes the language ten thousand times, and tells what it
// holds in memory meanwhile: the same from beginning to end.
//
//   endurance ROOT REQUESTS CHANGES
//
// ROOT is a documentation set in English and Japanese. At ten moments in equal distances, always at
// the same point of the same round of requests, it prints how much is held on the heap, and
// how large the process is. Exits with 1 when either has grown since the second of them; what
// is made at the first use of something is there by then.
#include <algorithm>
#include <array>
#include <cstddef>
#include <exception>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <string>
#include <unistd.h>
#include <vector>

#include "foundation/core/context/ContextRegistry.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "reference/ask/ask.hpp"
#include "reference/ask/complete.hpp"
#include "settings/in_veltra/settingsRoot.hpp"
#include "support/LiveAllocations.hpp"
#include "support/retrieveBy.hpp"
#include "vvm/Factory.hpp"

namespace reference::tests {
namespace {

using cache_manager::ReferenceCacheManager;

void set(const char* name, const std::string& value) {
    using foundation::core::context::ContextRegistry;
    settings::in_veltra::getSettingsRoot(ContextRegistry::getCurrentContextId())
        ->getSettingsByFullName(name)
        ->setValue(value);
}

// One request of each kind for each name of the documentation.
class Round {
  public:
    Round() {
        const auto lookups = ReferenceCacheManager::GetLookupCache();
        for (const auto& [product, lookup] : *lookups)
            for (const auto& [name, records] : lookup.getItems())
                m_names.push_back(name);
    }

    [[nodiscard]] std::size_t size() const noexcept { return m_names.size() * kinds; }

    void ask(std::size_t number) {
        const std::u16string& name = m_names[number % m_names.size()];
        const std::size_t kind = number / m_names.size() % kinds;
        if (kind < searches.size())
            m_found += retrieveBy(searches[kind], loosely(name)).size();
        else if (kind == searches.size())
            m_found += ask::ask(name.substr(0, longestQuestion)).hits.size();
        else
            m_found += ask::complete(name.substr(0, 2)).size();
    }

    // How many results there were, so that nobody measures a library that finds nothing.
    [[nodiscard]] std::size_t found() const noexcept { return m_found; }

  private:
    static constexpr std::array searches = {Search::Entity, Search::Class, Search::Purpose,
                                            Search::AllText, Search::Page};
    static constexpr std::size_t kinds = searches.size() + 2;
    static constexpr std::size_t longestQuestion = 40;

    static api::ReferenceRequest loosely(const std::u16string& name) {
        api::ReferenceRequest request(name);
        request.setEntityCaseSensitivity(api::EntityCaseSensitivity::Insensitive);
        request.setEntityPrecision(api::EntityPrecision::Ignore_Package);
        return request;
    }

    std::vector<std::u16string> m_names;
    std::size_t m_found = 0;
};

struct Held {
    LiveAllocations heap;
    std::size_t kilobytes = 0;  // of the process

    static Held now() {
        std::ifstream status("/proc/self/statm");
        std::size_t all = 0;
        std::size_t resident = 0;
        status >> all >> resident;
        return {.heap = LiveAllocations::now(),
                .kilobytes = resident * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE)) / 1024};
    }
};

int run(const std::string& root, std::size_t requests, std::size_t changes) {
    set(settings::in_veltra::docRootSetting, root);
    set(settings::in_veltra::docLanguageSetting, "en_US");
    vvm::Factory::makeLocalVVM();
    ReferenceCacheManager::PerformStartupOperations();
    Round round;

    constexpr std::size_t moments = 10;
    std::vector<Held> held;
    held.reserve(moments);
    std::size_t asked = 0;
    std::size_t changed = 0;
    std::cout << std::setw(10) << "requests" << std::setw(10) << "changes" << std::setw(10)
              << "blocks" << std::setw(12) << "bytes" << std::setw(12) << "process" << '\n';
    while (held.size() < moments) {
        const std::size_t moment = held.size() + 1;
        const std::size_t changesUntil = changes * moment / moments;
        const std::size_t requestsUntil = requests * moment / moments;
        while (changed < changesUntil) {
            ++changed;
            set(settings::in_veltra::docLanguageSetting, changed % 2 == 0 ? "en_US" : "ja_JP");
            const std::size_t until = asked + (requestsUntil - std::min(asked, requestsUntil)) /
                                                  (changesUntil - changed + 1);
            while (asked < until)
                round.ask(asked++);
        }
        // The same state at each moment.
        ReferenceCacheManager::ClearAllCaches();
        for (std::size_t number = 0; number < round.size(); ++number)
            round.ask(number);
        asked += round.size();
        held.push_back(Held::now());
        std::cout << std::setw(10) << asked << std::setw(10) << changed << std::setw(10)
                  << held.back().heap.blocks << std::setw(12) << held.back().heap.bytes
                  << std::setw(9) << held.back().kilobytes << " kB\n";
    }
    std::cout << round.found() << " results\n";
    ReferenceCacheManager::ClearAllCaches();
    vvm::Factory::setCurrentLocalVVM(nullptr);

    // What a block takes depends on what the allocator has at hand, and it may keep a little more
    // of what was freed.
    const bool isFlat = held.back().heap.blocks == held[1].heap.blocks &&
                        held.back().heap.bytes <= held[1].heap.bytes + held[1].heap.bytes / 1000 &&
                        held.back().kilobytes <= held[1].kilobytes + held[1].kilobytes / 20;
    if (!isFlat)
        std::cout << "Memory has grown.\n";
    return isFlat && round.found() != 0 ? 0 : 1;
}

}  // namespace
}  // namespace reference::tests

int main(int count, char** arguments) {
    if (count != 4) {
        std::cerr << "usage: endurance ROOT REQUESTS CHANGES\n";
        return 2;
    }
    try {
        return reference::tests::run(arguments[1], std::stoul(arguments[2]),
                                     std::stoul(arguments[3]));
    } catch (const std::exception& error) {
        std::cerr << "endurance: " << error.what() << '\n';
        return 2;
    }
}
