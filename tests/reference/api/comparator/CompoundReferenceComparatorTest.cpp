#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "reference/api/comparator/CompoundReferenceComparator.hpp"
#include "reference/api/comparator/IndexOrderComparator.hpp"
#include "vq/matrix.hpp"

namespace reference::api::comparator {
namespace VELTRA_TEST_FILE {

using ::testing::ElementsAre;

// A result of two digits in its short name, for comparators that look at one each.
ReferenceData numbered(std::u16string digits) {
    return {property::HeaderInfo({}, {}, std::move(digits), {}, {}), property::RefItem()};
}

std::u16string digitsOf(const ReferenceData& data) {
    return data.getHeaderInfo().getShortName();
}

// Orders by one digit, and writes down each question that it is asked.
RefRequestComparator byDigit(std::size_t place, std::vector<std::u16string>* questions = nullptr) {
    return [place, questions](const ReferenceData& a, const ReferenceData& b) {
        if (questions != nullptr)
            questions->push_back(digitsOf(a) + u"<" + digitsOf(b));
        return digitsOf(a)[place] < digitsOf(b)[place];
    };
}

TEST(CompoundReferenceComparatorTest, EmptyListTiesEverything) {
    const CompoundReferenceComparator comparator;
    EXPECT_FALSE(comparator(numbered(u"1"), numbered(u"2")));
    EXPECT_FALSE(comparator(numbered(u"2"), numbered(u"1")));

    std::vector<ReferenceData> results;
    for (const char16_t digit : std::u16string(u"31213"))
        results.push_back(numbered(std::u16string(1, digit)));
    std::stable_sort(results.begin(), results.end(), comparator);
    std::u16string order;
    for (const auto& result : results)
        order += digitsOf(result);
    EXPECT_EQ(order, u"31213");
}

TEST(CompoundReferenceComparatorTest, LaterComparatorOnlyBreaksTies) {
    const CompoundReferenceComparator comparator({byDigit(0), byDigit(1)});
    EXPECT_TRUE(comparator(numbered(u"19"), numbered(u"21")));
    EXPECT_FALSE(comparator(numbered(u"21"), numbered(u"19")));
    EXPECT_TRUE(comparator(numbered(u"21"), numbered(u"22")));
    EXPECT_FALSE(comparator(numbered(u"22"), numbered(u"21")));
    EXPECT_FALSE(comparator(numbered(u"22"), numbered(u"22")));
}

TEST(CompoundReferenceComparatorTest, AsksNothingAfterTheComparatorThatDecides) {
    std::vector<std::u16string> first;
    std::vector<std::u16string> second;
    const CompoundReferenceComparator comparator({byDigit(0, &first), byDigit(1, &second)});
    EXPECT_TRUE(comparator(numbered(u"11"), numbered(u"22")));
    EXPECT_FALSE(comparator(numbered(u"21"), numbered(u"12")));
    EXPECT_TRUE(second.empty());
    EXPECT_THAT(first, ElementsAre(u"22<11", u"11<22", u"12<21"));
}

TEST(CompoundReferenceComparatorTest, AsksTheReverseQuestionFirst) {
    std::vector<std::u16string> questions;
    const CompoundReferenceComparator comparator({byDigit(0, &questions)});
    EXPECT_FALSE(comparator(numbered(u"1"), numbered(u"1")));
    EXPECT_TRUE(comparator(numbered(u"1"), numbered(u"2")));
    EXPECT_THAT(questions, ElementsAre(u"1<1", u"1<1", u"2<1", u"1<2"));
}

TEST(CompoundReferenceComparatorTest, OfTwoYesesTheReverseOneWins) {
    const auto alwaysYes = [](const ReferenceData&, const ReferenceData&) { return true; };
    const CompoundReferenceComparator comparator({alwaysYes});
    EXPECT_FALSE(comparator(numbered(u"1"), numbered(u"2")));
    EXPECT_FALSE(comparator(numbered(u"2"), numbered(u"1")));
}

TEST(CompoundReferenceComparatorTest, EmptyFunctionThrowsOnlyWhenItIsReached) {
    const CompoundReferenceComparator comparator({byDigit(0), RefRequestComparator()});
    EXPECT_TRUE(comparator(numbered(u"1"), numbered(u"2")));
    EXPECT_FALSE(comparator(numbered(u"2"), numbered(u"1")));
    EXPECT_THROW(static_cast<void>(comparator(numbered(u"1"), numbered(u"1"))),
                 std::bad_function_call);
}

TEST(CompoundReferenceComparatorTest, CopyIsIndependent) {
    CompoundReferenceComparator original({byDigit(0)});
    CompoundReferenceComparator copy = original;
    copy = CompoundReferenceComparator({byDigit(1)});
    EXPECT_TRUE(original(numbered(u"12"), numbered(u"21")));
    EXPECT_TRUE(copy(numbered(u"21"), numbered(u"12")));

    const CompoundReferenceComparator moved = std::move(original);
    EXPECT_TRUE(moved(numbered(u"12"), numbered(u"21")));
}

// Reverses its answers from the moment on that it was told to.
struct Reversible {
    bool isReversed = false;
    bool operator()(const ReferenceData& a, const ReferenceData& b) const {
        return isReversed ? digitsOf(b) < digitsOf(a) : digitsOf(a) < digitsOf(b);
    }
};

TEST(CompoundReferenceComparatorTest, ACopyAndItsSourceDoNotChangeEachOther) {
    const ReferenceData one = numbered(u"1");
    const ReferenceData two = numbered(u"2");
    // What a script sets on one of them: no comparators.
    const auto cells = matrix::createCellRow({});

    CompoundReferenceComparator source({byDigit(0)});
    CompoundReferenceComparator copy = source;
    copy.setComparatorsProperty(cells.get());
    EXPECT_FALSE(copy(one, two));
    EXPECT_TRUE(source(one, two));
    EXPECT_EQ(source.getComparatorsProperty(), nullptr);

    CompoundReferenceComparator assigned;
    assigned = source;
    source.setComparatorsProperty(cells.get());
    EXPECT_FALSE(source(one, two));
    EXPECT_TRUE(assigned(one, two));
    EXPECT_EQ(assigned.getComparatorsProperty(), nullptr);
}

TEST(CompoundReferenceComparatorTest, ACopyHoldsEachComparatorWithItsOwnState) {
    std::vector<RefRequestComparator> list{Reversible()};
    const CompoundReferenceComparator source(list);
    list[0].target<Reversible>()->isReversed = true;
    const CompoundReferenceComparator reversed(list);
    const CompoundReferenceComparator copy = source;
    EXPECT_TRUE(source(numbered(u"1"), numbered(u"2")));
    EXPECT_TRUE(copy(numbered(u"1"), numbered(u"2")));
    EXPECT_FALSE(reversed(numbered(u"1"), numbered(u"2")));
}

TEST(CompoundReferenceComparatorTest, ComposesWithItself) {
    const CompoundReferenceComparator inner({IndexOrderComparator(), byDigit(1)});
    const CompoundReferenceComparator outer({byDigit(0), inner});
    EXPECT_TRUE(outer(numbered(u"12"), numbered(u"21")));
    EXPECT_TRUE(outer(numbered(u"11"), numbered(u"12")));
    EXPECT_FALSE(outer(numbered(u"12"), numbered(u"11")));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::api::comparator
