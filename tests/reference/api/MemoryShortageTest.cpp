// What requests do when memory runs out, at each allocation that they make in turn.
#include <functional>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "foundation/core/context/ContextRegistry.hpp"
#include "foundation/msg_svc/eventmgr/ScopedConnection.hpp"
#include "reference/api/AllTextDataRetriever.hpp"
#include "reference/api/ClassEntityDataRetriever.hpp"
#include "reference/api/ReferenceDataRetriever.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "reference/api/cache_manager/ReferenceDataChangeEvent.hpp"
#include "reference/ask/ask.hpp"
#include "reference/ask/complete.hpp"
#include "settings/core/Settings.hpp"
#include "settings/in_veltra/settingsRoot.hpp"
#include "support/Items.hpp"
#include "support/LibraryTest.hpp"
#include "support/LiveAllocations.hpp"
#include "support/Print.hpp"
#include "vvm/Factory.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using api::ReferenceData;
using api::ReferenceRequest;
using cache_manager::ReferenceCacheManager;
using property::RefEntityType;

using Results = std::vector<ReferenceData>;

class MemoryShortageTest : public LibraryTest {
  protected:
    MemoryShortageTest() {
        for (const char16_t* name : {u"first", u"second"}) {
            ProductBuilder product(name);
            product.record(u"package.sortRows", RefEntityType::Function, u"sortRows.html",
                           u"Sort the rows of a table");
            product.item(makeFullItem(u"sortRows.html"));
            product.entity(u"package.merge", RefEntityType::Function, u"merge.html",
                           u"Merge two tables");
            product.classWith(u"package.Table", u"package", u"Table.html",
                              {{u"Size", {u"Width", u"Height"}}});
            product.alias(u"pk", u"package", 3);
            add(product);
        }
    }

    static void clear() {
        ReferenceCacheManager::ClearLookupCaches();
        ReferenceCacheManager::ClearResourceCache();
    }

    // What is on the heap once the caches are empty.
    static LiveAllocations heldWithoutCaches() {
        clear();
        return LiveAllocations::now();
    }

    // Does `work` over and over, so that each of its allocations fails once, alone or with all that
    // follow. Each time std::bad_alloc must arrive, or the right answer; nothing may leak, and the
    // next request must be right. `prepare` comes before, while there is memory.
    static void expectEachFailureToBeSurvived(const std::string& name,
                                              const std::function<void()>& prepare,
                                              const std::function<Results()>& work) {
        prepare();
        const std::vector<std::string> right = dump(work());
        ASSERT_FALSE(right.empty()) << name;
        for (const bool forGood : {false, true}) {
            long failures = 0;
            for (long number = 1;; ++number) {
                SCOPED_TRACE(name + ": allocation " + std::to_string(number) +
                             (forGood ? " and all after it" : ""));
                const bool reached = survives(number, forGood, prepare, work, right);
                if (::testing::Test::HasFailure() || !reached)
                    break;
                ++failures;
            }
            EXPECT_GT(failures, 0) << name << ": nothing was allocated";
            RecordProperty(name + (forGood ? " for good" : ""), std::to_string(failures));
        }
    }

  private:
    // Whether the work came to that allocation.
    static bool survives(long number, bool forGood, const std::function<void()>& prepare,
                         const std::function<Results()>& work,
                         const std::vector<std::string>& right) {
        const LiveAllocations before = heldWithoutCaches();
        const bool reached = failOnce(number, forGood, prepare, work, right);
        if (heldWithoutCaches() != before) {
            // What is made once for the life of the process is not made twice.
            const LiveAllocations again = heldWithoutCaches();
            static_cast<void>(failOnce(number, forGood, prepare, work, right));
            EXPECT_EQ(heldWithoutCaches().blocks, again.blocks) << "leaked";
            EXPECT_EQ(LiveAllocations::now().bytes, again.bytes) << "leaked";
        }
        return reached;
    }

    static bool failOnce(long number, bool forGood, const std::function<void()>& prepare,
                         const std::function<Results()>& work,
                         const std::vector<std::string>& right) {
        prepare();
        Results answer;
        bool isAnswered = true;
        bool reached = false;
        try {
            const FailingAllocation failing(number, forGood);
            try {
                answer = work();
            } catch (...) {
                reached = FailingAllocation::hasFailed();
                throw;
            }
            reached = FailingAllocation::hasFailed();
        } catch (const std::bad_alloc&) {
            isAnswered = false;
        } catch (const std::exception& error) {
            isAnswered = false;
            ADD_FAILURE() << "not std::bad_alloc: " << error.what();
        }
        if (isAnswered) {
            EXPECT_EQ(dump(answer), right);
        }
        EXPECT_EQ(dump(work()), right) << "the next request";
        return reached;
    }
};

Results found() {
    return api::ReferenceDataRetriever(ReferenceRequest(u"package.sortRows")).getReferenceData();
}

Results asked(std::u16string_view question) {
    Results results;
    for (auto& hit : ask::ask(question).hits)
        results.push_back(std::move(hit.data));
    return results;
}

TEST_F(MemoryShortageTest, AFindSurvivesIt) {
    expectEachFailureToBeSurvived("first find", &clear, &found);
    expectEachFailureToBeSurvived(
        "next find", [] { static_cast<void>(found()); }, &found);
}

TEST_F(MemoryShortageTest, ASearchOfTextsAndOneOfClassesSurviveIt) {
    expectEachFailureToBeSurvived("texts", &clear, [] {
        return api::AllTextDataRetriever(ReferenceRequest(u"tables")).getReferenceData();
    });
    expectEachFailureToBeSurvived("classes", &clear, [] {
        return api::ClassEntityDataRetriever(ReferenceRequest(u"package.Table")).getReferenceData();
    });
}

TEST_F(MemoryShortageTest, AQuestionSurvivesIt) {
    for (const char16_t* const question : {u"sort the rows", u"sortRowz", u"pk.merge(x)"})
        expectEachFailureToBeSurvived("question", &clear, [&] { return asked(question); });
}

TEST_F(MemoryShortageTest, ACompletionSurvivesIt) {
    expectEachFailureToBeSurvived("completion", &clear, [] {
        // By what they are for, the names are found again.
        Results results;
        for (const auto& completion : ask::complete(u"pa", {}))
            for (auto& result :
                 api::ReferenceDataRetriever(ReferenceRequest(completion.text + u"sortRows"))
                     .getReferenceData())
                results.push_back(std::move(result));
        return results;
    });
}

TEST_F(MemoryShortageTest, StartUpSurvivesIt) {
    ReferenceCacheManager::PerformStartupOperations();
    expectEachFailureToBeSurvived("start-up", &clear, [] {
        ReferenceCacheManager::PerformStartupOperations();
        return found();
    });
}

// Whatever becomes of the change, the setting and the caches agree afterwards: a new value has
// cleared them, and the subscribers have heard of it.
TEST_F(MemoryShortageTest, AChangeOfTheLanguageSurvivesIt) {
    const auto machine = vvm::Factory::makeLocalVVM();
    ReferenceCacheManager::PerformStartupOperations();
    const auto setting = settings::in_veltra::getSettingsRoot(
                             foundation::core::context::ContextRegistry::getCurrentContextId())
                             ->getSettingsByFullName(settings::in_veltra::docLanguageSetting);
    const auto before = setting->get<std::string>();
    bool hasHeard = false;
    foundation::msg_svc::eventmgr::ScopedConnection connection;
    ReferenceCacheManager::SubscribeToDataChangeEvent(
        connection, [&](const cache_manager::ReferenceDataChangeEvent&) { hasHeard = true; });
    const std::vector<std::string> right = dump(found());
    const std::string languages[] = {"a language whose name is long", "one whose name is as long"};
    for (const bool forGood : {false, true})
        for (long number = 1;; ++number) {
            SCOPED_TRACE("allocation " + std::to_string(number) +
                         (forGood ? " and all after it" : ""));
            setting->setValue(languages[0]);
            ASSERT_EQ(dump(found()), right);
            bool reached = false;
            hasHeard = false;
            {
                settings::core::SettingsValue value(languages[1]);
                const FailingAllocation failing(number, forGood);
                try {
                    setting->setValue(std::move(value));
                } catch (const std::bad_alloc&) {
                    // Nothing has changed, or the listeners have heard of it; see below.
                }
                reached = FailingAllocation::hasFailed();
            }
            const bool isChanged = setting->get<std::string>() == languages[1];
            EXPECT_EQ(ReferenceCacheManager::GetLookupCache()->empty(), isChanged);
            EXPECT_EQ(hasHeard, isChanged);
            EXPECT_EQ(dump(found()), right);
            if (HasFailure() || !reached)
                break;
        }
    setting->setValue(before);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
