// The comparators' properties as the scripting language sees them.

#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "reference/api/ReferenceRequest.hpp"
#include "reference/api/comparator/CompoundReferenceComparator.hpp"
#include "reference/api/comparator/EntityMatchComparator.hpp"
#include "reference/api/comparator/EntityNameMatchComparator.hpp"
#include "reference/api/comparator/EntityTypeMatchComparator.hpp"
#include "reference/api/comparator/PageNameMatchComparator.hpp"
#include "reference/api/comparator/ProductMatchComparator.hpp"
#include "support/HostValues.hpp"
#include "support/Items.hpp"

namespace reference::api::comparator {
namespace VELTRA_TEST_FILE {

using property::FunctionType;
using property::RefEntityType;
using ::testing::IsNull;
using tests::construct;
using tests::members;
using tests::nativeOf;
using tests::objects;
using tests::outcomeOf;

const auto sensitive = EntityCaseSensitivity::Sensitive;
const auto insensitive = EntityCaseSensitivity::Insensitive;

ReferenceData named(const std::u16string& name) {
    return {{},
            tests::makeItem({.href = u"ref/" + name + u".html",
                             .entities = {{RefEntityType::Class, name, FunctionType::Function}}})};
}

ReferenceData ofFolder(const std::u16string& folder) {
    return {property::HeaderInfo({}, folder, {}, {}, {}), property::RefItem()};
}

// The comparators that have the property EntityCaseSensitivity, made for the name "Plot".
template <typename T>
T forPlot() {
    return T(u"Plot", sensitive);
}
template <>
EntityMatchComparator forPlot<EntityMatchComparator>() {
    return {u"Plot", RefEntityType::Class, sensitive};
}

template <typename T>
class CaseSensitivityPropertyTest : public ::testing::Test {};
using CaseSensitive =
    ::testing::Types<EntityMatchComparator, EntityNameMatchComparator, PageNameMatchComparator>;
TYPED_TEST_SUITE(CaseSensitivityPropertyTest, CaseSensitive);

TYPED_TEST(CaseSensitivityPropertyTest, IsMadeOnceAndSharedByCopies) {
    const auto comparator = forPlot<TypeParam>();
    const vqArray* first = comparator.getEntityCaseSensitivityProperty();
    EXPECT_EQ(*first, *members<EntityCaseSensitivity>({0}));
    EXPECT_EQ(comparator.getEntityCaseSensitivityProperty(), first);
    TypeParam copy = comparator;
    EXPECT_EQ(copy.getEntityCaseSensitivityProperty(), first);
    const TypeParam moved = std::move(copy);
    EXPECT_EQ(moved.getEntityCaseSensitivityProperty(), first);
}

TYPED_TEST(CaseSensitivityPropertyTest, ANativeSetterLeavesItAlone) {
    auto comparator = forPlot<TypeParam>();
    const vqArray* first = comparator.getEntityCaseSensitivityProperty();
    comparator.setEntityCaseSensitivity(insensitive);
    EXPECT_EQ(comparator.getEntityCaseSensitivityProperty(), first);
    EXPECT_EQ(*first, *members<EntityCaseSensitivity>({0}));
}

TYPED_TEST(CaseSensitivityPropertyTest, SettingItDerivesTheComparedNameAnew) {
    auto comparator = forPlot<TypeParam>();
    EXPECT_FALSE(comparator(named(u"PLOT"), named(u"a")));
    const auto value = members<EntityCaseSensitivity>({1});
    comparator.setEntityCaseSensitivityProperty(value.get());
    EXPECT_EQ(comparator.getEntityCaseSensitivity(), insensitive);
    EXPECT_EQ(*comparator.getEntityCaseSensitivityProperty(), *value);
    EXPECT_TRUE(comparator(named(u"PLOT"), named(u"a")));
    comparator.setEntityCaseSensitivityProperty(nullptr);
    EXPECT_EQ(comparator.getEntityCaseSensitivity(), insensitive);
}

TEST(PageNameMatchPropertyTest, ANullCaseSensitivityDoesNotDeriveTheComparedName) {
    PageNameMatchComparator comparator;
    const ReferenceData withoutPage{{}, tests::makeItem({})};
    EXPECT_TRUE(comparator(withoutPage, named(u"a")));
    comparator.setEntityCaseSensitivityProperty(nullptr);
    EXPECT_TRUE(comparator(withoutPage, named(u"a")));
    comparator.setEntityCaseSensitivityProperty(members<EntityCaseSensitivity>({0}).get());
    EXPECT_FALSE(comparator(withoutPage, named(u"a")));  // ".html" is compared from now on
}

template <typename T>
class RefEntityTypePropertyTest : public ::testing::Test {};
using Typed = ::testing::Types<EntityMatchComparator, EntityTypeMatchComparator>;
TYPED_TEST_SUITE(RefEntityTypePropertyTest, Typed);

TYPED_TEST(RefEntityTypePropertyTest, BeginsAsUnknownAndIsMadeOnce) {
    TypeParam comparator;
    const vqArray* first = comparator.getRefEntityTypeProperty();
    EXPECT_EQ(*first, *members<RefEntityType>({27}));
    comparator.setRefEntityType(RefEntityType::Class);
    EXPECT_EQ(comparator.getRefEntityTypeProperty(), first);
    const TypeParam copy = comparator;
    EXPECT_EQ(copy.getRefEntityTypeProperty(), first);
}

TYPED_TEST(RefEntityTypePropertyTest, TakesOneMember) {
    TypeParam comparator;
    const auto value = members<RefEntityType>({RefEntityType::Method});
    comparator.setRefEntityTypeProperty(value.get());
    EXPECT_EQ(comparator.getRefEntityType(), RefEntityType::Method);
    EXPECT_EQ(*comparator.getRefEntityTypeProperty(), *value);
    EXPECT_EQ(outcomeOf([&] {
                  comparator.setRefEntityTypeProperty(members<RefEntityType>({1, 2}).get());
              }),
              "VELTRA:class:RequireScalar");
    EXPECT_EQ(comparator.getRefEntityType(), RefEntityType::Method);
}

TEST(EntityMatchPropertyTest, TheTwoEnumerationsHaveACacheEach) {
    EntityMatchComparator comparator(u"a", RefEntityType::Class, insensitive);
    EXPECT_EQ(*comparator.getRefEntityTypeProperty(), *members<RefEntityType>({1}));
    EXPECT_EQ(*comparator.getEntityCaseSensitivityProperty(), *members<EntityCaseSensitivity>({1}));
}

class CompoundPropertyTest : public ::testing::Test {
  protected:
    static vqArrayPtr productMatch(const std::u16string& folder) {
        auto object = construct<ProductMatchComparator>();
        nativeOf<ProductMatchComparator>(object).setProductNameProperty(&folder);
        return object;
    }

    // Whether results of the folder go before those of none.
    [[nodiscard]] bool prefers(const std::u16string& folder) const {
        return m_compound(ofFolder(folder), ofFolder({}));
    }

    std::string set(const vqArrayPtr& value) {
        return outcomeOf([&] { m_compound.setComparatorsProperty(value.get()); });
    }

    CompoundReferenceComparator m_compound;
};

TEST_F(CompoundPropertyTest, IsNullUntilAScriptSetsIt) {
    EXPECT_THAT(m_compound.getComparatorsProperty(), IsNull());
    EXPECT_THAT(
        CompoundReferenceComparator({ProductMatchComparator(u"a")}).getComparatorsProperty(),
        IsNull());
}

TEST_F(CompoundPropertyTest, TakesOneComparatorFromEachCellAndShowsTheCells) {
    const auto cells = matrix::createCellRow({productMatch(u"a"), productMatch(u"b")});
    EXPECT_EQ(set(cells), "");
    EXPECT_EQ(*m_compound.getComparatorsProperty(), *cells);
    EXPECT_TRUE(prefers(u"a"));
    EXPECT_TRUE(prefers(u"b"));
    EXPECT_TRUE(m_compound(ofFolder(u"a"), ofFolder(u"b")));
    EXPECT_FALSE(m_compound(ofFolder(u"b"), ofFolder(u"a")));
    const CompoundReferenceComparator copy = m_compound;
    EXPECT_EQ(copy.getComparatorsProperty(), m_compound.getComparatorsProperty());
}

TEST_F(CompoundPropertyTest, AnEmptyCellArrayLeavesNoComparators) {
    EXPECT_EQ(set(matrix::createCellRow({productMatch(u"a")})), "");
    const auto empty = matrix::createCellRow({});
    EXPECT_EQ(set(empty), "");
    EXPECT_FALSE(prefers(u"a"));
    ASSERT_NE(m_compound.getComparatorsProperty(), nullptr);
    EXPECT_EQ(*m_compound.getComparatorsProperty(), *empty);
}

TEST_F(CompoundPropertyTest, NullIsIgnored) {
    EXPECT_EQ(set(matrix::createCellRow({productMatch(u"a")})), "");
    const vqArray* before = m_compound.getComparatorsProperty();
    EXPECT_EQ(set(nullptr), "");
    EXPECT_EQ(m_compound.getComparatorsProperty(), before);
    EXPECT_TRUE(prefers(u"a"));
}

TEST_F(CompoundPropertyTest, WhatIsNoCellArrayIsRefused) {
    for (const auto& value : {productMatch(u"a"), matrix::createObjectRow({}),
                              matrix::createStringRow({}), matrix::createNumber(1)})
        EXPECT_EQ(set(value), "VELTRA:referenceapi:ExpectedComparatorCellArray");
    EXPECT_THAT(m_compound.getComparatorsProperty(), IsNull());
}

TEST_F(CompoundPropertyTest, OneBadCellChangesNothing) {
    EXPECT_EQ(set(matrix::createCellRow({productMatch(u"a")})), "");
    const vqArray* before = m_compound.getComparatorsProperty();
    const std::vector<vqArrayPtr> bad = {
        nullptr,
        matrix::createNumber(1),
        matrix::createString(u"b"),
        matrix::createObjectRow({}),
        matrix::createCellRow({productMatch(u"b")}),
        construct<ReferenceRequest>(),
    };
    for (const auto& cell : bad) {
        EXPECT_EQ(set(matrix::createCellRow({productMatch(u"b"), cell})),
                  "VELTRA:referenceapi:InvalidComparator");
        EXPECT_EQ(m_compound.getComparatorsProperty(), before);
        EXPECT_TRUE(prefers(u"a"));
        EXPECT_FALSE(prefers(u"b"));
    }
}

TEST_F(CompoundPropertyTest, ACellOfSeveralComparatorsContributesItsFirst) {
    EXPECT_EQ(set(matrix::createCellRow({objects({productMatch(u"a"), productMatch(u"b")})})), "");
    EXPECT_TRUE(prefers(u"a"));
    EXPECT_FALSE(prefers(u"b"));
}

TEST_F(CompoundPropertyTest, ACompoundInACellIsTakenOverWhole) {
    const auto inner = construct<CompoundReferenceComparator>();
    auto& native = nativeOf<CompoundReferenceComparator>(inner);
    native.setComparatorsProperty(
        matrix::createCellRow({productMatch(u"a"), productMatch(u"b")}).get());
    EXPECT_EQ(set(matrix::createCellRow({inner, productMatch(u"c")})), "");
    for (const auto* folder : {u"a", u"b", u"c"})
        EXPECT_TRUE(prefers(folder));
    EXPECT_TRUE(m_compound(ofFolder(u"b"), ofFolder(u"c")));
    // With a list of its own.
    native.setComparatorsProperty(matrix::createCellRow({}).get());
    EXPECT_TRUE(prefers(u"b"));
}

TEST_F(CompoundPropertyTest, MayHoldItsOwnFormerSelf) {
    const auto object = construct<CompoundReferenceComparator>();
    auto& native = nativeOf<CompoundReferenceComparator>(object);
    native.setComparatorsProperty(matrix::createCellRow({productMatch(u"a")}).get());
    native.setComparatorsProperty(matrix::createCellRow({object, productMatch(u"b")}).get());
    EXPECT_TRUE(native(ofFolder(u"a"), ofFolder(u"b")));
    EXPECT_TRUE(native(ofFolder(u"b"), ofFolder({})));
    native.setComparatorsProperty(matrix::createCellRow({}).get());  // lets go of itself
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::api::comparator
