// Work for several threads at once.
#pragma once

#include <atomic>
#include <functional>
#include <thread>
#include <vector>

namespace reference::tests {

// Runs each piece of work in a thread of its own, `rounds` times, all of them starting together.
inline void runTogether(const std::vector<std::function<void()>>& work, int rounds = 1) {
    std::vector<std::thread> threads;
    threads.reserve(work.size());
    std::atomic<bool> start{false};
    for (const auto& piece : work)
        threads.emplace_back([&piece, &start, rounds] {
            start.wait(false);
            for (int round = 0; round < rounds; ++round)
                piece();
        });
    start = true;
    start.notify_all();
    for (auto& thread : threads)
        thread.join();
}

}  // namespace reference::tests
