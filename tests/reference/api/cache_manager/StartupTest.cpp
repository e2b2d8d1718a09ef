// What start-up loads, in which order, and what it writes to the log.
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "docparser/DocParserException.hpp"
#include "docparser/DocResourceParser.hpp"
#include "foundation/log/basic_diagnostic_logger.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "support/Capture.hpp"
#include "support/LibraryTest.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using cache_manager::ReferenceCacheManager;
using docparser::DocParserException;
using property::RefEntityType;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::StartsWith;

const std::vector<std::u16string> startupProducts = {u"veltra", u"brisk",   u"caldera", u"lumora",
                                                     u"qix",    u"tarvel",  u"merisk",  u"dornel",
                                                     u"yarl",   u"pendrake"};

constexpr const char* seconds = "[0-9]+\\.[0-9][0-9][0-9][0-9][0-9][0-9]s\\.";

class StartupTest : public LibraryTest {
  protected:
    StartupTest() {
        // In the process's own context, before a test makes another the current one.
        ReferenceCacheManager::InitializeListener();
        for (const auto& name : startupProducts)
            add(ProductBuilder(name).entity(u"f", RefEntityType::Function, u"f.html"));
        add(ProductBuilder(u"other").entity(u"f", RefEntityType::Function, u"f.html"));
        add(ProductBuilder(u"absent").entity(u"g", RefEntityType::Function, u"g.html"), false);
    }

    // The products whose files start-up asks for; `fail` is called before each is handed out.
    std::vector<std::u16string> startAndListFiles(
        const std::function<void(const std::u16string&)>& fail = [](const auto&) {}) {
        std::vector<std::u16string> asked;
        source().onResourceFile([&](const std::u16string& file) {
            asked.push_back(file);
            fail(file);
        });
        ReferenceCacheManager::PerformStartupOperations();
        source().onResourceFile(nullptr);
        return asked;
    }
};

TEST_F(StartupTest, ParsesTheTenListedProductsInTheirOrder) {
    EXPECT_THAT(startAndListFiles(), testing::ElementsAreArray(startupProducts));
    EXPECT_EQ(ReferenceCacheManager::GetResourceCache()->size(), 10U);
}

TEST_F(StartupTest, LoadsBothLookupCachesWithOneReading) {
    ReferenceCacheManager::PerformStartupOperations();
    EXPECT_EQ(ReferenceCacheManager::GetLookupCache()->size(), 11U);
    EXPECT_EQ(ReferenceCacheManager::GetUninstalledLookupCache()->size(), 1U);
    EXPECT_EQ(source().lookupCalls(), 1);
    EXPECT_TRUE(ReferenceCacheManager::IsStartupDone());
}

TEST_F(StartupTest, DoesNotReadWhatIsLoadedAlready) {
    ReferenceCacheManager::PerformStartupOperations();
    EXPECT_THAT(startAndListFiles(), IsEmpty());
    EXPECT_EQ(source().lookupCalls(), 1);
}

TEST_F(StartupTest, PassesOverProductsThatFailInAnyWay) {
    EXPECT_EQ(startAndListFiles([](const std::u16string& file) {
                  if (file == u"veltra")
                      throw DocParserException("broken");
                  if (file == u"qix")
                      throw std::logic_error("out of order");
                  if (file == u"pendrake")
                      throw 5;
              }).size(),
              10U);
    EXPECT_EQ(ReferenceCacheManager::GetResourceCache()->size(), 7U);
    EXPECT_TRUE(ReferenceCacheManager::IsStartupDone());
}

TEST_F(StartupTest, WhatTheParserThrowsForTheLookupFilesIsThrown) {
    const LogCapture log("referenceApi::startup=32");
    source().onLookupFiles([] { throw DocParserException("broken manifest"); });
    EXPECT_THROW(ReferenceCacheManager::PerformStartupOperations(), DocParserException);
    EXPECT_EQ(source().resourceCalls(), 0);
    EXPECT_THAT(log.texts(), ElementsAre(StartsWith("enter "), StartsWith("leave ")));
}

TEST_F(StartupTest, LogsTwoTimesInSecondsWithSixDecimals) {
    const LogCapture log("referenceApi::startup=8");
    ReferenceCacheManager::PerformStartupOperations();
    EXPECT_THAT(log.texts(),
                ElementsAre(MatchesRegex(std::string("ReferenceApiStartup ready time: ") + seconds),
                            MatchesRegex(std::string("ReferenceApiStartup final thread time: ") +
                                         seconds)));
    for (const auto& record : log.records()) {
        EXPECT_EQ(record.channel, "referenceApi::startup");
        EXPECT_EQ(record.severity, 8);
    }
}

TEST_F(StartupTest, TracesItselfWithFileSignatureAndLineAndIndentsWhatIsLoggedMeanwhile) {
    const LogCapture log("referenceApi::startup=32");
    ReferenceCacheManager::PerformStartupOperations();
    const auto records = log.records();
    ASSERT_EQ(records.size(), 4U);
    EXPECT_THAT(records[0].text,
                AllOf(StartsWith("enter static void reference::cache_manager::"
                                 "ReferenceCacheManager::PerformStartupOperations()"),
                      HasSubstr("(reference/api/cache_manager/Startup.cpp:677)")));
    EXPECT_THAT(records[3].text, StartsWith("leave "));
    EXPECT_EQ(records[0].severity, 32);
    EXPECT_EQ(records[3].severity, 32);
    EXPECT_EQ(records[0].depth, 0);
    EXPECT_EQ(records[1].depth, 1);
    EXPECT_EQ(records[2].depth, 1);
    EXPECT_EQ(records[3].depth, 0);
}

TEST_F(StartupTest, LogsNothingWhenTheSeverityIsNotEnabled) {
    const LogCapture log("referenceApi::startup=7,*=32");
    ReferenceCacheManager::PerformStartupOperations();
    EXPECT_THAT(log.texts(), IsEmpty());
}

TEST_F(StartupTest, TimesCountFromItsBeginning) {
    const LogCapture log("referenceApi::startup=8");
    ReferenceCacheManager::PerformStartupOperations();
    std::vector<double> times;
    for (const auto& text : log.texts())
        times.push_back(std::stod(text.substr(text.rfind(' ') + 1)));
    ASSERT_EQ(times.size(), 2U);
    EXPECT_GE(times[0], 0);
    EXPECT_GE(times[1], times[0]);
    EXPECT_LT(times[1], 60);
}

// Somebody clears both lookup caches while start-up parses the products.
TEST_F(StartupTest, LoadsTheLookupCachesAgainWhenTheyWereClearedMeanwhile) {
    const LogCapture log("referenceApi::startup=8");
    std::vector<std::size_t> uninstalled;
    foundation::log::setLogSink([&](const foundation::log::LogRecord&) {
        uninstalled.push_back(ReferenceCacheManager::GetUninstalledLookupCache()->size());
    });
    startAndListFiles([](const std::u16string& file) {
        if (file == u"pendrake")
            ReferenceCacheManager::ClearLookupCaches();
    });
    EXPECT_THAT(uninstalled, ElementsAre(0U, 1U)) << "when it is ready, and when it is through";
    EXPECT_EQ(ReferenceCacheManager::GetLookupCache()->size(), 11U);
    EXPECT_EQ(source().lookupCalls(), 2);
}

// In a process of its own, in which nothing has been done yet.
TEST(FreshStartupDeathTest, StartUpIsDoneBeforeTheReadyTimeIsLogged) {
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    const auto inFreshProcess = [] {
        docparser::DocResourceParser::setSource(std::make_shared<MemorySource>());
        const LogCapture log("referenceApi::startup=8");
        std::vector<bool> done{ReferenceCacheManager::IsStartupDone()};
        foundation::log::setLogSink([&](const foundation::log::LogRecord&) {
            done.push_back(ReferenceCacheManager::IsStartupDone());
        });
        ReferenceCacheManager::PerformStartupOperations();
        std::_Exit(done == std::vector<bool>{false, true, true} ? 0 : 1);
    };
    EXPECT_EXIT(inFreshProcess(), testing::ExitedWithCode(0), "");
}

TEST(FreshStartupDeathTest, PopulatingAllIsDoneAfterLookupAndResourceCachesInThisOrder) {
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    const auto inFreshProcess = [] {
        const auto source = std::make_shared<MemorySource>();
        source->add(ProductBuilder(u"alpha").build());
        std::string steps;
        const auto note = [&steps](const char* step) {
            steps += ReferenceCacheManager::IsStartupDone() ? "done " : step;
        };
        source->onLookupFiles([&] { note("lookup "); });
        source->onResourceFile([&](const std::u16string&) { note("resource "); });
        docparser::DocResourceParser::setSource(source);
        ReferenceCacheManager::PopulateAllCaches();
        note("not done");
        std::_Exit(steps == "lookup resource done " ? 0 : 1);
    };
    EXPECT_EXIT(inFreshProcess(), testing::ExitedWithCode(0), "");
}

TEST(FreshStartupDeathTest, PopulatingAllIsNotDoneWhenItFails) {
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    const auto inFreshProcess = [] {
        const auto source = std::make_shared<MemorySource>();
        source->add(ProductBuilder(u"alpha").build());
        source->onResourceFile([](const std::u16string&) { throw std::runtime_error("no disk"); });
        docparser::DocResourceParser::setSource(source);
        EXPECT_THROW(ReferenceCacheManager::PopulateAllCaches(), std::runtime_error);
        std::_Exit(ReferenceCacheManager::IsStartupDone() ? 1 : 0);
    };
    EXPECT_EXIT(inFreshProcess(), testing::ExitedWithCode(0), "");
}

TEST(FreshStartupDeathTest, AFailedStartUpIsNotDone) {
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    const auto inFreshProcess = [] {
        const auto source = std::make_shared<MemorySource>();
        source->onLookupFiles([] { throw DocParserException("broken manifest"); });
        docparser::DocResourceParser::setSource(source);
        EXPECT_THROW(ReferenceCacheManager::PerformStartupOperations(), DocParserException);
        std::_Exit(ReferenceCacheManager::IsStartupDone() ? 1 : 0);
    };
    EXPECT_EXIT(inFreshProcess(), testing::ExitedWithCode(0), "");
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
