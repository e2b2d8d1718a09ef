// Everything at once: searches of every kind while the language flips, the caches are cleared and
// filled, clients come and go, and start-up runs.
#include <array>
#include <atomic>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "docset/publish.hpp"
#include "fl/i18n/utf.hpp"
#include "foundation/msg_svc/eventmgr/EventMgr.hpp"
#include "foundation/msg_svc/eventmgr/ScopedConnection.hpp"
#include "foundation/msg_svc/eventmgr/SubscriptionCountByType.hpp"
#include "reference/api/AllTextDataRetriever.hpp"
#include "reference/api/ClassEntityDataRetriever.hpp"
#include "reference/api/EntityPurposeDataRetriever.hpp"
#include "reference/api/PageNameDataRetriever.hpp"
#include "reference/api/ReferenceDataRetriever.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "reference/api/cache_manager/ReferenceDataChangeEvent.hpp"
#include "settings/in_veltra/settingsRoot.hpp"
#include "support/Capture.hpp"
#include "support/LibraryTest.hpp"
#include "support/LiveAllocations.hpp"
#include "support/Print.hpp"
#include "support/TempFolder.hpp"
#include "vvm/Factory.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using api::EntityCaseSensitivity;
using api::EntityPrecision;
using api::ReferenceData;
using api::ReferenceRequest;
using cache_manager::ReferenceCacheManager;
using cache_manager::ReferenceDataChangeEvent;
using foundation::msg_svc::eventmgr::ScopedConnection;
using foundation::msg_svc::eventmgr::SubscriptionCountByType;
using property::RefEntityType;

constexpr std::array<const char*, 2> languages = {"en_US", "ja_JP"};

// Two products that exist in both languages and one that exists in English alone; their names are
// among those that start-up parses.
const std::vector<std::u16string> translated = {u"veltra", u"brisk"};
constexpr const char16_t* untranslated = u"yarl";

// A product in one language. Half of its entities are called the same in both languages, as
// functions are, and half are not, as topics are; every purpose and some pages differ.
docset::ProductDocumentation makeProduct(const std::u16string& name, const std::u16string& locale) {
    ProductBuilder product(name);
    for (const char16_t* number : {u"1", u"2", u"3", u"4"}) {
        const std::u16string n(number);
        product
            .entity(name + u".fit" + n, RefEntityType::Function, u"fit" + n + u".html",
                    u"Fits " + locale)
            .entity(name + u".topic" + n + locale, RefEntityType::Function,
                    locale + u"/topic" + n + u".html", u"A topic of " + locale);
    }
    return product
        .classWith(name + u".Table", name, u"table.html",
                   {{u"Size " + locale, {u"Width", u"Height"}}, {u"Look", {locale + u"Colour"}}})
        .build();
}

// What one product contributes to an answer: every result with all that differs by language.
using ProductAnswer = std::vector<std::string>;
using Answer = std::map<std::u16string, ProductAnswer>;

Answer toAnswer(const std::vector<ReferenceData>& results) {
    Answer answer;
    for (const auto& result : results) {
        std::u16string text = u" " + result.getRefItem().getPurpose() + u" " +
                              result.getHeaderInfo().getReferenceFileName();
        for (const auto& group : result.getRefItem().getClassPropertyGroups())
            text += u" " + group.getTitle();
        answer[result.getHeaderInfo().getShortName()].push_back(dump(result) +
                                                                fl::i18n::toUtf8(text));
    }
    return answer;
}

struct Question {
    std::string name;
    std::function<Answer()> ask;
};

template <typename Retriever>
Question question(std::string name, std::u16string text, std::vector<std::u16string> products = {},
                  bool isLoose = false) {
    ReferenceRequest request(std::move(text), {}, std::move(products));
    if (isLoose) {
        request.setEntityCaseSensitivity(EntityCaseSensitivity::Insensitive);
        request.setEntityPrecision(EntityPrecision::Ignore_Package);
    }
    return {std::move(name), [request] { return toAnswer(Retriever(request).getReferenceData()); }};
}

const std::vector<Question>& questions() {
    static const std::vector<Question> all = {
        question<api::ReferenceDataRetriever>("exact name", u"veltra.fit2"),
        question<api::ReferenceDataRetriever>("any case, no package", u"FIT3", {}, true),
        question<api::ReferenceDataRetriever>("one product", u"Table", {u"brisk"}, true),
        question<api::ReferenceDataRetriever>("a property", u"Table.Width", {}, true),
        question<api::ClassEntityDataRetriever>("class", u"brisk.Table"),
        question<api::EntityPurposeDataRetriever>("purpose in one language", u"of ja_JP"),
        question<api::EntityPurposeDataRetriever>("purpose in both", u"Fits"),
        question<api::AllTextDataRetriever>("text", u"topic"),
        question<api::PageNameDataRetriever>("page in one language", u"en_US/topic1.html", {},
                                             true),
        question<api::PageNameDataRetriever>("page in both", u"table.html"),
    };
    return all;
}

class CacheStressConcurrencyTest : public testing::Test {
  protected:
    CacheStressConcurrencyTest() {
        for (const auto& name : translated)
            for (const char* language : languages)
                publish(name, language);
        publish(untranslated, "en_US");
        setSetting(settings::in_veltra::docRootSetting, m_root.path().string());
        vvm::Factory::makeLocalVVM();
        ReferenceCacheManager::PerformStartupOperations();
        for (std::size_t at = 0; at < languages.size(); ++at) {
            setSetting(settings::in_veltra::docLanguageSetting, std::string(languages[at]));
            for (const auto& one : questions())
                m_expected[at].push_back(one.ask());
        }
        ReferenceCacheManager::SubscribeToDataChangeEvent(
            m_connection, [this](const ReferenceDataChangeEvent&) { ++m_heard; });
    }
    ~CacheStressConcurrencyTest() override {
        m_connection.reset();
        vvm::Factory::setCurrentLocalVVM(nullptr);
        setSetting(settings::in_veltra::docRootSetting, std::string());
        setSetting(settings::in_veltra::docLanguageSetting, std::string());
        ReferenceCacheManager::ClearAllCaches();
    }

    void runEverything(int rounds) {
        const auto repeat = [rounds](const std::function<void(int)>& work) {
            return std::thread([rounds, work] {
                for (int round = 0; round < rounds; ++round)
                    work(round);
            });
        };
        std::vector<std::thread> threads;
        for (int thread = 0; thread < 2; ++thread)
            threads.push_back(repeat([this, thread](int round) { search(thread * 5 + round); }));
        threads.push_back(repeat([this](int round) { flipLanguage(round); }));
        threads.push_back(repeat([this](int round) { clearAndPopulate(round); }));
        threads.push_back(repeat([this](int) { comeAndGo(); }));
        threads.push_back(repeat([](int) { ReferenceCacheManager::PerformStartupOperations(); }));
        for (auto& thread : threads)
            thread.join();
    }

    // What is left when everybody has gone home.
    static void putAway() {
        setSetting(settings::in_veltra::docLanguageSetting, std::string(languages.front()));
        ReferenceCacheManager::ClearAllCaches();
    }

    [[nodiscard]] const std::vector<Answer>& expectedIn(std::size_t language) const {
        return m_expected.at(language);
    }
    [[nodiscard]] int wrongAnswers() const { return m_wrong; }
    [[nodiscard]] std::string firstWrong() const { return m_firstWrong; }
    [[nodiscard]] int published() const { return m_published; }
    [[nodiscard]] int heard() const { return m_heard; }
    [[nodiscard]] int lateCalls() const { return m_late; }
    void forgetEvents() { m_published = m_heard = 0; }

  private:
    void publish(const std::u16string& name, const std::string& locale) {
        docset::publishProduct(m_root.path(), locale, makeProduct(name, fl::i18n::toUtf16(locale)));
    }

    // Every product's part of the answer must be its part in the one language or in the other.
    void search(int round) {
        const std::size_t at = static_cast<std::size_t>(round) % questions().size();
        Answer answer = questions()[at].ask();
        for (const std::u16string& product :
             {translated[0], translated[1], std::u16string(untranslated)}) {
            const ProductAnswer part = answer[product];
            Answer english = m_expected[0][at];
            Answer japanese = m_expected[1][at];
            if (part != english[product] && part != japanese[product] && m_wrong++ == 0)
                m_firstWrong = questions()[at].name + ", " + fl::i18n::toUtf8(product) + ": " +
                               testing::PrintToString(part);
        }
    }

    void flipLanguage(int round) {
        setSetting(settings::in_veltra::docLanguageSetting,
                   std::string(languages[static_cast<std::size_t>(round) % 2]));
        // The first may have been in force already.
        if (round > 0)
            ++m_published;
    }

    void clearAndPopulate(int round) {
        switch (round % 4) {
            case 0:
                ReferenceCacheManager::ClearAllCaches();
                ++m_published;
                ReferenceCacheManager::PopulateAllCaches();
                break;
            case 1:
                ReferenceCacheManager::ClearLookupCaches();
                ReferenceCacheManager::PopulateUninstalledLookupCache();
                break;
            case 2:
                ReferenceCacheManager::ClearResourceCache();
                ReferenceCacheManager::PopulateResourceCache();
                break;
            default:
                ReferenceCacheManager::ClearAllCaches();
                ++m_published;
        }
    }

    // Subscribes, and is never called once it has unsubscribed.
    void comeAndGo() {
        const auto isThere = std::make_unique<std::atomic<bool>>(true);
        ScopedConnection connection;
        ReferenceCacheManager::SubscribeToDataChangeEvent(
            connection, [this, here = isThere.get()](const ReferenceDataChangeEvent&) {
                if (!*here)
                    ++m_late;
                search(1);
            });
        std::this_thread::yield();
        connection.reset();
        *isThere = false;
    }

    const TempFolder m_root;
    std::array<std::vector<Answer>, languages.size()> m_expected;  // by language and question
    ScopedConnection m_connection;
    std::atomic<int> m_wrong{0};
    std::string m_firstWrong;  // by the thread that counted the first wrong answer
    std::atomic<int> m_published{0};
    std::atomic<int> m_heard{0};
    std::atomic<int> m_late{0};
};

TEST_F(CacheStressConcurrencyTest, TheLanguagesCanBeToldApartByEveryQuestion) {
    for (std::size_t at = 0; at < questions().size(); ++at) {
        SCOPED_TRACE(questions()[at].name);
        EXPECT_NE(expectedIn(0)[at], expectedIn(1)[at]);
        EXPECT_FALSE(expectedIn(0)[at].empty() && expectedIn(1)[at].empty());
    }
}

TEST_F(CacheStressConcurrencyTest, AnswersEventsAndMemoryAreRightUnderEverythingAtOnce) {
    constexpr int rounds = 2000;
    runEverything(8);  // what is made once in a process
    putAway();
    forgetEvents();
    const LiveAllocations before = LiveAllocations::now();

    setSetting(settings::in_veltra::docLanguageSetting, std::string(languages.front()));
    runEverything(rounds);
    EXPECT_EQ(wrongAnswers(), 0) << "the first: " << firstWrong();
    EXPECT_EQ(heard(), published());
    EXPECT_EQ(lateCalls(), 0);
    const auto manager = vvm::Factory::getCurrentLocalVVM(vvm::Throw)->getEventMgr();
    EXPECT_EQ(SubscriptionCountByType<ReferenceDataChangeEvent>(*manager).get(), 1U);

    // Whoever asks when all is quiet is answered in the language that was set last.
    for (std::size_t at = 0; at < questions().size(); ++at)
        EXPECT_EQ(questions()[at].ask(), expectedIn((rounds - 1) % 2)[at]) << questions()[at].name;

    putAway();
    const LiveAllocations after = LiveAllocations::now();
    EXPECT_EQ(after.blocks, before.blocks);
    EXPECT_EQ(after.bytes, before.bytes);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
