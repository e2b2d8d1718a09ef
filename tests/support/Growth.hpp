// How the time that something takes grows with its input.
#pragma once

#include <cstddef>
#include <functional>

#include <gtest/gtest.h>

namespace reference::tests {

// The sizes between which growth is measured: it begins at the first size that takes long enough to
// be measured, and ends three doublings later, at the largest.
struct GrowthSizes {
    std::size_t smallest = 1000;
    std::size_t largest = 1'000'000;
};

// Whether the processor time of `run(size)`, counted over all threads of the process, grows about
// as its input: three doublings may make it 22 times as long, where linear growth makes it 8 times
// and quadratic growth 64 times as long. What stays below 30 ms at the largest size passes. Each
// size is run up to three times, and the quickest run counts; what seems to grow too fast is
// measured once more. `run` makes its input itself, which therefore must be cheap beside what is
// measured.
[[nodiscard]] testing::AssertionResult growsLinearly(const std::function<void(std::size_t)>& run,
                                                     GrowthSizes sizes = {});

}  // namespace reference::tests
