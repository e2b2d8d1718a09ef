#include "support/OrderingLaws.hpp"

#include <cstddef>
#include <vector>

#include "support/Print.hpp"

namespace reference::tests {

std::string brokenOrderingLaw(const api::RefRequestComparator& comparator,
                              std::span<const api::ReferenceData> results) {
    const std::size_t count = results.size();
    std::vector<std::vector<bool>> before(count, std::vector<bool>(count));
    for (std::size_t a = 0; a < count; ++a)
        for (std::size_t b = 0; b < count; ++b)
            before[a][b] = comparator(results[a], results[b]);

    const auto tied = [&](std::size_t a, std::size_t b) { return !before[a][b] && !before[b][a]; };
    const auto name = [&](std::size_t a) { return "\n  " + dump(results[a]); };
    for (std::size_t a = 0; a < count; ++a) {
        if (before[a][a])
            return "before itself:" + name(a);
        for (std::size_t b = 0; b < count; ++b) {
            if (before[a][b] && before[b][a])
                return "before each other:" + name(a) + name(b);
            for (std::size_t c = 0; c < count; ++c) {
                if (before[a][b] && before[b][c] && !before[a][c])
                    return "in a row, but not the first before the third:" + name(a) + name(b) +
                           name(c);
                if (tied(a, b) && tied(b, c) && !tied(a, c))
                    return "tied in a row, but not the first with the third:" + name(a) + name(b) +
                           name(c);
            }
        }
    }
    return {};
}

}  // namespace reference::tests
