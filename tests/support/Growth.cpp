#include "support/Growth.hpp"

#include <algorithm>
#include <ctime>
#include <limits>

namespace reference::tests {
namespace {

constexpr double measurable = 0.03;
constexpr std::size_t doublings = 8;  // three of them
constexpr double mostGrowth = 22;

double processorSeconds() {
    std::timespec now{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

double quickestOf(int runs, const std::function<void(std::size_t)>& run, std::size_t size) {
    double quickest = std::numeric_limits<double>::max();
    for (int each = 0; each < runs; ++each) {
        const double start = processorSeconds();
        run(size);
        quickest = std::min(quickest, processorSeconds() - start);
    }
    return quickest;
}

}  // namespace

testing::AssertionResult growsLinearly(const std::function<void(std::size_t)>& run,
                                       GrowthSizes sizes) {
    for (std::size_t size = sizes.smallest; size * doublings <= sizes.largest; size *= 2) {
        const double small = quickestOf(3, run, size);
        // A larger size is tried until the last that leaves room for the doublings.
        if (small < measurable && size * 2 * doublings <= sizes.largest)
            continue;
        const double large = quickestOf(small < measurable ? 3 : 1, run, size * doublings);
        if (large < measurable || large < mostGrowth * small)
            return testing::AssertionSuccess();
        // What else the machine does may have slowed down one size and not the other: both once
        // more.
        const double smallAgain = quickestOf(3, run, size);
        const double largeAgain = quickestOf(2, run, size * doublings);
        if (largeAgain < mostGrowth * smallAgain)
            return testing::AssertionSuccess();
        return testing::AssertionFailure()
               << "A size of " << size << " takes " << small << " s, and then " << smallAgain
               << " s; " << size * doublings << " takes " << large << " s, and then " << largeAgain
               << " s.";
    }
    return testing::AssertionFailure() << "The largest size is less than 8 times the smallest.";
}

}  // namespace reference::tests
