// Requests of version 2 as they are carried out and cancelled. The methods are the test's own, so
// that it decides how long they take.
#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "foundation/core/Mutex.hpp"
#include "vref/RpcError.hpp"
#include "vref/RpcSession.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

namespace json = boost::json;
using foundation::core::MutexLock;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;
using tools::RpcCall;
using tools::RpcError;
using Lane = tools::RequestPool::Lane;

// What a session has sent.
class Sent {
  public:
    void add(const json::value& message) {
        const MutexLock lock(m_mutex);
        m_lines.push_back(json::serialize(message));
        m_added.notify_all();
    }
    // The lines so far, of which there are at least `count`.
    [[nodiscard]] std::vector<std::string> wait(std::size_t count) {
        const MutexLock lock(m_mutex);
        while (m_lines.size() < count)
            m_added.wait(m_mutex);
        return m_lines;
    }
    [[nodiscard]] std::vector<std::string> lines() { return wait(0); }

  private:
    foundation::core::Mutex m_mutex;
    std::condition_variable_any m_added;
    std::vector<std::string> m_lines;
};

// "quick" returns at once, "slow" when it is let go, "change" changes what "quick" and "slow"
// return, "fail" finds the documentation unreadable until it is followed.
class HeldMethods final : public tools::RpcMethods {
  public:
    RpcCall prepare(const std::string& method, const json::value&) override {
        if (method == "quick")
            return {Lane::Quick, [this] { return json::value(m_state); }};
        if (method == "slow")
            return {Lane::Slow, [this] {
                        const auto before = m_state;
                        const MutexLock lock(m_mutex);
                        ++m_begun;
                        m_changed.notify_all();
                        while (!m_isLetGo)
                            m_changed.wait(m_mutex);
                        return json::value(m_state == before ? before : -1);
                    }};
        if (method == "change")
            return {Lane::Alone, [this] { return json::value(++m_state); }};
        if (method == "fail")
            return {Lane::Quick, [this]() -> json::value {
                        if (!m_isReplaced) {
                            ++m_unreadable;
                            return "old";
                        }
                        if (!m_isSound)
                            throw std::runtime_error("gone");
                        return "new";
                    }};
        throw RpcError::unknownMethod(method, {"quick", "slow", "change", "fail"});
    }
    [[nodiscard]] std::size_t unreadableFiles() const override { return m_unreadable; }
    [[nodiscard]] std::uint64_t edition() const override { return m_edition; }
    void readAnew() override { ++m_edition; }
    void followDocumentation() override {
        if (m_willBeReplaced) {
            m_isReplaced = true;
            ++m_edition;
        }
    }

    void waitForSlow(int count) {
        const MutexLock lock(m_mutex);
        while (m_begun < count)
            m_changed.wait(m_mutex);
    }
    void letGo() {
        const MutexLock lock(m_mutex);
        m_isLetGo = true;
        m_changed.notify_all();
    }
    [[nodiscard]] int begun() {
        const MutexLock lock(m_mutex);
        return m_begun;
    }
    // Before the first request.
    void willBeReplaced(bool bySoundOnes) {
        m_willBeReplaced = true;
        m_isSound = bySoundOnes;
    }

  private:
    // Without a lock: only what runs alone writes them.
    std::int64_t m_state = 0;
    std::uint64_t m_edition = 0;
    bool m_isReplaced = false;

    bool m_willBeReplaced = false;
    bool m_isSound = true;
    std::atomic<std::size_t> m_unreadable = 0;
    foundation::core::Mutex m_mutex;
    std::condition_variable_any m_changed;
    int m_begun = 0;
    bool m_isLetGo = false;
};

class RpcSessionConcurrencyTest : public ::testing::Test {
  protected:
    ~RpcSessionConcurrencyTest() override { methods.letGo(); }

    void request(const std::string& id, const std::string& method) {
        session.take(R"({"jsonrpc":"2.0","id":)" + id + R"(,"method":")" + method + R"("})");
    }
    void cancel(const std::string& id) {
        session.take(R"({"jsonrpc":"2.0","method":"$/cancelRequest","params":{"id":)" + id + "}}");
    }
    static std::string result(const std::string& id, const std::string& value) {
        return R"({"jsonrpc":"2.0","id":)" + id + R"(,"result":)" + value + "}";
    }
    static std::string cancelled(const std::string& id) {
        return R"({"jsonrpc":"2.0","id":)" + id +
               R"(,"error":{"code":-32800,"message":"The request was cancelled."}})";
    }

    Sent sent;
    HeldMethods methods;
    tools::RpcSession session{methods, [this](const json::value& message) { sent.add(message); }};
};

TEST_F(RpcSessionConcurrencyTest, AnExactLookUpOvertakesSearches) {
    for (const char* id : {"1", "2", "3", "4"})
        request(id, "slow");
    methods.waitForSlow(2);
    request(R"("q")", "quick");
    EXPECT_THAT(sent.wait(1), ElementsAre(result(R"("q")", "0")));
    methods.letGo();
    session.drain();
    EXPECT_THAT(sent.lines(),
                UnorderedElementsAre(result(R"("q")", "0"), result("1", "0"), result("2", "0"),
                                     result("3", "0"), result("4", "0")));
}

TEST_F(RpcSessionConcurrencyTest, ACancelledRequestIsAnsweredAtOnceAndOnce) {
    for (const char* id : {"1", "2", "3", R"("x")"})
        request(id, "slow");
    methods.waitForSlow(2);
    cancel("1");       // runs
    cancel("3");       // waits
    cancel(R"("x")");  // waits
    cancel("3");
    cancel("99");
    cancel("\"1\"");
    EXPECT_THAT(sent.lines(), ElementsAre(cancelled("1"), cancelled("3"), cancelled(R"("x")")));
    methods.letGo();
    session.drain();
    EXPECT_THAT(sent.lines(),
                ElementsAre(cancelled("1"), cancelled("3"), cancelled(R"("x")"), result("2", "0")));
    EXPECT_EQ(methods.begun(), 2) << "what was cancelled before it began never ran";
    cancel("2");
    EXPECT_EQ(sent.lines().size(), 4U);
}

TEST_F(RpcSessionConcurrencyTest, ARequestToCancelIsItselfAnswered) {
    session.take(R"({"jsonrpc":"2.0","id":5,"method":"$/cancelRequest","params":{"id":1}})");
    session.take(R"({"jsonrpc":"2.0","id":6,"method":"$/cancelRequest"})");
    EXPECT_THAT(sent.lines(), ElementsAre(result("5", "null"), result("6", "null")));
}

TEST_F(RpcSessionConcurrencyTest, AChangeIsNoPartOfAnAnswer) {
    request("1", "slow");
    methods.waitForSlow(1);
    request("2", "change");
    request("3", "quick");
    session.take(R"({"jsonrpc":"2.0","method":"change"})");
    request("4", "quick");
    EXPECT_THAT(sent.lines(), IsEmpty());
    methods.letGo();
    session.drain();
    const auto lines = sent.lines();
    EXPECT_THAT(lines, UnorderedElementsAre(result("1", "0"), result("2", "1"), result("3", "2"),
                                            result("4", "2")));
}

TEST_F(RpcSessionConcurrencyTest, AChangeThatWaitsCanBeCancelledAndNothingElseSuffers) {
    request("1", "slow");
    methods.waitForSlow(1);
    request("2", "change");
    request("3", "quick");
    cancel("2");
    EXPECT_THAT(sent.wait(2), UnorderedElementsAre(cancelled("2"), result("3", "0")));
    methods.letGo();
    session.drain();
    EXPECT_EQ(sent.lines().size(), 3U);
}

TEST_F(RpcSessionConcurrencyTest, AListIsAnsweredByAListInItsOrder) {
    session.take(
        R"([{"jsonrpc":"2.0","id":1,"method":"slow"},{"jsonrpc":"2.0","method":"quick"},)"
        R"({"jsonrpc":"2.0","id":2,"method":"slow"},{"jsonrpc":"2.0","id":3,"method":"quick"},)"
        R"(7,{"jsonrpc":"2.0","id":4,"method":"no"}])");
    methods.waitForSlow(2);
    EXPECT_THAT(sent.lines(), IsEmpty());
    cancel("2");
    EXPECT_THAT(sent.lines(), IsEmpty());
    methods.letGo();
    session.drain();
    ASSERT_EQ(sent.lines().size(), 1U);
    const json::value answer = json::parse(sent.lines().front());
    const auto& answers = answer.as_array();
    ASSERT_EQ(answers.size(), 5U);
    EXPECT_EQ(json::serialize(answers[0]), result("1", "0"));
    EXPECT_EQ(json::serialize(answers[1]), cancelled("2"));
    EXPECT_EQ(json::serialize(answers[2]), result("3", "0"));
    EXPECT_EQ(answers[3].at("error").at("code"), -32600);
    EXPECT_EQ(answers[4].at("error").at("code"), -32601);
}

TEST_F(RpcSessionConcurrencyTest, NotificationsAreNotAnswered) {
    session.take(R"({"jsonrpc":"2.0","method":"quick"})");
    session.take(R"({"jsonrpc":"2.0","id":null,"method":"nothing"})");
    session.take(R"([{"jsonrpc":"2.0","method":"quick"},{"jsonrpc":"2.0","method":"no"}])");
    session.drain();
    EXPECT_THAT(sent.lines(), IsEmpty());
}

TEST_F(RpcSessionConcurrencyTest, TheEndIsAnsweredLast) {
    request("1", "slow");
    methods.waitForSlow(1);
    EXPECT_FALSE(session.isOver());
    std::thread opener([this] { methods.letGo(); });
    request("2", "shutdown");
    opener.join();
    EXPECT_TRUE(session.isOver());
    EXPECT_THAT(sent.lines(), ElementsAre(result("1", "0"), result("2", "null")));
}

TEST_F(RpcSessionConcurrencyTest, AnAnswerFromFilesThatWereReplacedMeanwhileIsGivenAnew) {
    methods.willBeReplaced(true);
    request("1", "fail");
    session.drain();
    EXPECT_THAT(sent.lines(), ElementsAre(result("1", R"("new")")));
}

TEST_F(RpcSessionConcurrencyTest, AnAnswerFromFilesThatAreUnreadableIsGivenAllTheSame) {
    request("1", "fail");
    session.drain();
    EXPECT_THAT(sent.lines(), ElementsAre(result("1", R"("old")")));
}

TEST_F(RpcSessionConcurrencyTest, AFailureThatLastsIsToldInTheEnd) {
    methods.willBeReplaced(false);
    request("1", "fail");
    session.drain();
    ASSERT_EQ(sent.lines().size(), 1U);
    const json::value answer = json::parse(sent.lines().front());
    EXPECT_EQ(answer.at("error").at("code"), -32603);
    EXPECT_EQ(answer.at("error").at("message"), "gone");
}

TEST_F(RpcSessionConcurrencyTest, EveryRequestHasOneAnswerWhateverIsCancelled) {
    const auto seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    methods.letGo();
    const char* const names[] = {"quick", "slow", "change", "fail", "no"};
    constexpr int requests = 2000;
    std::uniform_int_distribution<std::size_t> kinds(0, std::size(names) - 1);
    for (int id = 0; id < requests; ++id) {
        request(std::to_string(id), names[kinds(random)]);
        if (random() % 2 == 0)
            cancel(std::to_string(std::uniform_int_distribution<int>(0, id)(random)));
        if (random() % 50 == 0)
            session.readAnew();
        if (random() % 50 == 0)
            session.runAlone([] {});
    }
    session.drain();
    std::set<std::int64_t> answered;
    for (const auto& line : sent.lines())
        EXPECT_TRUE(answered.insert(json::parse(line).at("id").to_number<std::int64_t>()).second)
            << line;
    EXPECT_EQ(answered.size(), static_cast<std::size_t>(requests));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
