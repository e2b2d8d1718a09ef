#include "reference/api/comparator/sortResults.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <numeric>
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

std::vector<std::size_t> inOrderOf(const RefRequestComparator& comparator,
                                   const std::vector<ReferenceData>& results) {
    std::vector<std::size_t> order(results.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(
        order, [&](std::size_t a, std::size_t b) { return comparator(results[a], results[b]); });
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
