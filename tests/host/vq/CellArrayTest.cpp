#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/HostValues.hpp"
#include "vq/CellArray.hpp"
#include "vq/matrix.hpp"

namespace VELTRA_TEST_FILE {

using reference::tests::outcomeOf;

constexpr const char* notCells = "invalid argument: Array is not cell array.";
constexpr const char* notWritable = "invalid argument: Cell array is not writable.";
constexpr const char* outOfRange = "out of range: Cell index is out of range.";

TEST(CellArrayTest, TakesNothingButCellArrays) {
    const auto text = matrix::createString(u"a");
    const vqArray* const none = nullptr;
    EXPECT_EQ(outcomeOf([&] { CellArray cells(none); }), notCells);
    EXPECT_EQ(outcomeOf([&] { CellArray cells(text.get()); }), notCells);
    vqArray numbers(1, 1, vqArray::Numbers{1});
    EXPECT_EQ(outcomeOf([&] { CellArray cells(&numbers); }), notCells);
}

TEST(CellArrayTest, ReadsWhatTheCellsHold) {
    const auto number = matrix::createNumber(1);
    const auto array = matrix::createCellRow({number, nullptr});
    const CellArray cells(array.get());
    EXPECT_EQ(cells.size(), 2U);
    EXPECT_EQ(cells.read(0), number);
    EXPECT_FALSE(cells.read(1));
    EXPECT_EQ(outcomeOf([&] { return cells.read(2); }), outOfRange);
}

TEST(CellArrayTest, AnEmptyOneHasNoCellToRead) {
    const auto array = matrix::createCellRow({});
    EXPECT_EQ(outcomeOf([&] { return CellArray(array.get()).read(0); }), outOfRange);
}

TEST(CellArrayTest, WritesWhileTheArrayHasOneOwner) {
    auto* raw = new vqArray(1, 1, vqArray::Cells(1));
    const vqArrayPtr owner(raw);
    CellArray cells(raw);
    const auto number = matrix::createNumber(1);
    cells.write(0, number);
    EXPECT_EQ(cells.read(0), number);
    EXPECT_EQ(outcomeOf([&] { cells.write(1, number); }), outOfRange);
}

TEST(CellArrayTest, DoesNotWriteToWhatIsShared) {
    auto* raw = new vqArray(1, 1, vqArray::Cells(1));
    const vqArrayPtr owner(raw);
    CellArray cells(raw);
    {
        const vqArrayPtr second(raw);
        EXPECT_EQ(outcomeOf([&] { cells.write(0, nullptr); }), notWritable);
    }
    {
        const vqArray sharesTheElements(*raw);
        EXPECT_EQ(outcomeOf([&] { cells.write(0, nullptr); }), notWritable);
    }
    EXPECT_EQ(outcomeOf([&] { cells.write(0, nullptr); }), "");
}

TEST(CellArrayTest, DoesNotWriteToWhatIsConst) {
    const auto array = matrix::createCellRow({nullptr});
    CellArray cells(array.get());
    EXPECT_EQ(outcomeOf([&] { cells.write(0, nullptr); }), notWritable);
}

}  // namespace VELTRA_TEST_FILE
