// What becomes of exceptions of any kind that come out of foreign code: documentation sources,
// subscribers, listeners and comparators; and of comparators that are no order.
#include <algorithm>
#include <functional>
#include <memory>
#include <new>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "docparser/DocParserException.hpp"
#include "docparser/DocResourceParser.hpp"
#include "fl/i18n/utf.hpp"
#include "foundation/core/context/ContextRegistry.hpp"
#include "foundation/core/except/Exception.hpp"
#include "foundation/msg_svc/eventmgr/Connection.hpp"
#include "foundation/msg_svc/eventmgr/ScopedConnection.hpp"
#include "reference/api/ReferenceDataRetriever.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "reference/api/cache_manager/ReferenceDataChangeEvent.hpp"
#include "reference/ask/ask.hpp"
#include "reference/ask/complete.hpp"
#include "settings/core/Settings.hpp"
#include "settings/in_veltra/settingsRoot.hpp"
#include "support/Capture.hpp"
#include "support/LibraryTest.hpp"
#include "support/Print.hpp"
#include "vvm/Factory.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using api::ReferenceData;
using api::ReferenceDataRetriever;
using api::ReferenceRequest;
using cache_manager::ReferenceCacheManager;
using cache_manager::ReferenceDataChangeEvent;
using foundation::msg_svc::eventmgr::ScopedConnection;
using property::RefEntityType;
using ::testing::UnorderedElementsAreArray;

using HostError =
    foundation::core::except::Exception<foundation::core::except::MessageKey<"VELTRA:test", "Kind">,
                                        std::exception, void>;

struct NoStandardType {};

// Each kind of exception: how it is thrown, and what tells that it was this one that arrived.
struct Kind {
    const char* name;
    void (*raise)();
    bool (*arrives)(const std::function<void()>& call);
};

template <typename Caught>
bool arrivesAs(const std::function<void()>& call) {
    try {
        call();
    } catch (const Caught&) {
        return true;
    } catch (...) {
        return false;
    }
    return false;
}

const Kind kinds[] = {
    {"std::exception", [] { throw std::runtime_error("no disk"); }, &arrivesAs<std::runtime_error>},
    {"int", [] { throw 5; }, &arrivesAs<int>},
    {"no standard type", [] { throw NoStandardType(); }, &arrivesAs<NoStandardType>},
    {"bad_alloc", [] { throw std::bad_alloc(); }, &arrivesAs<std::bad_alloc>},
    {"the host's", [] { throw HostError({"one"}); },
     &arrivesAs<foundation::core::except::IException>},
};

// Throws in one of its calls, counted over all operations.
class ThrowingSource : public MemorySource {
  public:
    void throwAt(int call, const Kind& kind) {
        m_left = call;
        m_kind = &kind;
    }
    // Whether the call has come. Then none throws any more.
    [[nodiscard]] bool hasThrown() const { return m_left == 0; }
    void stopThrowing() { m_left = 0; }

    docparser::ParsingResults getResourceLookupFiles() override {
        note();
        return MemorySource::getResourceLookupFiles();
    }
    docparser::ReferenceResources getResourceFile(const std::u16string& resourceFile) override {
        note();
        return MemorySource::getResourceFile(resourceFile);
    }
    docparser::ReferenceRoots getReferenceRoots() override {
        note();
        return MemorySource::getReferenceRoots();
    }
    std::vector<std::u16string> getSupportedDocLocales() override {
        note();
        return MemorySource::getSupportedDocLocales();
    }
    docparser::ProductLists getAllProducts(const std::u16string& docRoot,
                                           const std::vector<std::u16string>& locales,
                                           const std::u16string& locale) override {
        note();
        return MemorySource::getAllProducts(docRoot, locales, locale);
    }
    bool isProductInstalled(const std::u16string& product) override {
        note();
        return MemorySource::isProductInstalled(product);
    }
    void clearSupportPackageCaches() override {
        note();
        MemorySource::clearSupportPackageCaches();
    }

  private:
    void note() {
        if (m_left > 0 && --m_left == 0)
            m_kind->raise();
    }

    int m_left = 0;
    const Kind* m_kind = nullptr;
};

std::string joined(const std::vector<std::string>& texts) {
    std::string all;
    for (const auto& text : texts)
        all += text + "; ";
    return all;
}

// The library over three products of a source that throws.
class ThrowingCallsTest : public LibraryTest {
  protected:
    ThrowingCallsTest() {
        for (const char16_t* name : {u"a", u"b", u"c"})
            m_throwing->add(
                ProductBuilder(name)
                    .entity(u"sort", RefEntityType::Function, u"sort.html",
                            u"Sort the rows of a table")
                    .entity(u"merge", RefEntityType::Function, u"merge.html", u"Merge two tables")
                    .build());
        docparser::DocResourceParser::setSource(m_throwing);
        clear();
    }
    ~ThrowingCallsTest() override {
        m_throwing->stopThrowing();
        vvm::Factory::setCurrentLocalVVM(nullptr);
    }

    static void clear() {
        ReferenceCacheManager::ClearLookupCaches();
        ReferenceCacheManager::ClearResourceCache();
    }

    [[nodiscard]] ThrowingSource& throwing() { return *m_throwing; }

    static std::string found() { return joined(retrieve(ReferenceRequest(u"sort"))); }

    static std::string asked() {
        std::string names;
        for (const auto& hit : ask::ask(u"sort the rows").hits)
            names += dump(hit.data) + "; ";
        return names;
    }

    static std::string completed() {
        std::string texts;
        for (const auto& completion : ask::complete(u"so", {}))
            texts += fl::i18n::toUtf8(completion.text) + "; ";
        return texts;
    }

    static std::string nominated() {
        return std::to_string(ReferenceCacheManager::GetProductsWithEntity(
                                  ReferenceRequest(u"sort"), ReferenceCacheManager::ReferenceSearch)
                                  .size());
    }

    // Makes each call of the source throw each kind of exception while `work` is done.
    void expectEachToArrive(const std::string& name, const std::function<std::string()>& work) {
        clear();
        const std::string right = work();
        for (const Kind& kind : kinds) {
            int calls = 0;
            for (int call = 1;; ++call) {
                SCOPED_TRACE(name + ": " + kind.name + " in call " + std::to_string(call));
                clear();
                throwing().throwAt(call, kind);
                std::string answer;
                const bool arrived = kind.arrives([&] { answer = work(); });
                const bool reached = throwing().hasThrown();
                throwing().stopThrowing();
                EXPECT_EQ(arrived, reached) << "answered: " << answer;
                // What was read before it was thrown does no harm, nor does what was not.
                EXPECT_EQ(work(), right);
                clear();
                EXPECT_EQ(work(), right);
                if (!reached)
                    break;
                ++calls;
            }
            EXPECT_GT(calls, 0) << name << ": no call was made to fail";
        }
    }

  private:
    std::shared_ptr<ThrowingSource> m_throwing = std::make_shared<ThrowingSource>();
};

TEST_F(ThrowingCallsTest, WhateverASourceThrowsArrivesAndTheNextRequestIsRight) {
    ASSERT_NE(found(), "");
    ASSERT_NE(asked(), "");
    ASSERT_NE(completed(), "");
    expectEachToArrive("find", &found);
    expectEachToArrive("ask", &asked);
    expectEachToArrive("complete", &completed);
    expectEachToArrive("nominate", &nominated);
}

TEST_F(ThrowingCallsTest, WhateverASourceThrowsArrivesFromWhatFillsTheCaches) {
    const auto cached = [] {
        return std::to_string(ReferenceCacheManager::GetLookupCache()->size()) + " " +
               std::to_string(ReferenceCacheManager::GetResourceCache()->size());
    };
    expectEachToArrive("lookups", [&] {
        ReferenceCacheManager::PopulateLookupCaches();
        return cached();
    });
    expectEachToArrive("everything", [&] {
        ReferenceCacheManager::PopulateAllCaches();
        return cached();
    });
    expectEachToArrive("one product", [&] {
        return std::to_string(ReferenceCacheManager::GetResourceCacheForProduct(u"b", u"b") !=
                              nullptr);
    });
}

TEST_F(ThrowingCallsTest, WhatASourceThrowsWhileItForgetsLeavesTheCachesEmptyAndIsHeardOf) {
    const auto machine = vvm::Factory::makeLocalVVM();
    ScopedConnection connection;
    int heard = 0;
    ReferenceCacheManager::SubscribeToDataChangeEvent(
        connection, [&](const ReferenceDataChangeEvent&) { ++heard; });
    const std::string right = found();
    for (const Kind& kind : kinds) {
        SCOPED_TRACE(kind.name);
        heard = 0;
        throwing().throwAt(1, kind);
        EXPECT_TRUE(kind.arrives([] { ReferenceCacheManager::ClearAllCaches(); }));
        EXPECT_TRUE(throwing().hasThrown());
        EXPECT_EQ(heard, 1);
        EXPECT_TRUE(ReferenceCacheManager::GetLookupCache()->empty());
        EXPECT_TRUE(ReferenceCacheManager::GetResourceCache()->empty());
        EXPECT_EQ(found(), right);
    }
}

TEST_F(ThrowingCallsTest, WhateverASubscriberThrowsTheOthersHearAndTheNextRequestIsRight) {
    const auto machine = vvm::Factory::makeLocalVVM();
    const std::string right = found();
    for (const Kind& kind : kinds) {
        SCOPED_TRACE(kind.name);
        ScopedConnection connections[3];
        int heard = 0;
        for (auto& connection : connections)
            ReferenceCacheManager::SubscribeToDataChangeEvent(connection,
                                                              [&](const ReferenceDataChangeEvent&) {
                                                                  ++heard;
                                                                  kind.raise();
                                                              });
        const int clearsBefore = throwing().clearCalls();
        EXPECT_NO_THROW(ReferenceCacheManager::ClearAllCaches());
        EXPECT_EQ(heard, 3);
        EXPECT_EQ(throwing().clearCalls(), clearsBefore + 1);
        EXPECT_TRUE(ReferenceCacheManager::GetLookupCache()->empty());
        EXPECT_EQ(found(), right);
    }
}

TEST_F(ThrowingCallsTest, WhateverAListenerThrowsTheCachesAreClearedAndTheSettingIsNew) {
    ReferenceCacheManager::PerformStartupOperations();
    const std::string right = found();
    const auto setting = settings::in_veltra::getSettingsRoot(
                             foundation::core::context::ContextRegistry::getCurrentContextId())
                             ->getSettingsByFullName(settings::in_veltra::docLanguageSetting);
    const std::string before = setting->get<std::string>();
    for (const Kind& kind : kinds) {
        SCOPED_TRACE(kind.name);
        int heard = 0;
        const auto connection =
            setting->addListener([&](const settings::core::SettingsValueChangeEvent&) {
                ++heard;
                kind.raise();
            });
        for (const char* const locale : {"en_US", "de_DE"}) {
            static_cast<void>(found());
            EXPECT_NO_THROW(setting->setValue(std::string(locale)));
            EXPECT_TRUE(ReferenceCacheManager::GetLookupCache()->empty());
            EXPECT_EQ(setting->get<std::string>(), locale);
            EXPECT_EQ(found(), right);
        }
        EXPECT_EQ(heard, 2);
    }
    setting->setValue(before);
}

// As many results as take every way through a sort, in products of ten.
class ComparatorTest : public LibraryTest {
  protected:
    void addResults(int count) {
        for (int number = 0; number < count; number += 10) {
            ProductBuilder product(fl::i18n::toUtf16("p" + std::to_string(100 + number)));
            for (int page = number; page < std::min(number + 10, count); ++page)
                product.entity(u"f", RefEntityType::Function,
                               fl::i18n::toUtf16(std::to_string(1000 + page) + ".html"));
            add(product);
        }
    }

    static ReferenceRequest orderedBy(api::RefRequestComparator comparator) {
        ReferenceRequest request(u"f");
        request.setRefRequestComparator(std::move(comparator));
        return request;
    }
};

TEST_F(ComparatorTest, WhateverItThrowsArrivesAndTheNextRequestIsRight) {
    addResults(25);
    const auto right = retrieve(ReferenceRequest(u"f"));
    ASSERT_EQ(right.size(), 25U);
    for (const Kind& kind : kinds)
        for (int call = 1;; ++call) {
            SCOPED_TRACE(std::string(kind.name) + " in call " + std::to_string(call));
            int left = call;
            const ReferenceDataRetriever retriever(
                orderedBy([&](const ReferenceData&, const ReferenceData&) -> bool {
                    if (left > 0 && --left == 0)
                        kind.raise();
                    return false;
                }));
            const bool arrived =
                kind.arrives([&] { static_cast<void>(retriever.getReferenceData()); });
            const bool reached = left == 0;
            left = 0;
            EXPECT_EQ(arrived, reached);
            EXPECT_EQ(dump(retriever.getReferenceData()), right);
            EXPECT_EQ(retrieve(ReferenceRequest(u"f")), right);
            if (!reached)
                break;
        }
}

TEST_F(ComparatorTest, OneThatIsNoOrderStillGetsEachResultOnce) {
    addResults(150);
    const auto right = retrieve(ReferenceRequest(u"f"));
    ASSERT_EQ(right.size(), 150U);
    std::mt19937 random(7);
    long calls = 0;
    const auto numberOf = [](const ReferenceData& data) {
        return std::stoi(fl::i18n::toUtf8(data.getRefItem().getHref()));
    };
    const struct {
        const char* name;
        api::RefRequestComparator comparator;
    } rows[] = {
        {"always true", [](const auto&, const auto&) { return true; }},
        {"random", [&](const auto&, const auto&) { return random() % 2 == 0; }},
        {"mostly true", [&](const auto&, const auto&) { return random() % 8 != 0; }},
        {"mostly false", [&](const auto&, const auto&) { return random() % 8 == 0; }},
        {"turn by turn", [&](const auto&, const auto&) { return ++calls % 2 == 0; }},
        {"true later on", [&](const auto&, const auto&) { return ++calls % 40 > 20; }},
        {"less or equal",
         [&](const auto& a, const auto& b) { return numberOf(a) % 5 <= numberOf(b) % 5; }},
        {"round a circle",
         [&](const auto& a, const auto& b) { return (numberOf(a) - numberOf(b) + 3000) % 3 == 1; }},
    };
    for (const auto& row : rows)
        for (int round = 0; round < 200; ++round)
            ASSERT_THAT(retrieve(orderedBy(row.comparator)), UnorderedElementsAreArray(right))
                << row.name << ", round " << round;
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
