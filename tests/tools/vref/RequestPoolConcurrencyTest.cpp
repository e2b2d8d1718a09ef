// Which tasks run beside which.
#include <atomic>
#include <chrono>
#include <future>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "foundation/core/Mutex.hpp"
#include "vref/RequestPool.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using foundation::core::MutexLock;
using ::testing::ElementsAre;
using tools::RequestPool;
using Lane = RequestPool::Lane;

// What keeps a task running until the test lets it go.
class Gate {
  public:
    void wait() { m_open.wait(); }
    void open() { m_promise.set_value(); }

  private:
    std::promise<void> m_promise;
    std::shared_future<void> m_open = m_promise.get_future().share();
};

// The order in which things happened.
class Diary {
  public:
    void note(const std::string& text) {
        const MutexLock lock(m_mutex);
        m_notes.push_back(text);
    }
    [[nodiscard]] std::vector<std::string> notes() {
        const MutexLock lock(m_mutex);
        return m_notes;
    }
    [[nodiscard]] RequestPool::Task noting(const std::string& text) {
        return [this, text] { note(text); };
    }

  private:
    foundation::core::Mutex m_mutex;
    std::vector<std::string> m_notes;
};

TEST(RequestPoolConcurrencyTest, AQuickTaskDoesNotWaitForSlowOnes) {
    Gate gate;
    RequestPool pool;
    std::atomic<int> slow = 0;
    for (std::uint64_t number = 1; number <= 10; ++number)
        pool.add(Lane::Slow, number, [&] {
            gate.wait();
            ++slow;
        });
    std::promise<void> done;
    pool.add(Lane::Quick, 11, [&] { done.set_value(); });
    done.get_future().wait();
    EXPECT_EQ(slow, 0);
    gate.open();
    pool.drain();
    EXPECT_EQ(slow, 10);
}

TEST(RequestPoolConcurrencyTest, TwoSlowTasksRunAtATime) {
    RequestPool pool;
    std::promise<void> first;
    std::promise<void> second;
    pool.add(Lane::Slow, 1, [&] {
        first.set_value();
        second.get_future().wait();
    });
    pool.add(Lane::Slow, 2, [&] {
        first.get_future().wait();
        second.set_value();
    });
    pool.drain();
}

TEST(RequestPoolConcurrencyTest, WhatIsAddedAfterAChangeBeginsAfterIt) {
    Gate gate;
    Diary diary;
    RequestPool pool;
    std::promise<void> begun;
    pool.add(Lane::Slow, 1, [&] {
        begun.set_value();
        gate.wait();
        diary.note("before");
    });
    begun.get_future().wait();
    pool.add(Lane::Alone, 2, diary.noting("first change"));
    pool.add(Lane::Quick, 3, diary.noting("after"));
    std::thread caller([&] { pool.runAlone(diary.noting("second change")); });
    gate.open();
    pool.drain();
    caller.join();
    pool.drain();
    const auto notes = diary.notes();
    ASSERT_EQ(notes.size(), 4U);
    EXPECT_EQ(notes[0], "before");
    EXPECT_EQ(notes[1], "first change");
}

TEST(RequestPoolConcurrencyTest, NothingRunsBesideAChange) {
    RequestPool pool;
    int state = 0;  // without a lock: only changes write it
    std::atomic<int> mixtures = 0;
    constexpr int rounds = 300;
    for (int round = 0; round < rounds; ++round) {
        for (const Lane lane : {Lane::Quick, Lane::Slow, Lane::Slow})
            pool.add(lane, 1, [&] {
                const int before = state;
                std::this_thread::yield();
                if (before % 2 != 0 || state != before)
                    ++mixtures;
            });
        const auto change = [&] {
            ++state;
            std::this_thread::yield();
            ++state;
        };
        if (round % 2 == 0)
            pool.add(Lane::Alone, 2, change);
        else
            pool.runAlone(change);
    }
    pool.drain();
    EXPECT_EQ(mixtures, 0);
    EXPECT_EQ(state, 2 * rounds);
}

TEST(RequestPoolConcurrencyTest, WhatHasNotBegunCanBeTakenOut) {
    Gate gate;
    Diary diary;
    RequestPool pool;
    std::promise<void> begun;
    pool.add(Lane::Quick, 1, [&] {
        begun.set_value();
        gate.wait();
    });
    pool.add(Lane::Quick, 2, diary.noting("two"));
    pool.add(Lane::Quick, 3, diary.noting("three"));
    begun.get_future().wait();
    EXPECT_TRUE(pool.remove(2));
    EXPECT_FALSE(pool.remove(2));
    EXPECT_FALSE(pool.remove(1)) << "it runs";
    gate.open();
    pool.drain();
    EXPECT_THAT(diary.notes(), ElementsAre("three"));
}

TEST(RequestPoolConcurrencyTest, WhoAddsToAFullLaneWaits) {
    Gate gate;
    RequestPool pool;
    std::atomic<std::size_t> added = 0;
    std::promise<void> begun;
    pool.add(Lane::Quick, 0, [&] {
        begun.set_value();
        gate.wait();
    });
    begun.get_future().wait();
    constexpr std::size_t more = 10;
    std::thread client([&] {
        for (std::size_t number = 1; number <= RequestPool::capacity + more; ++number) {
            pool.add(Lane::Quick, number, [] {});
            ++added;
        }
    });
    while (added < RequestPool::capacity)
        std::this_thread::yield();
    // Time enough for a mistake to show.
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_EQ(added, RequestPool::capacity);
    gate.open();
    client.join();
    EXPECT_EQ(added, RequestPool::capacity + more);
    pool.drain();
}

TEST(RequestPoolConcurrencyTest, ATaskOfTheCallerMayThrow) {
    RequestPool pool;
    EXPECT_THROW(pool.runAlone([] { throw std::runtime_error("x"); }), std::runtime_error);
    std::promise<void> done;
    pool.add(Lane::Quick, 1, [&] { done.set_value(); });
    done.get_future().wait();
    pool.drain();
}

TEST(RequestPoolConcurrencyTest, AtTheEndWhatHasNotBegunIsDropped) {
    Diary diary;
    Gate gate;
    std::promise<void> begun;
    std::thread opener;
    {
        RequestPool pool;
        pool.add(Lane::Quick, 1, [&] {
            begun.set_value();
            gate.wait();
            diary.note("began");
        });
        pool.add(Lane::Quick, 2, diary.noting("never"));
        begun.get_future().wait();
        opener = std::thread([&] {
            // Until the end has begun: a mistake would let the second task begin then.
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            gate.open();
        });
    }
    opener.join();
    EXPECT_THAT(diary.notes(), ElementsAre("began"));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
