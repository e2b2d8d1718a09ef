#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "reference/api/comparator/DeprecatedOrderComparator.hpp"
#include "reference/api/comparator/EntityDepthOrderComparator.hpp"
#include "reference/api/comparator/EntityTypeOrderComparator.hpp"
#include "reference/api/comparator/FunctionTypeOrderComparator.hpp"
#include "reference/api/comparator/PreferredOrderComparator.hpp"
#include "reference/api/comparator/preferredOrder.hpp"
#include "support/Items.hpp"

namespace reference::api::comparator {
namespace VELTRA_TEST_FILE {

using property::DeprecationStatus;
using property::FunctionType;
using property::RefEntity;
using property::RefEntityType;

RefEntity entity(std::u16string name, std::uint32_t type = 0, std::uint32_t functionType = 0) {
    return {static_cast<RefEntityType::Value>(type), std::move(name),
            static_cast<FunctionType::Value>(functionType)};
}

ReferenceData result(std::vector<RefEntity> entities, std::uint32_t status = 0,
                     std::u16string folder = {}) {
    return {property::HeaderInfo({}, std::move(folder), {}, {}, {}),
            tests::makeItem({.entities = std::move(entities),
                             .deprecationStatus = static_cast<DeprecationStatus::Value>(status)})};
}

// "<" when a goes before b, ">" the other way round, "=" for a tie.
template <typename Comparator>
char relation(const Comparator& comparator, const ReferenceData& a, const ReferenceData& b) {
    if (comparator(a, b))
        return '<';
    return comparator(b, a) ? '>' : '=';
}

TEST(DeprecatedOrderComparatorTest, LowerStatusGoesFirstAsASignedNumber) {
    const DeprecatedOrderComparator comparator;
    EXPECT_EQ(relation(comparator, result({}, 0), result({}, 1)), '<');
    EXPECT_EQ(relation(comparator, result({}, 2), result({}, 1)), '>');
    EXPECT_EQ(relation(comparator, result({}, 1), result({}, 1)), '=');
    EXPECT_EQ(relation(comparator, result({}, 4294967295U), result({}, 0)), '<');
}

TEST(KeyedOrderComparatorsTest, ResultsWithoutEntitiesGoLastAndAreTied) {
    const ReferenceData none = result({});
    const ReferenceData one = result({entity(u"a.b.c", 4000000000U, 9)});
    EXPECT_EQ(relation(EntityDepthOrderComparator(), none, result({})), '=');
    EXPECT_EQ(relation(EntityTypeOrderComparator(), none, result({})), '=');
    EXPECT_EQ(relation(FunctionTypeOrderComparator(), none, result({})), '=');
    EXPECT_EQ(relation(EntityDepthOrderComparator(), one, none), '<');
    EXPECT_EQ(relation(EntityDepthOrderComparator(), none, one), '>');
    EXPECT_EQ(relation(EntityTypeOrderComparator(), one, none), '<');
    EXPECT_EQ(relation(EntityTypeOrderComparator(), none, one), '>');
    EXPECT_EQ(relation(FunctionTypeOrderComparator(), one, none), '<');
    EXPECT_EQ(relation(FunctionTypeOrderComparator(), none, one), '>');
}

TEST(EntityDepthOrderComparatorTest, LeastQualifiedEntityGivesTheDepth) {
    const EntityDepthOrderComparator comparator;
    EXPECT_EQ(relation(comparator, result({entity(u"plot")}), result({entity(u"a.b.c")})), '<');
    EXPECT_EQ(relation(comparator, result({entity(u"a.b.c"), entity(u"plot")}),
                       result({entity(u"draw")})),
              '=');
    EXPECT_EQ(relation(comparator, result({entity(u"..")}), result({entity(u"a.b")})), '>');
    EXPECT_EQ(relation(comparator, result({entity(u"a/b::c")}), result({entity(u"x")})), '=');
}

TEST(EntityTypeOrderComparatorTest, SmallestTypeGoesFirstAsASignedNumber) {
    const EntityTypeOrderComparator comparator;
    EXPECT_EQ(relation(comparator, result({entity(u"", 1)}), result({entity(u"", 3)})), '<');
    EXPECT_EQ(
        relation(comparator, result({entity(u"", 9), entity(u"", 1)}), result({entity(u"", 1)})),
        '=');
    EXPECT_EQ(relation(comparator, result({entity(u"", 4000000000U)}), result({entity(u"", 0)})),
              '<');
}

TEST(FunctionTypeOrderComparatorTest, SmallestFunctionTypeGoesFirstAsASignedNumber) {
    const FunctionTypeOrderComparator comparator;
    EXPECT_EQ(relation(comparator, result({entity(u"", 0, 1)}), result({entity(u"", 0, 6)})), '<');
    EXPECT_EQ(
        relation(comparator, result({entity(u"", 0, 3000000000U)}), result({entity(u"", 0, 0)})),
        '<');
}

TEST(PreferredOrderComparatorTest, DeprecationThenProductThenTypesDecide) {
    const PreferredOrderComparator comparator;
    const auto of = [](std::u16string folder, std::uint32_t status = 0, std::uint32_t type = 0,
                       std::uint32_t functionType = 0) {
        return result({entity(u"x", type, functionType)}, status, std::move(folder));
    };
    EXPECT_EQ(relation(comparator, of(u"veltra", 1), of(u"other", 0)), '>');
    EXPECT_EQ(relation(comparator, of(u"veltra"), of(u"pendrake")), '<');
    EXPECT_EQ(relation(comparator, of(u"pendrake"), of(u"other")), '<');
    EXPECT_EQ(relation(comparator, of(u"veltra"), of(u"other")), '<');
    EXPECT_EQ(relation(comparator, of(u"Veltra"), of(u"other")), '=');
    EXPECT_EQ(relation(comparator, of(u"veltra", 0, 3), of(u"pendrake", 0, 0)), '<');
    EXPECT_EQ(relation(comparator, of(u"a", 0, 1), of(u"b", 0, 3)), '<');
    EXPECT_EQ(relation(comparator, of(u"a", 0, 1, 6), of(u"b", 0, 1, 1)), '>');
    EXPECT_EQ(relation(comparator, of(u"a"), of(u"b")), '=');
}

TEST(PreferredOrderTest, EachKeyGoesByItselfAndNothingGoesBeforeItsEqual) {
    const auto of = [](std::u16string folder, std::uint32_t status = 0) {
        return result({entity(u"x", 0, 0)}, status, std::move(folder));
    };
    const PreferredOrderComparator preferred;
    EXPECT_FALSE(preferred(of(u"veltra"), of(u"veltra")));
    for (const PreferredKey& key : preferredOrder) {
        EXPECT_FALSE(key.goesBefore(of(u"a"), of(u"b"))) << key.name;
        const bool isProduct = key.name == "product=veltra";
        EXPECT_EQ(key.goesBefore(of(u"veltra"), of(u"b")), isProduct) << key.name;
        EXPECT_FALSE(key.goesBefore(of(u"b"), of(u"veltra"))) << key.name;
        EXPECT_EQ(key.goesBefore(of(u"a"), of(u"a", 1)), key.name == "deprecated") << key.name;
    }
    EXPECT_EQ(helpFolderKey(u"a", of(u"a")), 0);
    EXPECT_EQ(helpFolderKey(u"a", of(u"b")), 1);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::api::comparator
