#include <atomic>
#include <chrono>
#include <string>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "reference/api/ReferenceDataRetriever.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "support/LibraryTest.hpp"
#include "support/Print.hpp"
#include "support/Threads.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using api::ReferenceRequest;
using cache_manager::ReferenceCacheManager;
using property::RefEntityType;

constexpr int rounds = 200;

class ConcurrencyTest : public LibraryTest {
  protected:
    ConcurrencyTest() {
        for (const char16_t* name : {u"a", u"b", u"c"})
            add(ProductBuilder(name)
                    .entity(u"f", RefEntityType::Function, u"f.html")
                    .classWith(u"geo.Shape", u"geo", u"shape.html", {{u"Size", {u"Width"}}}));
        source().shareFile(u"a", u"shared");
        source().shareFile(u"b", u"shared");
    }
};

// While a cache is being cleared a search may find it empty; it may never find a part of a product.
TEST_F(ConcurrencyTest, ReadersPopulatorsAndClearersDoNotDisturbEachOther) {
    std::atomic<int> wrong{0};
    const auto search = [&wrong](const std::u16string& name, const std::string& expected) {
        const auto results = api::ReferenceDataRetriever(ReferenceRequest(name)).getReferenceData();
        for (const auto& result : results)
            if (dump(result).substr(1) != expected)
                ++wrong;
    };
    runTogether(
        {
            [&] { search(u"f", ":f[function]@f.html"); },
            [&] { search(u"geo.Shape", ":geo.Shape[class]@shape.html"); },
            [&] { search(u"geo.Shape.Width", ":geo.Shape.Width[property]@shape.html#Width"); },
            [] { ReferenceCacheManager::PopulateLookupCaches(); },
            [] { ReferenceCacheManager::PopulateUninstalledLookupCache(); },
            [] { ReferenceCacheManager::PopulateResourceCache(); },
            [] { ReferenceCacheManager::ClearLookupCaches(); },
            [] { ReferenceCacheManager::ClearAllCaches(); },
            [] {
                static_cast<void>(ReferenceCacheManager::GetLookupCache()->size());
                static_cast<void>(ReferenceCacheManager::GetUninstalledLookupCache()->size());
                static_cast<void>(ReferenceCacheManager::GetResourceCache());
            },
        },
        rounds);
    EXPECT_EQ(wrong, 0);

    ReferenceCacheManager::ClearAllCaches();
    EXPECT_THAT(retrieve(ReferenceRequest(u"f")),
                ::testing::ElementsAre("a:f[function]@f.html", "b:f[function]@f.html",
                                       "c:f[function]@f.html"));
}

TEST_F(ConcurrencyTest, OneFileIsParsedOnceForAllThatAskAtOnce) {
    const auto fetch = [] {
        static_cast<void>(ReferenceCacheManager::GetResourceCacheForProduct(u"shared", u"a"));
        static_cast<void>(ReferenceCacheManager::GetResourceCacheForProduct(u"shared", u"b"));
    };
    runTogether({fetch, fetch, fetch, fetch}, rounds);
    EXPECT_EQ(source().resourceCalls(), 1);
}

TEST_F(ConcurrencyTest, TwoThreadsNeverParseAtOnce) {
    std::atomic<int> parsing{0};
    std::atomic<int> overlapping{0};
    source().onResourceFile([&](const std::u16string&) {
        if (++parsing > 1)
            ++overlapping;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        --parsing;
    });
    const auto fetch = [](const char16_t* product) {
        return [product] {
            // So that there is something to parse, however the threads take turns.
            ReferenceCacheManager::ClearResourceCache();
            static_cast<void>(ReferenceCacheManager::GetResourceCacheForProduct(product, product));
        };
    };
    runTogether({fetch(u"a"), fetch(u"b"), fetch(u"c"),
                 [] { static_cast<void>(retrieve(ReferenceRequest(u"f"))); },
                 [] { ReferenceCacheManager::PopulateResourceCache(); }},
                40);
    EXPECT_GT(source().resourceCalls(), 3);
    EXPECT_EQ(overlapping, 0);
}

TEST_F(ConcurrencyTest, SearchesWithoutClearingAllAnswerAlike) {
    std::atomic<int> wrong{0};
    const auto search = [&wrong] {
        if (retrieve(ReferenceRequest(u"f")).size() != 3)
            ++wrong;
    };
    runTogether({search, search, search, search}, rounds);
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(source().lookupCalls(), 1);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
