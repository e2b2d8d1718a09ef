#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "docparser/DocParserException.hpp"
#include "docparser/DocResourceParser.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "support/LibraryTest.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using api::ReferenceRequest;
using cache_manager::ReferenceCacheManager;
using property::RefEntityType;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::u16string> keysOf(const auto& map) {
    std::vector<std::u16string> keys;
    for (const auto& [key, value] : map)
        keys.push_back(key);
    return keys;
}

class ReferenceCachesTest : public LibraryTest {
  protected:
    ReferenceCachesTest() {
        for (const char16_t* name : {u"alpha", u"beta", u"gamma"})
            add(ProductBuilder(name).entity(u"f", RefEntityType::Function, u"f.html"));
        add(ProductBuilder(u"absent").entity(u"g", RefEntityType::Function, u"g.html"), false);
    }
};

TEST_F(ReferenceCachesTest, AreEmptyNotNullBeforeAnyPopulation) {
    ASSERT_NE(ReferenceCacheManager::GetLookupCache(), nullptr);
    ASSERT_NE(ReferenceCacheManager::GetUninstalledLookupCache(), nullptr);
    ASSERT_NE(ReferenceCacheManager::GetResourceCache(), nullptr);
    EXPECT_THAT(*ReferenceCacheManager::GetLookupCache(), IsEmpty());
    EXPECT_THAT(*ReferenceCacheManager::GetUninstalledLookupCache(), IsEmpty());
    EXPECT_THAT(*ReferenceCacheManager::GetResourceCache(), IsEmpty());
    EXPECT_EQ(source().lookupCalls(), 0);
}

TEST_F(ReferenceCachesTest, EachPopulationFillsBothLookupCachesWithOneReading) {
    const auto clear = &ReferenceCacheManager::ClearLookupCaches;
    int readings = 0;
    for (const auto populate : {&ReferenceCacheManager::PopulateLookupCache,
                                &ReferenceCacheManager::PopulateUninstalledLookupCache,
                                &ReferenceCacheManager::PopulateLookupCaches}) {
        clear();
        populate();
        EXPECT_THAT(keysOf(*ReferenceCacheManager::GetLookupCache()),
                    ElementsAre(u"alpha", u"beta", u"gamma"));
        EXPECT_THAT(keysOf(*ReferenceCacheManager::GetUninstalledLookupCache()),
                    ElementsAre(u"absent"));
        EXPECT_EQ(source().lookupCalls(), ++readings);
    }
}

TEST_F(ReferenceCachesTest, PopulatingTwiceReadsOnce) {
    ReferenceCacheManager::PopulateLookupCache();
    const auto first = ReferenceCacheManager::GetLookupCache();
    ReferenceCacheManager::PopulateLookupCache();
    ReferenceCacheManager::PopulateUninstalledLookupCache();
    EXPECT_EQ(ReferenceCacheManager::GetLookupCache(), first);
    EXPECT_EQ(source().lookupCalls(), 1);
}

TEST_F(ReferenceCachesTest, LookupCacheClearedAloneStaysUnsetUntilItsTwinIsClearedToo) {
    ReferenceCacheManager::PopulateLookupCaches();
    ReferenceCacheManager::ClearLookupCache();
    ReferenceCacheManager::PopulateLookupCache();
    EXPECT_THAT(*ReferenceCacheManager::GetLookupCache(), IsEmpty());
    EXPECT_THAT(keysOf(*ReferenceCacheManager::GetUninstalledLookupCache()),
                ElementsAre(u"absent"));
    EXPECT_EQ(source().lookupCalls(), 1);

    ReferenceCacheManager::ClearLookupCaches();
    ReferenceCacheManager::PopulateLookupCache();
    EXPECT_THAT(keysOf(*ReferenceCacheManager::GetLookupCache()),
                ElementsAre(u"alpha", u"beta", u"gamma"));
    EXPECT_THAT(keysOf(*ReferenceCacheManager::GetUninstalledLookupCache()),
                ElementsAre(u"absent"));
}

TEST_F(ReferenceCachesTest, UninstalledCacheClearedAloneStaysUnsetToo) {
    ReferenceCacheManager::PopulateLookupCaches();
    ReferenceCacheManager::ClearUninstalledLookupCache();
    ReferenceCacheManager::PopulateUninstalledLookupCache();
    EXPECT_THAT(*ReferenceCacheManager::GetUninstalledLookupCache(), IsEmpty());
    EXPECT_EQ(source().lookupCalls(), 1);
}

TEST_F(ReferenceCachesTest, FailedLoadingPropagatesAndLeavesBothUnset) {
    source().onLookupFiles([] { throw docparser::DocParserException("broken manifest"); });
    EXPECT_THROW(ReferenceCacheManager::PopulateLookupCaches(), docparser::DocParserException);
    EXPECT_THAT(*ReferenceCacheManager::GetLookupCache(), IsEmpty());
    source().onLookupFiles(nullptr);
    ReferenceCacheManager::PopulateLookupCaches();
    EXPECT_EQ(ReferenceCacheManager::GetLookupCache()->size(), 3u);
}

TEST_F(ReferenceCachesTest, ReaderKeepsWhatItGotWhenTheCacheIsCleared) {
    ReferenceCacheManager::PopulateLookupCaches();
    const auto held = ReferenceCacheManager::GetLookupCache();
    const auto resource = ReferenceCacheManager::GetResourceCacheForProduct(u"alpha", u"alpha");
    ReferenceCacheManager::ClearAllCaches();
    EXPECT_EQ(held->size(), 3u);
    EXPECT_TRUE(resource->getItems().contains(u"f.html"));
}

TEST_F(ReferenceCachesTest, ResourceIsParsedOnceWhateverFileIsNamedNext) {
    const auto first = ReferenceCacheManager::GetResourceCacheForProduct(u"alpha.ref", u"alpha");
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(ReferenceCacheManager::GetResourceCacheForProduct(u"no such file", u"alpha"), first);
    EXPECT_EQ(source().resourceCalls(), 1);
    EXPECT_EQ(first->getHeaderInfo().getShortName(), u"alpha");
}

TEST_F(ReferenceCachesTest, ProductAbsentFromTheFileGivesNullAndKeepsTheOthers) {
    source().shareFile(u"alpha", u"shared");
    source().shareFile(u"beta", u"shared");
    EXPECT_EQ(ReferenceCacheManager::GetResourceCacheForProduct(u"shared", u"nobody"), nullptr);
    EXPECT_THAT(keysOf(*ReferenceCacheManager::GetResourceCache()), ElementsAre(u"alpha", u"beta"));
    EXPECT_NE(ReferenceCacheManager::GetResourceCacheForProduct(u"shared", u"beta"), nullptr);
    EXPECT_EQ(source().resourceCalls(), 1);
}

TEST_F(ReferenceCachesTest, FirstCachedEntryOfAKeyWins) {
    const auto alpha = ReferenceCacheManager::GetResourceCacheForProduct(u"alpha.ref", u"alpha");
    source().shareFile(u"alpha", u"shared");
    source().shareFile(u"beta", u"shared");
    static_cast<void>(ReferenceCacheManager::GetResourceCacheForProduct(u"shared", u"beta"));
    EXPECT_EQ(ReferenceCacheManager::GetResourceCache()->at(u"alpha"), alpha);
    EXPECT_EQ(alpha->getHeaderInfo().getReferenceFileName(), u"alpha.ref");
}

TEST_F(ReferenceCachesTest, MapHandedOutEarlierSeesLaterEntries) {
    const auto map = ReferenceCacheManager::GetResourceCache();
    static_cast<void>(ReferenceCacheManager::GetResourceCacheForProduct(u"alpha", u"alpha"));
    EXPECT_TRUE(map->contains(u"alpha"));
    EXPECT_EQ(ReferenceCacheManager::GetResourceCache(), map);
}

TEST_F(ReferenceCachesTest, ClearedResourceCacheIsEmptyNotNull) {
    static_cast<void>(ReferenceCacheManager::GetResourceCacheForProduct(u"alpha", u"alpha"));
    const auto old = ReferenceCacheManager::GetResourceCache();
    ReferenceCacheManager::ClearResourceCache();
    ASSERT_NE(ReferenceCacheManager::GetResourceCache(), nullptr);
    EXPECT_THAT(*ReferenceCacheManager::GetResourceCache(), IsEmpty());
    EXPECT_THAT(keysOf(*old), ElementsAre(u"alpha"));
}

TEST_F(ReferenceCachesTest, ClearedPagesAreReadAgainForTheNextRequest) {
    const ReferenceRequest request(u"f", {}, {u"alpha"});
    const auto answer = retrieve(request);
    EXPECT_EQ(retrieve(request), answer);
    EXPECT_EQ(source().resourceCalls(), 1);
    ReferenceCacheManager::ClearResourceCache();
    EXPECT_EQ(retrieve(request), answer);
    EXPECT_EQ(source().resourceCalls(), 2);
    EXPECT_EQ(source().lookupCalls(), 1);
}

TEST_F(ReferenceCachesTest, FailedParsingPropagatesAndLeavesTheCacheAsItWas) {
    static_cast<void>(ReferenceCacheManager::GetResourceCacheForProduct(u"alpha", u"alpha"));
    source().onResourceFile([](const std::u16string&) { throw std::logic_error("out of order"); });
    EXPECT_THROW(
        static_cast<void>(ReferenceCacheManager::GetResourceCacheForProduct(u"beta", u"beta")),
        std::logic_error);
    EXPECT_THAT(keysOf(*ReferenceCacheManager::GetResourceCache()), ElementsAre(u"alpha"));
    source().onResourceFile(nullptr);
    EXPECT_NE(ReferenceCacheManager::GetResourceCacheForProduct(u"beta", u"beta"), nullptr);
}

TEST_F(ReferenceCachesTest, PopulatingResourcesParsesInstalledProductsAndPassesOverBrokenOnes) {
    std::vector<std::u16string> asked;
    source().onResourceFile([&asked](const std::u16string& file) {
        asked.push_back(file);
        if (file == u"beta")
            throw docparser::DocParserException("broken");
    });
    ReferenceCacheManager::PopulateResourceCache();
    EXPECT_THAT(asked, ElementsAre(u"alpha", u"beta", u"gamma"));
    EXPECT_THAT(keysOf(*ReferenceCacheManager::GetResourceCache()),
                ElementsAre(u"alpha", u"gamma"));
    EXPECT_EQ(source().lastLocale(), u"_locale_unused");
}

// Lists "beta" alone as a product, and "gamma" among those of support packages.
class ListingSource : public MemorySource {
  public:
    struct Call {
        std::u16string docRoot;
        std::vector<std::u16string> locales;
        std::u16string locale;
        friend bool operator==(const Call&, const Call&) = default;
    };

    docparser::ReferenceRoots getReferenceRoots() override {
        return {.docRoot = u"the root", .supportPackageRoots = {u"another root"}};
    }
    std::vector<std::u16string> getSupportedDocLocales() override { return {u"ja_JP", u"en_US"}; }
    docparser::ProductLists getAllProducts(const std::u16string& docRoot,
                                           const std::vector<std::u16string>& locales,
                                           const std::u16string& locale) override {
        m_calls.push_back({docRoot, locales, locale});
        return {.products = {{u"beta", docRoot}}, .supportPackageProducts = {{u"gamma", docRoot}}};
    }

    [[nodiscard]] const std::vector<Call>& calls() const noexcept { return m_calls; }

  private:
    std::vector<Call> m_calls;
};

TEST_F(ReferenceCachesTest, PopulatingResourcesAsksForTheParsersRootAndLocalesAndTakesOneList) {
    const auto listing = std::make_shared<ListingSource>();
    for (const char16_t* name : {u"alpha", u"beta", u"gamma"})
        listing->add(ProductBuilder(name).build());
    docparser::DocResourceParser::setSource(listing);
    ReferenceCacheManager::PopulateResourceCache();
    EXPECT_THAT(listing->calls(), ElementsAre(ListingSource::Call{
                                      u"the root", {u"ja_JP", u"en_US"}, u"_locale_unused"}));
    EXPECT_THAT(keysOf(*ReferenceCacheManager::GetResourceCache()), ElementsAre(u"beta"));
}

TEST_F(ReferenceCachesTest, PopulatingResourcesStopsAtAnyOtherException) {
    source().onResourceFile([](const std::u16string& file) {
        if (file == u"beta")
            throw std::runtime_error("no disk");
    });
    EXPECT_THROW(ReferenceCacheManager::PopulateResourceCache(), std::runtime_error);
    EXPECT_THAT(keysOf(*ReferenceCacheManager::GetResourceCache()), ElementsAre(u"alpha"));
}

TEST_F(ReferenceCachesTest, PopulatingAllLoadsEverythingAndCountsAsStartUp) {
    ReferenceCacheManager::PopulateAllCaches();
    EXPECT_EQ(ReferenceCacheManager::GetLookupCache()->size(), 3u);
    EXPECT_EQ(ReferenceCacheManager::GetUninstalledLookupCache()->size(), 1u);
    EXPECT_EQ(ReferenceCacheManager::GetResourceCache()->size(), 3u);
    EXPECT_EQ(source().lookupCalls(), 1);
    EXPECT_TRUE(ReferenceCacheManager::IsStartupDone());
}

TEST_F(ReferenceCachesTest, ClearingAllEmptiesAllAndTheParsersSupportPackageCaches) {
    ReferenceCacheManager::PopulateAllCaches();
    ReferenceCacheManager::ClearAllCaches();
    EXPECT_THAT(*ReferenceCacheManager::GetLookupCache(), IsEmpty());
    EXPECT_THAT(*ReferenceCacheManager::GetUninstalledLookupCache(), IsEmpty());
    EXPECT_THAT(*ReferenceCacheManager::GetResourceCache(), IsEmpty());
    EXPECT_EQ(source().clearCalls(), 1);
}

TEST_F(ReferenceCachesTest, ClassLikeTypesAreClassEnumerationAndInterface) {
    for (std::uint32_t number = 0; number < 40; ++number)
        EXPECT_EQ(ReferenceCacheManager::IsClassLikeType(static_cast<RefEntityType::Value>(number)),
                  number == 1 || number == 6 || number == 7)
            << number;
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
