#include "reference/api/comparator/sortResults.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <numeric>
#include <span>
#include <tuple>
#include <utility>

#include "reference/api/comparator/IndexOrderComparator.hpp"
#include "reference/api/comparator/PreferredOrderComparator.hpp"
#include "reference/api/comparator/preferredOrder.hpp"

namespace reference::api::comparator {
namespace {

// Moves each result once. `order` says which result goes to each place.
void arrange(std::vector<ReferenceData>& results, const std::vector<std::size_t>& order) {
    std::vector<ReferenceData> arranged;
    arranged.reserve(results.size());
    for (const std::size_t from : order)
        arranged.push_back(std::move(results[from]));
    results.swap(arranged);
}

struct PreferredKeys {
    std::array<std::int64_t, std::size(preferredOrder)> keys;
    std::size_t place;  // last, so that results with the same keys stay in order
};

std::vector<std::size_t> inPreferredOrder(const std::vector<ReferenceData>& results) {
    std::vector<PreferredKeys> ranked(results.size());
    for (std::size_t place = 0; place < results.size(); ++place) {
        std::ranges::transform(preferredOrder, ranked[place].keys.begin(),
                               [&](const PreferredKey& key) { return key.keyOf(results[place]); });
        ranked[place].place = place;
    }
    std::ranges::sort(ranked, [](const PreferredKeys& a, const PreferredKeys& b) {
        return std::tie(a.keys, a.place) < std::tie(b.keys, b.place);
    });
    std::vector<std::size_t> order(results.size());
    std::ranges::transform(ranked, order.begin(), &PreferredKeys::place);
    return order;
}

// Merges two runs; of two that are tied, the one of the first run goes first. Asks nothing outside
// of the runs, and takes each once, whatever it is told.
template <typename GoesFirst>
void mergeRuns(std::span<const std::size_t> first, std::span<const std::size_t> second,
               std::span<std::size_t> merged, const GoesFirst& goesFirst) {
    for (std::size_t& place : merged) {
        const bool fromSecond =
            first.empty() || (!second.empty() && goesFirst(second.front(), first.front()));
        auto& run = fromSecond ? second : first;
        place = run.front();
        run = run.subspan(1);
    }
}

// A stable sort of our own, because comparators come from elsewhere, and the standard library's may
// read and write outside of the range for one that is no order ("a goes before b, and b before a").
std::vector<std::size_t> inOrderOf(const RefRequestComparator& comparator,
                                   const std::vector<ReferenceData>& results) {
    std::vector<std::size_t> order(results.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::vector<std::size_t> merged(order.size());
    const auto goesFirst = [&](std::size_t a, std::size_t b) {
        return comparator(results[a], results[b]);
    };
    for (std::size_t width = 1; width < order.size(); width *= 2) {
        for (std::size_t begin = 0; begin < order.size(); begin += 2 * width) {
            const std::size_t middle = std::min(begin + width, order.size());
            const std::size_t end = std::min(middle + width, order.size());
            mergeRuns(std::span(order).subspan(begin, middle - begin),
                      std::span(order).subspan(middle, end - middle),
                      std::span(merged).subspan(begin, end - begin), goesFirst);
        }
        order.swap(merged);
    }
    return order;
}

}  // namespace

void sortResults(std::vector<ReferenceData>& results, const RefRequestComparator& comparator) {
    if (results.size() < 2 || comparator.target<IndexOrderComparator>() != nullptr)
        return;
    if (comparator.target<PreferredOrderComparator>() != nullptr) {
        arrange(results, inPreferredOrder(results));
        return;
    }
    // A copy: a comparator that keeps state must not carry it into the next search.
    const RefRequestComparator own = comparator;
    arrange(results, inOrderOf(own, results));
}

}  // namespace reference::api::comparator
