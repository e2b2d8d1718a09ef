#include <atomic>
#include <iostream>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>

#include "foundation/log/basic_diagnostic_logger.hpp"
#include "settings/in_veltra/settingsRoot.hpp"
#include "support/Capture.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using namespace foundation::log;
using settings::in_veltra::logSetting;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* logVariable = "VELTRA_LOG";

// What is written to std::cerr in its lifetime.
class ErrorStreamCapture {
  public:
    ErrorStreamCapture() : m_before(std::cerr.rdbuf(m_text.rdbuf())) {}
    ~ErrorStreamCapture() { std::cerr.rdbuf(m_before); }
    ErrorStreamCapture(const ErrorStreamCapture&) = delete;  // bound to its scope
    ErrorStreamCapture& operator=(const ErrorStreamCapture&) = delete;

    [[nodiscard]] std::string text() const { return m_text.str(); }

  private:
    std::ostringstream m_text;
    std::streambuf* m_before;
};

TEST(LogTest, IsSilentUntilItIsSwitchedOn) {
    const ScopedEnvironment environment(logVariable, std::nullopt);
    const LogCapture capture("");
    const diagnostic_logger logger("probe");
    EXPECT_FALSE(logger.isEnabled(Error));
    EXPECT_FALSE(logger.isEnabled(0));
    logger.log(Error, "lost");
    EXPECT_THAT(capture.records(), IsEmpty());
}

TEST(LogTest, HandsTheSinkChannelSeverityDepthAndText) {
    const LogCapture capture("probe=16");
    const diagnostic_logger logger("probe");
    logger.log(Warning, "the Größe is 3");
    EXPECT_THAT(
        capture.records(),
        ElementsAre(CapturedRecord{
            .channel = "probe", .severity = Warning, .depth = 0, .text = "the Größe is 3"}));
}

TEST(LogTest, PassesRecordsUpToTheSeverityOfTheChannel) {
    struct Row {
        const char* levels;
        int severity;
        bool passes;
    };
    const std::vector<Row> rows = {
        {"probe=4", 2, true},
        {"probe=4", 4, true},
        {"probe=4", 5, false},
        {"probe=4", 32, false},
        {"probe=32", 32, true},
        {"probe=0", 0, true},
        {"probe=0", 1, false},
        {"probe=-1", 0, false},
        {"other=32", 2, false},
        {"prob=32", 2, false},
        {"probe.inner=32", 2, false},
        {"other=2,probe=8", 8, true},
        {"probe=2,probe=8", 8, true},  // the last one counts
        {"*=8", 8, true},
        {"*=8", 9, false},
        {"*=8,probe=2", 4, false},  // a name beats the star, wherever it stands
        {"probe=2,*=8", 4, false},
        {"other=2,*=8", 8, true},
        // What is no pair is ignored, and harms no other pair.
        {"probe", 2, false},
        {"probe=", 2, false},
        {"probe=high", 2, false},
        {"probe=4x", 2, false},
        {"probe= 4", 2, false},
        {"probe=99999999999999999999", 2, false},
        {"=4", 2, false},
        {",,,probe=4,,", 4, true},
        {"nonsense,probe=4,other=x", 4, true},
        {"probe=4,probe=x", 4, true},
    };
    const ScopedEnvironment environment(logVariable, std::nullopt);
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.levels) + " at " + std::to_string(row.severity));
        const LogCapture capture(row.levels);
        const diagnostic_logger logger("probe");
        EXPECT_EQ(logger.isEnabled(row.severity), row.passes);
        logger.log(row.severity, "text");
        EXPECT_EQ(capture.records().size(), row.passes ? 1U : 0U);
    }
}

TEST(LogTest, IsSwitchedOnByTheEnvironment) {
    const LogCapture capture("");
    const diagnostic_logger logger("probe");
    const ScopedEnvironment environment(logVariable, "probe=4");
    EXPECT_TRUE(logger.isEnabled(Warning));
    EXPECT_FALSE(logger.isEnabled(Information));
    logger.log(Warning, "heard");
    EXPECT_THAT(capture.texts(), ElementsAre("heard"));
}

TEST(LogTest, TheSettingWinsOverTheEnvironment) {
    const ScopedEnvironment environment(logVariable, "probe=32,*=32");
    const LogCapture capture("other=2");
    const diagnostic_logger logger("probe");
    EXPECT_FALSE(logger.isEnabled(Error));
    capture.context().set(logSetting, std::string("probe=2"));
    EXPECT_TRUE(logger.isEnabled(Error));
    EXPECT_FALSE(logger.isEnabled(Warning));
    capture.context().set(logSetting, std::string());
    EXPECT_TRUE(logger.isEnabled(Trace));
}

TEST(LogTest, TheSettingIsThatOfTheCurrentContext) {
    const ScopedEnvironment environment(logVariable, std::nullopt);
    const LogCapture capture("probe=4");
    const diagnostic_logger logger("probe");
    {
        const ScopedContext other;
        EXPECT_FALSE(logger.isEnabled(Error));
    }
    EXPECT_TRUE(logger.isEnabled(Error));
}

TEST(LogTest, AFunctionTraceSetsWhatIsLoggedWithinOneStepIn) {
    const LogCapture capture("probe=32");
    const diagnostic_logger logger("probe");
    {
        const FunctionTrace outer(logger, "file.cpp", "void outer()", 12);
        logger.log(Debug, "between");
        {
            const FunctionTrace inner(logger, "file.cpp", "void inner()", 34);
            logger.log(Debug, "within");
        }
    }
    logger.log(Debug, "after");

    std::vector<std::string> lines;
    for (const auto& record : capture.records())
        lines.push_back(std::to_string(record.depth) + " " + record.text);
    EXPECT_THAT(lines, ElementsAre("0 enter void outer() (file.cpp:12)", "1 between",
                                   "1 enter void inner() (file.cpp:34)", "2 within",
                                   "1 leave void inner()", "0 leave void outer()", "0 after"));
}

TEST(LogTest, AFunctionTraceIsSilentBelowTraceButStillCounts) {
    const LogCapture capture("probe=4");
    const diagnostic_logger logger("probe");
    {
        const FunctionTrace trace(logger, "file.cpp", "void f()", 1);
        logger.log(Warning, "within");
    }
    EXPECT_THAT(capture.records(),
                ElementsAre(CapturedRecord{
                    .channel = "probe", .severity = 4, .depth = 1, .text = "within"}));
}

TEST(LogTest, WithoutASinkRecordsGoToTheErrorStreamIndented) {
    const LogCapture levels("probe=32");
    setLogSink(nullptr);
    const ErrorStreamCapture stream;
    const diagnostic_logger logger("probe");
    logger.log(Warning, "outside");
    const FunctionTrace trace(logger, "file.cpp", "void f()", 1);
    logger.log(Warning, "inside");
    EXPECT_EQ(stream.text(),
              "[probe 4] outside\n[probe 32] enter void f() (file.cpp:1)\n  [probe 4] inside\n");
    EXPECT_THAT(levels.records(), IsEmpty());
}

TEST(LogTest, WhatASinkThrowsIsThrownAndTheNextRecordIsHeard) {
    const ScopedContext context;
    context.set(logSetting, std::string("probe=4"));
    int heard = 0;
    setLogSink([&](const LogRecord&) {
        if (++heard == 1)
            throw std::runtime_error("the disk is full");
    });
    const diagnostic_logger logger("probe");
    EXPECT_THAT([&] { logger.log(Error, "first"); },
                testing::ThrowsMessage<std::runtime_error>("the disk is full"));
    logger.log(Error, "second");
    setLogSink(nullptr);
    EXPECT_EQ(heard, 2);
}

TEST(LogTest, AFunctionTraceNeverThrowsWhenItsFunctionEnds) {
    const ScopedContext context;
    context.set(logSetting, std::string("probe=32"));
    setLogSink([](const LogRecord& record) {
        if (record.text.starts_with("leave"))
            throw std::runtime_error("the disk is full");
    });
    const diagnostic_logger logger("probe");
    EXPECT_NO_THROW({ const FunctionTrace trace(logger, "file.cpp", "void f()", 1); });
    setLogSink(nullptr);
}

// The sink below keeps its counts without a lock: it may rely on being called by one thread at a
// time.
TEST(LogConcurrencyTest, OneThreadAtATimeCallsTheSinkAndNoRecordIsLost) {
    const ScopedContext context;
    context.set(logSetting, std::string("shared=32"));
    constexpr int threadCount = 4;
    constexpr int rounds = 200;
    int records = 0;
    int misplaced = 0;
    setLogSink([&](const LogRecord& record) {
        ++records;
        const int expected = record.text.starts_with("within") ? 1 : 0;
        misplaced += record.depth == expected ? 0 : 1;
    });
    const diagnostic_logger shared("shared");
    std::vector<std::thread> threads;
    threads.reserve(threadCount);
    for (int number = 0; number < threadCount; ++number)
        threads.emplace_back([&shared] {
            for (int round = 0; round < rounds; ++round) {
                const diagnostic_logger own("shared");
                const FunctionTrace trace(own, "file.cpp", "void f()", round);
                shared.log(Debug, "within " + std::to_string(round));
            }
        });
    for (auto& thread : threads)
        thread.join();
    setLogSink(nullptr);
    EXPECT_EQ(records, threadCount * rounds * 3);
    EXPECT_EQ(misplaced, 0);
}

TEST(LogConcurrencyTest, SinkAndLevelsMayChangeWhileOthersLog) {
    const ScopedContext context;
    context.set(logSetting, std::string("shared=32"));
    std::vector<std::thread> threads;
    std::atomic<int> heard{0};
    setLogSink([&](const LogRecord&) { ++heard; });
    threads.reserve(3);
    for (int number = 0; number < 3; ++number)
        threads.emplace_back([] {
            const diagnostic_logger logger("shared");
            for (int round = 0; round < 200; ++round)
                logger.log(Error, "text");
        });
    for (int round = 0; round < 50; ++round) {
        setLogSink([&](const LogRecord&) { ++heard; });
        context.set(logSetting, std::string(round % 2 == 0 ? "*=4" : "shared=2"));
    }
    for (auto& thread : threads)
        thread.join();
    setLogSink(nullptr);
    EXPECT_EQ(heard, 600);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
