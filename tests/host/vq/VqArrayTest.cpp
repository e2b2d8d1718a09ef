#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "property/hostNames.hpp"
#include "support/HostValues.hpp"
#include "support/Threads.hpp"
#include "vq/matrix.hpp"
#include "vq/vqArray.hpp"

namespace VELTRA_TEST_FILE {

using reference::property::DeprecationStatus;
using reference::property::RefEntityType;
using reference::property::SeeAlso;
using reference::tests::LiveCounts;
using reference::tests::members;
using ::testing::ElementsAre;
using ::testing::IsNull;
using ::testing::NotNull;

TEST(VqArrayTest, KnowsItsShapeAndKind) {
    const vqArray texts(2, 3, vqArray::Strings(6));
    EXPECT_EQ(texts.getRows(), 2U);
    EXPECT_EQ(texts.getColumns(), 3U);
    EXPECT_EQ(texts.getNumberOfElements(), 6U);
    EXPECT_EQ(texts.getClass(), vqClass::String);
    EXPECT_THAT(texts.getIf<vqArray::Strings>(), NotNull());
    EXPECT_THAT(texts.getIf<vqArray::Numbers>(), IsNull());
}

TEST(VqArrayTest, EveryKindSaysWhatItIs) {
    EXPECT_EQ(matrix::createNumber(1)->getClass(), vqClass::UInt32);
    EXPECT_EQ(matrix::createDouble(1)->getClass(), vqClass::Double);
    EXPECT_EQ(matrix::createString(u"a")->getClass(), vqClass::String);
    EXPECT_EQ(matrix::createCellRow({})->getClass(), vqClass::Cell);
    EXPECT_EQ(matrix::createObjectRow({})->getClass(), vqClass::Object);
    EXPECT_EQ(members<RefEntityType>({1})->getClass(), vqClass::Enumeration);
}

TEST(VqArrayTest, RowsHaveOneRow) {
    const auto row = matrix::createNumberRow({4, 5, 6});
    EXPECT_EQ(row->getRows(), 1U);
    EXPECT_EQ(row->getColumns(), 3U);
    EXPECT_THAT(*row->getIf<vqArray::Numbers>(), ElementsAre(4U, 5U, 6U));
}

TEST(VqArrayTest, IsEqualByShapeKindAndElements) {
    EXPECT_EQ(*matrix::createStringRow({u"a", u"b"}), *matrix::createStringRow({u"a", u"b"}));
    EXPECT_FALSE(*matrix::createStringRow({u"a"}) == *matrix::createStringRow({u"b"}));
    EXPECT_FALSE(vqArray(1, 2, vqArray::Numbers{1, 2}) == vqArray(2, 1, vqArray::Numbers{1, 2}));
    EXPECT_FALSE(*matrix::createNumber(1) == *matrix::createDouble(1));
    EXPECT_FALSE(*members<RefEntityType>({1}) == *members<DeprecationStatus>({1}));
    // An empty row and an empty column are not the same.
    EXPECT_FALSE(vqArray(1, 0, vqArray::Numbers{}) == vqArray(0, 1, vqArray::Numbers{}));
}

TEST(VqArrayTest, CellsAreEqualByWhatTheyHold) {
    const auto one = matrix::createCellRow({matrix::createNumber(1), nullptr});
    const auto same = matrix::createCellRow({matrix::createNumber(1), nullptr});
    const auto other = matrix::createCellRow({matrix::createNumber(2), nullptr});
    const auto empty = matrix::createCellRow({nullptr, nullptr});
    EXPECT_EQ(*one, *same);
    EXPECT_FALSE(*one == *other);
    EXPECT_FALSE(*one == *empty);
    EXPECT_FALSE(*empty == *one);
}

TEST(VqArrayTest, ObjectsAreEqualByIdentity) {
    const auto object = zorb::wrap(SeeAlso(u"page", u"name"));
    EXPECT_EQ(*object, *vqArrayPtr(new vqArray(*object)));
    EXPECT_FALSE(*object == *zorb::wrap(SeeAlso(u"page", u"name")));
}

TEST(VqArrayTest, IsWrittenToUntilItIsShared) {
    vqArray array(1, 1, vqArray::Numbers{7});
    auto* numbers = array.getIfWritable<vqArray::Numbers>();
    ASSERT_THAT(numbers, NotNull());
    numbers->front() = 8;
    EXPECT_THAT(*array.getIf<vqArray::Numbers>(), ElementsAre(8U));
    EXPECT_THAT(array.getIfWritable<vqArray::Strings>(), IsNull());

    const vqArray copy(array);
    EXPECT_TRUE(array.isShared());
    EXPECT_THAT(array.getIfWritable<vqArray::Numbers>(), IsNull());
}

TEST(VqArrayTest, ACopySharesTheElementsAndOutlivesTheirOwner) {
    const vqArrayPtr copy = [] {
        const auto owner = matrix::createStringRow({u"a", u"b"});
        return vqArrayPtr(new vqArray(*owner));
    }();
    EXPECT_FALSE(copy->isShared());
    EXPECT_THAT(*copy->getIf<vqArray::Strings>(), ElementsAre(u"a", u"b"));
}

TEST(VqArrayTest, TwoOwnersAreSharing) {
    auto* array = new vqArray(1, 1, vqArray::Numbers{7});
    const vqArrayPtr one(array);
    EXPECT_FALSE(array->isShared());
    const vqArrayPtr two(array);
    EXPECT_TRUE(array->isShared());
    EXPECT_THAT(array->getIfWritable<vqArray::Numbers>(), IsNull());
}

TEST(VqArrayTest, LiveOnesAreCounted) {
    const LiveCounts before;
    {
        const auto cell = matrix::createCellRow({matrix::createNumber(1), matrix::createDouble(2)});
        EXPECT_EQ(vqArray::getNumberOfLiveArrays(), before.arrays + 3);
        const auto object = zorb::wrap(SeeAlso());
        EXPECT_EQ(zorb::COSInterface::getNumberOfLiveObjects(), before.objects + 1);
    }
    EXPECT_EQ(LiveCounts(), before);
}

TEST(VqArrayConcurrencyTest, OwnersMayComeAndGoOnAnyThread) {
    const LiveCounts before;
    {
        const auto shared = matrix::createStringRow({u"a", u"b"});
        const auto work = [&shared] {
            const vqArrayPtr owner = shared;
            const vqArray copy(*owner);
            ASSERT_EQ(copy, *shared);
        };
        reference::tests::runTogether({work, work, work}, 2000);
        EXPECT_FALSE(shared->isShared());
    }
    EXPECT_EQ(LiveCounts(), before);
}

TEST(MatrixTest, UninitialisedNumericArraysAreNumeric) {
    using matrix::detail::do_create_uninitnumeric;
    auto* array = do_create_uninitnumeric(1, 1, vqClass::UInt32);
    array->getIfWritable<vqArray::Numbers>()->front() = 5;
    EXPECT_EQ(*matrix::from_veltra(array), *matrix::createNumber(5));
    matrix::destroyArray(do_create_uninitnumeric(3, 2, vqClass::Double));
    EXPECT_THROW(static_cast<void>(do_create_uninitnumeric(1, 1, vqClass::String)),
                 std::invalid_argument);
}

TEST(MatrixTest, NullIsNobodysArray) {
    EXPECT_FALSE(matrix::from_veltra(nullptr));
    matrix::destroyArray(nullptr);
}

TEST(MatrixTest, DestroyingEndsAnArrayThatHasNoOwner) {
    const LiveCounts before;
    matrix::destroyArray(omCreateZORBScalar(omGetArrayElement(zorb::wrap(SeeAlso()).get(), 0)));
    EXPECT_EQ(LiveCounts(), before);
}

}  // namespace VELTRA_TEST_FILE
