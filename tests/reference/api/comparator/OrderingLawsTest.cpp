// Every comparator is a strict weak ordering, and the preferred order is the chain that it stands
// for: over results at random.

#include <cstdint>

#include <gtest/gtest.h>

#include "reference/api/comparator/CompoundReferenceComparator.hpp"
#include "reference/api/comparator/DeprecatedOrderComparator.hpp"
#include "reference/api/comparator/EntityTypeOrderComparator.hpp"
#include "reference/api/comparator/FunctionTypeOrderComparator.hpp"
#include "reference/api/comparator/PreferredOrderComparator.hpp"
#include "reference/api/comparator/ProductMatchComparator.hpp"
#include "support/Comparators.hpp"
#include "support/Generator.hpp"
#include "support/OrderingLaws.hpp"
#include "support/Print.hpp"

namespace reference::api::comparator {
namespace VELTRA_TEST_FILE {

using tests::Generator;

constexpr std::uint32_t seeds = 40;

TEST(OrderingLawsTest, HoldForEveryComparator) {
    for (std::uint32_t seed = 1; seed <= seeds; ++seed) {
        Generator generator(seed);
        const auto results = generator.results(24);
        for (const auto& one : tests::comparatorsAtRandom(generator))
            ASSERT_EQ(tests::brokenOrderingLaw(one.native, results), "")
                << one.className << ", seed " << seed;
    }
}

TEST(OrderingLawsTest, AreFoundBroken) {
    Generator generator(1);
    const auto results = generator.results(8);
    const auto always = [](const ReferenceData&, const ReferenceData&) { return true; };
    EXPECT_NE(tests::brokenOrderingLaw(always, results), "");
    // Ordered by address in a ring: never both ways, but not transitive.
    const auto ring = [&results](const ReferenceData& a, const ReferenceData& b) {
        return ((&b - results.data()) - (&a - results.data()) + 8) % 8 == 1;
    };
    EXPECT_NE(tests::brokenOrderingLaw(ring, results), "");
}

TEST(PreferredOrderComparatorTest, AnswersLikeTheCompoundOfItsFiveComparators) {
    const CompoundReferenceComparator chain(
        {DeprecatedOrderComparator(), ProductMatchComparator(u"veltra"),
         ProductMatchComparator(u"pendrake"), EntityTypeOrderComparator(),
         FunctionTypeOrderComparator()});
    const PreferredOrderComparator preferred;
    std::size_t decided = 0;
    for (std::uint32_t seed = 1; seed <= seeds; ++seed) {
        const auto results = Generator(seed).results(40);
        for (const auto& a : results)
            for (const auto& b : results) {
                ASSERT_EQ(preferred(a, b), chain(a, b))
                    << "seed " << seed << ": " << tests::dump(a) << " and " << tests::dump(b);
                if (chain(a, b))
                    ++decided;
            }
    }
    EXPECT_GT(decided, 1000u);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::api::comparator
