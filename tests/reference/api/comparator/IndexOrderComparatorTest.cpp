#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "reference/api/comparator/IndexOrderComparator.hpp"
#include "support/Items.hpp"
#include "support/Print.hpp"

namespace reference::api::comparator {
namespace VELTRA_TEST_FILE {

TEST(IndexOrderComparatorTest, SortingWithItLeavesAnyInputUnchanged) {
    std::vector<ReferenceData> results;
    for (const char16_t name : std::u16string(u"cabbage"))
        results.emplace_back(
            property::HeaderInfo(),
            tests::makeItem({.href = std::u16string(1, name),
                             .deprecationStatus = name == u'b'
                                                      ? property::DeprecationStatus::Removed
                                                      : property::DeprecationStatus::Current}));
    const auto before = tests::dump(results);
    std::stable_sort(results.begin(), results.end(), IndexOrderComparator());
    EXPECT_EQ(tests::dump(results), before);
}

TEST(IndexOrderComparatorTest, TiesAResultWithItselfAndWithAnyOther) {
    const IndexOrderComparator comparator = IndexOrderComparator().copy();
    const ReferenceData empty;
    const ReferenceData full(property::HeaderInfo(), tests::makeFullItem(u"a"));
    EXPECT_FALSE(comparator(empty, empty));
    EXPECT_FALSE(comparator(empty, full));
    EXPECT_FALSE(comparator(full, empty));
}

TEST(IndexOrderComparatorTest, HasItsHostNames) {
    EXPECT_STREQ(IndexOrderComparator::getZORBClassName(), "IndexOrderComparator");
    EXPECT_STREQ(IndexOrderComparator::getZORBPackageName(),
                 "veltra.internal.reference.api.comparator");
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::api::comparator
