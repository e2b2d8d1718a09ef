#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "foundation/core/except/IMsgIDException.hpp"
#include "reference/api/ReferenceRequest.hpp"
#include "reference/api/comparator/EntityTypeMatchComparator.hpp"
#include "reference/api/comparator/IndexOrderComparator.hpp"
#include "reference/api/comparator/ProductMatchComparator.hpp"
#include "reference/utils/getComparatorFromVq.hpp"
#include "support/Comparators.hpp"
#include "support/Generator.hpp"
#include "support/HostValues.hpp"
#include "support/Print.hpp"

namespace reference::utils {
namespace VELTRA_TEST_FILE {

using namespace api::comparator;
using api::ReferenceData;
using api::RefRequestComparator;
using property::RefEntityType;
using ::testing::ElementsAre;
using tests::construct;
using tests::Generator;
using tests::members;
using tests::nativeOf;
using tests::objects;

std::vector<std::string> sorted(const std::vector<ReferenceData>& results,
                                const RefRequestComparator& comparator) {
    std::vector<const ReferenceData*> order;
    for (const auto& result : results)
        order.push_back(&result);
    std::stable_sort(order.begin(), order.end(),
                     [&comparator](const ReferenceData* a, const ReferenceData* b) {
                         return comparator(*a, *b);
                     });
    std::vector<std::string> dumps;
    for (const auto* result : order)
        dumps.push_back(std::to_string(result - results.data()) + " " + tests::dump(*result));
    return dumps;
}

TEST(GetComparatorFromVqTest, OrdersAsTheSameComparatorDoesNatively) {
    for (std::uint32_t seed = 1; seed <= 200; ++seed) {
        Generator generator(seed);
        const auto results = generator.results(30);
        const auto all = tests::comparatorsAtRandom(generator);
        ASSERT_EQ(all.size(), tests::comparatorClassNames().size());
        for (const auto& [name, object, native, fields] : all)
            ASSERT_EQ(sorted(results, getComparatorFromVq(object.get())), sorted(results, native))
                << name << ", seed " << seed;
    }
}

TEST(GetComparatorFromVqTest, TakesTheFirstOfSeveral) {
    const std::u16string folders[] = {u"a", u"b"};
    const auto first = construct<ProductMatchComparator>();
    const auto second = construct<ProductMatchComparator>();
    nativeOf<ProductMatchComparator>(first).setProductNameProperty(&folders[0]);
    nativeOf<ProductMatchComparator>(second).setProductNameProperty(&folders[1]);
    const auto comparator = getComparatorFromVq(objects({first, second}).get());
    const ReferenceData a(property::HeaderInfo({}, u"a", {}, {}, {}), {});
    const ReferenceData b(property::HeaderInfo({}, u"b", {}, {}, {}), {});
    EXPECT_TRUE(comparator(a, b));
}

TEST(GetComparatorFromVqTest, HoldsACopyThatSharesTheHostValues) {
    const auto object = construct<EntityTypeMatchComparator>();
    const vqArray* shown = nativeOf<EntityTypeMatchComparator>(object).getRefEntityTypeProperty();
    const auto comparator = getComparatorFromVq(object.get());
    const auto* held = comparator.target<EntityTypeMatchComparator>();
    ASSERT_NE(held, nullptr);
    EXPECT_NE(held, &nativeOf<EntityTypeMatchComparator>(object));
    EXPECT_EQ(held->getRefEntityTypeProperty(), shown);
}

TEST(GetComparatorFromVqTest, OutlivesTheObject) {
    auto object = construct<ProductMatchComparator>();
    const std::u16string folder = u"a";
    nativeOf<ProductMatchComparator>(object).setProductNameProperty(&folder);
    const auto comparator = getComparatorFromVq(object.get());
    object.reset();
    const ReferenceData a(property::HeaderInfo({}, u"a", {}, {}, {}), {});
    EXPECT_TRUE(comparator(a, ReferenceData()));
}

// What the error for a value says of its class.
std::vector<std::string> argumentsFor(const vqArrayPtr& value) {
    try {
        static_cast<void>(getComparatorFromVq(value.get()));
    } catch (const foundation::core::except::IMsgIDException& error) {
        EXPECT_EQ(error.getIdentifier(), "VELTRA:referenceapi:InvalidComparator");
        return error.getArguments();
    }
    return {"nothing was thrown"};
}

TEST(GetComparatorFromVqTest, NamesTheClassOfWhatIsNoComparator) {
    EXPECT_THAT(argumentsFor(construct<api::ReferenceRequest>()),
                ElementsAre("veltra.internal.reference.api.ReferenceRequest"));
    EXPECT_THAT(argumentsFor(members<RefEntityType>({1})),
                ElementsAre(zorb::HostName<RefEntityType>::id().str()));
    EXPECT_THAT(argumentsFor(matrix::createString(u"preferred")), ElementsAre("string"));
    EXPECT_THAT(argumentsFor(matrix::createNumber(1)), ElementsAre("uint32"));
    EXPECT_THAT(argumentsFor(matrix::createCellRow({construct<IndexOrderComparator>()})),
                ElementsAre("cell"));
    EXPECT_THAT(argumentsFor(matrix::createObjectRow({})), ElementsAre("object"));
    EXPECT_THAT(argumentsFor(matrix::createObjectRow({nullptr})), ElementsAre("object"));
    EXPECT_THAT(argumentsFor(nullptr), ElementsAre("null"));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::utils
