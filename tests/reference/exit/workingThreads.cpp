// A program whose main() returns while threads still use the library in every way. It succeeds when
// it exits as any other program does. Its arguments: where documentation is read from ("memory", or
// the folder of a documentation set), and for how many microseconds the threads work before main()
// returns.
#include <array>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <string>
#include <thread>
#include <unistd.h>

#include "docparser/DocResourceParser.hpp"
#include "foundation/core/except/IMsgIDException.hpp"
#include "foundation/msg_svc/eventmgr/ScopedConnection.hpp"
#include "reference/api/AllTextDataRetriever.hpp"
#include "reference/api/ClassEntityDataRetriever.hpp"
#include "reference/api/EntityPurposeDataRetriever.hpp"
#include "reference/api/PageNameDataRetriever.hpp"
#include "reference/api/ReferenceDataRetriever.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "reference/api/cache_manager/ReferenceDataChangeEvent.hpp"
#include "reference/api/comparator/PreferredOrderComparator.hpp"
#include "reference/utils/getComparatorFromVq.hpp"
#include "settings/in_veltra/settingsRoot.hpp"
#include "support/LibraryTest.hpp"
#include "support/MemorySource.hpp"
#include "vvm/Factory.hpp"
#include "zorb/ClassDescription.hpp"

namespace {

using namespace reference;
using cache_manager::ReferenceCacheManager;
using cache_manager::ReferenceDataChangeEvent;
using property::RefEntityType;

// The very last thing that exit() calls: static objects of all libraries have been destroyed by
// then, and the threads get time to stumble over it.
void giveTheThreadsTime() {
    ::usleep(30'000);
}

// Runs before the initialisers of all libraries, so that what it registers is called last.
__attribute__((no_sanitize("address", "undefined"))) void registerFirst() {
    static_cast<void>(std::atexit(&giveTheThreadsTime));
}
__attribute__((section(".preinit_array"), used)) void (*const atTheVeryStart)() = &registerFirst;

std::shared_ptr<tests::MemorySource> makeSource() {
    auto source = std::make_shared<tests::MemorySource>();
    for (const char16_t* name : {u"veltra", u"brisk", u"pendrake"}) {
        tests::ProductBuilder product(name);
        for (int number = 0; number < 2000; ++number) {
            const auto digits = std::to_string(number);
            const std::u16string suffix(digits.begin(), digits.end());
            product.entity(std::u16string(name) + u".fit" + suffix, RefEntityType::Function,
                           u"fit" + suffix + u".html", u"Fits a model");
        }
        source->add(product.build());
    }
    return source;
}

template <typename Retriever>
void search() {
    api::ReferenceRequest request(u"FIT1");
    request.setEntityCaseSensitivity(api::EntityCaseSensitivity::Insensitive);
    request.setEntityPrecision(api::EntityPrecision::Ignore_Package);
    request.setRefRequestComparator(api::comparator::PreferredOrderComparator());
    static_cast<void>(Retriever(request).getReferenceData());
}

void searchInEveryWay() {
    search<api::ReferenceDataRetriever>();
    search<api::ClassEntityDataRetriever>();
    search<api::EntityPurposeDataRetriever>();
    search<api::PageNameDataRetriever>();
    search<api::AllTextDataRetriever>();
}

void startUp() {
    ReferenceCacheManager::PerformStartupOperations();
    static_cast<void>(ReferenceCacheManager::IsStartupDone());
}

void listenAndClear() {
    foundation::msg_svc::eventmgr::ScopedConnection connection;
    ReferenceCacheManager::SubscribeToDataChangeEvent(connection,
                                                      [](const ReferenceDataChangeEvent&) {});
    ReferenceCacheManager::ClearAllCaches();
}

void changeLanguage() {
    const auto setting = settings::in_veltra::getSettingsRoot(1)->getSettingsByFullName(
        settings::in_veltra::docLanguageSetting);
    setting->setValue(std::string("ja_JP"));
    setting->setValue(std::string("en_US"));
}

void useTheObjectSystem() {
    const auto comparator = zorb::wrap(api::comparator::PreferredOrderComparator());
    static_cast<void>(utils::getComparatorFromVq(comparator.get()));
    try {
        static_cast<void>(utils::getComparatorFromVq(nullptr));
    } catch (const foundation::core::except::IMsgIDException& error) {
        static_cast<void>(error.getIdentifier());
    }
    static_cast<void>(RefEntityType::namedValues());
}

}  // namespace

int main(int /*argc*/, char** argv) {
    const std::string where = argv[1];
    if (where == "memory")
        docparser::DocResourceParser::setSource(makeSource());
    else
        settings::in_veltra::getSettingsRoot(1)
            ->getSettingsByFullName(settings::in_veltra::docRootSetting)
            ->setValue(where);
    static_cast<void>(vvm::Factory::makeLocalVVM());

    const std::array<std::function<void()>, 7> works = {&searchInEveryWay,
                                                        &searchInEveryWay,
                                                        &startUp,
                                                        &listenAndClear,
                                                        &changeLanguage,
                                                        &useTheObjectSystem,
                                                        &ReferenceCacheManager::PopulateAllCaches};
    // Not a static object, and not on the stack: the threads outlive both.
    auto& started = *new std::atomic<std::size_t>(0);
    for (const auto& work : works)
        std::thread([work, &started] {
            ++started;
            for (;;)
                work();
        }).detach();
    while (started < works.size())
        std::this_thread::yield();
    std::this_thread::sleep_for(std::chrono::microseconds(std::atoi(argv[2])));
    return 0;
}
