// What ordering costs in memory: nothing, as long as names are not very long. In a program of its
// own, because it counts every allocation.
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "reference/api/comparator/EntityMatchComparator.hpp"
#include "reference/api/comparator/EntityNameMatchComparator.hpp"
#include "reference/api/comparator/PageNameMatchComparator.hpp"
#include "support/Comparators.hpp"
#include "support/Generator.hpp"
#include "support/Items.hpp"
#include "support/LiveAllocations.hpp"

namespace reference::api::comparator {
namespace VELTRA_TEST_FILE {

using property::FunctionType;
using property::RefEntityType;
using tests::LiveAllocations;
using enum EntityCaseSensitivity::Value;

ReferenceData named(const std::u16string& name) {
    return {{},
            tests::makeItem({.href = u"ref/" + name + u".html",
                             .entities = {{RefEntityType::Class, name, FunctionType::Function}}})};
}

// The host throws for such a name, and an exception is an allocation.
bool hasUnpairedSurrogate(const ReferenceData& result) {
    return std::ranges::any_of(result.getRefItem().getRefEntities(), [](const auto& entity) {
        return std::ranges::any_of(entity.getName(),
                                   [](char16_t unit) { return unit >= 0xD800 && unit < 0xE000; });
    });
}

// How many allocations comparing two results takes, both ways.
template <typename Comparator>
long allocationsOf(const Comparator& comparator, const ReferenceData& a, const ReferenceData& b) {
    const long before = LiveAllocations::made();
    static_cast<void>(comparator(a, b));
    static_cast<void>(comparator(b, a));
    return LiveAllocations::made() - before;
}

TEST(AllocationTest, ACountIsTaken) {
    const long before = LiveAllocations::made();
    const std::u16string text(100, u'a');
    EXPECT_EQ(LiveAllocations::made() - before, 1);
}

TEST(AllocationTest, ComparatorsOfAnyClassAllocateNothing) {
    for (std::uint32_t seed = 1; seed <= 20; ++seed) {
        tests::Generator generator(seed);
        auto results = generator.results(30);
        std::erase_if(results, hasUnpairedSurrogate);
        ASSERT_GT(results.size(), 10U);
        for (const auto& one : tests::comparatorsAtRandom(generator))
            for (const auto& a : results)
                for (const auto& b : results)
                    ASSERT_EQ(allocationsOf(one.native, a, b), 0)
                        << one.className << ", seed " << seed;
    }
}

TEST(AllocationTest, ANameIsFoldedOnTheStackUpTo1024Units) {
    const EntityNameMatchComparator byName(u"x", Insensitive);
    const EntityMatchComparator byNameAndType(u"x", RefEntityType::Class, Insensitive);
    const PageNameMatchComparator byPage(u"x", Insensitive);
    const ReferenceData other;
    struct Case {
        const char* name;
        std::u16string entity;
        bool fits;
    };
    const Case cases[] = {
        {"short", u"Plot", true},
        {"short, beyond ASCII", u"\u00C4rger \u03A3", true},
        {"1,024 units", std::u16string(1024, u'A'), true},
        {"1,024 units, beyond ASCII", std::u16string(1024, u'\u00C4'), true},
        {"1,024 units when folded", std::u16string(512, u'\u0130'), true},
        {"1,025 units", std::u16string(1025, u'A'), false},
        {"1,025 units, beyond ASCII", std::u16string(1025, u'\u00C4'), false},
        {"1,026 units when folded", std::u16string(513, u'\u0130'), false},
    };
    for (const auto& c : cases) {
        const ReferenceData result = named(c.entity);
        EXPECT_EQ(allocationsOf(byName, result, other) == 0, c.fits) << c.name;
        EXPECT_EQ(allocationsOf(byNameAndType, result, other) == 0, c.fits) << c.name;
        // File names have a fold of their own, which cuts and never allocates.
        EXPECT_EQ(allocationsOf(byPage, result, other), 0) << c.name;
        EXPECT_EQ(allocationsOf(EntityNameMatchComparator(u"x", Sensitive), result, other), 0)
            << c.name;
    }
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::api::comparator
