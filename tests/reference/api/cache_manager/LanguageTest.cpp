// Documentation on disk in two languages, and what a request answers when the language is changed.
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "docset/publish.hpp"
#include "fl/i18n/utf.hpp"
#include "foundation/msg_svc/eventmgr/ScopedConnection.hpp"
#include "reference/api/EntityPurposeDataRetriever.hpp"
#include "reference/api/ReferenceDataRetriever.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "reference/api/cache_manager/ReferenceDataChangeEvent.hpp"
#include "settings/in_veltra/settingsRoot.hpp"
#include "support/Capture.hpp"
#include "support/LibraryTest.hpp"
#include "support/TempFolder.hpp"
#include "vvm/Factory.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using api::ReferenceRequest;
using cache_manager::ReferenceCacheManager;
using cache_manager::ReferenceDataChangeEvent;
using foundation::msg_svc::eventmgr::ScopedConnection;
using property::RefEntityType;
using testing::ElementsAre;
using testing::Pair;

// The library over documentation on disk, started up and in English.
class LanguageTest : public testing::Test {
  protected:
    LanguageTest() {
        setSetting(settings::in_veltra::docRootSetting, std::string(VELTRA_SHIPPED_SET));
        setLanguage("en_US");
        ReferenceCacheManager::ClearAllCaches();
        ReferenceCacheManager::PerformStartupOperations();
    }
    ~LanguageTest() override {
        vvm::Factory::setCurrentLocalVVM(nullptr);
        setSetting(settings::in_veltra::supportPackageRootsSetting, std::vector<std::string>());
        setSetting(settings::in_veltra::docRootSetting, std::string());
        setLanguage("");
        ReferenceCacheManager::ClearAllCaches();
    }

    static void setLanguage(const std::string& locale) {
        setSetting(settings::in_veltra::docLanguageSetting, locale);
    }

    // The purposes of what a request finds, by product. UTF-8.
    template <typename Retriever = api::ReferenceDataRetriever>
    static std::map<std::string, std::string> purposes(const ReferenceRequest& request) {
        std::map<std::string, std::string> texts;
        for (const auto& result : Retriever(request).getReferenceData())
            texts.emplace(fl::i18n::toUtf8(result.getHeaderInfo().getShortName()),
                          fl::i18n::toUtf8(result.getRefItem().getPurpose()));
        return texts;
    }

  private:
    std::shared_ptr<vvm::VVM> m_machine = vvm::Factory::makeLocalVVM();
};

TEST_F(LanguageTest, TheNextRequestAnswersInTheNewLanguage) {
    const ReferenceRequest request(u"filter");
    EXPECT_THAT(purposes(request),
                ElementsAre(Pair("brisk", "Filter a signal with a rational transfer function"),
                            Pair("lumora", "Filter an image with a mask"),
                            Pair("qix", "Keep the rows of a table that meet a condition")));
    setLanguage("ja_JP");
    EXPECT_THAT(purposes(request),
                ElementsAre(Pair("brisk", "有理伝達関数による信号のフィルター処理"),
                            Pair("lumora", "マスクによる画像のフィルター処理"),
                            Pair("qix", "条件を満たす表の行だけを残す")));
    setLanguage("en_US");
    EXPECT_THAT(purposes(request)["lumora"], "Filter an image with a mask");
}

TEST_F(LanguageTest, SearchesByPurposeInTheNewLanguage) {
    const auto search = [](const char16_t* text) {
        return purposes<api::EntityPurposeDataRetriever>(ReferenceRequest(text));
    };
    EXPECT_EQ(search(u"フィルター処理").size(), 0U);
    setLanguage("ja_JP");
    EXPECT_EQ(search(u"フィルター処理").size(), 2U);
    EXPECT_EQ(search(u"rational transfer").size(), 0U);
}

TEST_F(LanguageTest, AProductWithoutTheNewLanguageAnswersInTheOldOne) {
    const ReferenceRequest request(u"differentiate");
    const auto english = purposes(request);
    EXPECT_THAT(english, ElementsAre(Pair("yarl", "Derivative of an expression")));
    setLanguage("ja_JP");
    EXPECT_EQ(purposes(request), english);
}

TEST_F(LanguageTest, EverySubscriberHearsOfTheChangeOnceAndIsAnsweredInTheNewLanguage) {
    constexpr int count = 5;
    std::vector<std::string> heard[count];
    ScopedConnection connections[count];
    for (int number = 0; number < count; ++number)
        ReferenceCacheManager::SubscribeToDataChangeEvent(
            connections[number], [&, number](const ReferenceDataChangeEvent&) {
                heard[number].push_back(purposes(ReferenceRequest(u"filter"))["qix"]);
            });
    setLanguage("ja_JP");
    for (const auto& texts : heard)
        EXPECT_THAT(texts, ElementsAre("条件を満たす表の行だけを残す"));
}

TEST_F(LanguageTest, ASecondRootsProductsAreFoundOnceTheCachesAreCleared) {
    const TempFolder root;
    docset::publishProduct(
        root.path(), "en_US",
        ProductBuilder(u"addon")
            .entity(u"addon.fit", RefEntityType::Function, u"fit.html", u"Fit it")
            .build());
    const ReferenceRequest request(u"addon.fit");
    EXPECT_EQ(purposes(request).size(), 0U);
    setSetting(settings::in_veltra::supportPackageRootsSetting,
               std::vector<std::string>{root.path().string()});
    EXPECT_EQ(purposes(request).size(), 0U) << "what is cached stays until it is cleared";
    ReferenceCacheManager::ClearAllCaches();
    EXPECT_THAT(purposes(request), ElementsAre(Pair("addon", "Fit it")));

    // What the root lists is remembered until the caches are cleared again.
    docset::publishProduct(
        root.path(), "en_US",
        ProductBuilder(u"second").entity(u"g", RefEntityType::Function, u"g.html", u"G").build());
    ReferenceCacheManager::ClearLookupCaches();
    EXPECT_EQ(purposes(ReferenceRequest(u"g")).size(), 0U);
    ReferenceCacheManager::ClearAllCaches();
    EXPECT_EQ(purposes(ReferenceRequest(u"g")).size(), 1U);

    setSetting(settings::in_veltra::supportPackageRootsSetting, std::vector<std::string>());
    ReferenceCacheManager::ClearAllCaches();
    EXPECT_EQ(purposes(request).size(), 0U);
}

// While a change of language is on its way, the caches may hold one thing in the old language and
// the other in the new one. A context of its own changes the language here, in which no listener
// clears the caches.
class MixedCachesTest : public LanguageTest {
  protected:
    static void speakJapaneseUnheard() {
        setSetting(settings::in_veltra::docRootSetting, std::string(VELTRA_SHIPPED_SET));
        setSetting(settings::in_veltra::docLanguageSetting, std::string("ja_JP"));
    }

    static std::string cachedFileOf(const std::u16string& product) {
        return fl::i18n::toUtf8(ReferenceCacheManager::GetResourceCache()
                                    ->at(product)
                                    ->getHeaderInfo()
                                    .getReferenceFileName());
    }
};

TEST_F(MixedCachesTest, NewLookupsAreNotAnsweredWithOldPages) {
    const ReferenceRequest request(u"filter");
    static_cast<void>(purposes(request));
    ASSERT_EQ(cachedFileOf(u"lumora"), "en_US/lumora.reference.json");

    const ScopedContext context;
    speakJapaneseUnheard();
    ReferenceCacheManager::ClearLookupCaches();
    EXPECT_THAT(purposes(request),
                ElementsAre(Pair("brisk", "有理伝達関数による信号のフィルター処理"),
                            Pair("lumora", "マスクによる画像のフィルター処理"),
                            Pair("qix", "条件を満たす表の行だけを残す")));
    EXPECT_EQ(cachedFileOf(u"lumora"), "en_US/lumora.reference.json")
        << "what the cache has handed out is never replaced";
}

TEST_F(MixedCachesTest, OldLookupsAreNotAnsweredWithNewPages) {
    const auto byPurpose = [] {
        return purposes<api::EntityPurposeDataRetriever>(ReferenceRequest(u"Filter an image"));
    };
    ReferenceCacheManager::ClearResourceCache();
    const ScopedContext context;
    speakJapaneseUnheard();
    static_cast<void>(ReferenceCacheManager::GetResourceCacheForProduct(u"lumora", u"lumora"));
    ASSERT_EQ(cachedFileOf(u"lumora"), "ja_JP/lumora.reference.json");

    EXPECT_THAT(byPurpose(), ElementsAre(Pair("lumora", "Filter an image with a mask")));
    EXPECT_EQ(cachedFileOf(u"lumora"), "ja_JP/lumora.reference.json")
        << "what the cache has handed out is never replaced";
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
