#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "reference/api/comparator/EntityMatchComparator.hpp"
#include "reference/api/comparator/EntityNameMatchComparator.hpp"
#include "reference/api/comparator/EntityTypeMatchComparator.hpp"
#include "reference/api/comparator/ProductMatchComparator.hpp"
#include "support/Items.hpp"

namespace reference::api::comparator {
namespace VELTRA_TEST_FILE {

using property::FunctionType;
using property::RefEntity;
using property::RefEntityType;
using enum EntityCaseSensitivity::Value;

RefEntity entity(std::u16string name, RefEntityType::Value type) {
    return {type, std::move(name), FunctionType::Function};
}

ReferenceData result(std::vector<RefEntity> entities, std::u16string folder = u"folder") {
    return {property::HeaderInfo({}, std::move(folder), {}, {}, {}),
            tests::makeItem({.entities = std::move(entities)})};
}

// Whether a comparator takes a result for a match: it then goes before one that matches nothing.
template <typename Comparator>
bool matches(const Comparator& comparator, const ReferenceData& data) {
    const ReferenceData nothing = result({entity(u"\uFFFF", RefEntityType::Tool)}, u"\uFFFF");
    EXPECT_FALSE(comparator(nothing, data));
    EXPECT_FALSE(comparator(data, data));
    return comparator(data, nothing);
}

TEST(EntityMatchComparatorTest, AsksForNameAndTypeOfOneEntity) {
    const EntityMatchComparator comparator(u"Plot", RefEntityType::Class, Sensitive);
    EXPECT_TRUE(matches(comparator, result({entity(u"Plot", RefEntityType::Class)})));
    EXPECT_TRUE(matches(comparator, result({entity(u"x", RefEntityType::Function),
                                            entity(u"Plot", RefEntityType::Class)})));
    EXPECT_FALSE(matches(comparator, result({entity(u"Plot", RefEntityType::Function),
                                             entity(u"x", RefEntityType::Class)})));
    EXPECT_FALSE(matches(comparator, result({entity(u"PLOT", RefEntityType::Class)})));
    EXPECT_FALSE(matches(comparator, result({entity(u"pkg.Plot", RefEntityType::Class)})));
    EXPECT_FALSE(matches(comparator, result({})));
}

TEST(EntityMatchComparatorTest, FoldsCaseButKeepsTheType) {
    const EntityMatchComparator comparator(u"Plot", RefEntityType::Class, Insensitive);
    EXPECT_TRUE(matches(comparator, result({entity(u"PLOT", RefEntityType::Class)})));
    EXPECT_FALSE(matches(comparator, result({entity(u"PLOT", RefEntityType::Function)})));
}

TEST(EntityMatchComparatorTest, DefaultMatchesUnknownEntitiesWithoutAName) {
    const EntityMatchComparator comparator;
    EXPECT_EQ(comparator.getRefEntityType(), RefEntityType::Unknown);
    EXPECT_TRUE(matches(comparator, result({entity(u"", RefEntityType::Unknown)})));
    EXPECT_FALSE(matches(comparator, result({entity(u"", RefEntityType::Class)})));
    EXPECT_FALSE(matches(comparator, result({entity(u"x", RefEntityType::Unknown)})));
}

TEST(EntityMatchComparatorTest, SettersDeriveTheComparedNameAgain) {
    EntityMatchComparator comparator(u"Plot", RefEntityType::Class, Sensitive);
    const ReferenceData upper = result({entity(u"PLOT", RefEntityType::Class)});
    comparator.setEntityCaseSensitivity(Insensitive);
    EXPECT_TRUE(matches(comparator, upper));
    comparator.setRefEntityType(RefEntityType::Method);
    EXPECT_FALSE(matches(comparator, upper));
    EXPECT_TRUE(matches(comparator, result({entity(u"plot", RefEntityType::Method)})));
    const std::u16string name = u"Draw";
    comparator.setEntityNameProperty(&name);
    EXPECT_EQ(*comparator.getEntityNameProperty(), u"Draw");
    EXPECT_TRUE(matches(comparator, result({entity(u"DRAW", RefEntityType::Method)})));
    comparator.setEntityNameProperty(nullptr);
    EXPECT_EQ(*comparator.getEntityNameProperty(), u"Draw");
    comparator.setEntityNameProperty(comparator.getEntityNameProperty());
    EXPECT_EQ(*comparator.getEntityNameProperty(), u"Draw");
    EXPECT_TRUE(matches(comparator, result({entity(u"dRAW", RefEntityType::Method)})));
}

TEST(EntityMatchComparatorTest, AnyOtherCaseNumberFoldsToo) {
    const EntityMatchComparator comparator(u"Plot", RefEntityType::Class,
                                           static_cast<EntityCaseSensitivity::Value>(12));
    EXPECT_TRUE(matches(comparator, result({entity(u"pLOT", RefEntityType::Class)})));
}

TEST(EntityNameMatchComparatorTest, IgnoresTheType) {
    const EntityNameMatchComparator comparator(u"Plot", Sensitive);
    EXPECT_TRUE(matches(comparator, result({entity(u"Plot", RefEntityType::Function)})));
    EXPECT_TRUE(matches(comparator, result({entity(u"Plot", RefEntityType::Class)})));
    EXPECT_FALSE(matches(comparator, result({entity(u"plot", RefEntityType::Class)})));
    EXPECT_FALSE(matches(comparator, result({})));
}

TEST(EntityNameMatchComparatorTest, FoldsFullyAndFallsBackToTheTextItself) {
    const std::u16string lone(1, char16_t{0xD800});
    struct Case {
        const char* name;
        std::u16string asked;
        std::u16string entity;
        bool expected;
    };
    const Case cases[] = {
        {"letters beyond ASCII", u"\u00C4RGER", u"\u00E4rger", true},
        {"a letter that grows", u"\u0130", u"i\u0307", true},
        {"longer than any buffer", std::u16string(2000, u'A'), std::u16string(2000, u'a'), true},
        {"grows beyond the buffer", std::u16string(1000, u'\u0130'),
         std::u16string(1000, u'\u0130'), true},
        {"text that cannot be folded is kept", u"A" + lone, u"A" + lone, true},
        {"text that cannot be folded is not folded", u"A" + lone, u"a" + lone, false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(matches(EntityNameMatchComparator(c.asked, Insensitive),
                          result({entity(c.entity, RefEntityType::Class)})),
                  c.expected)
            << c.name;
}

TEST(EntityNameMatchComparatorTest, SettersDeriveTheComparedNameAgain) {
    EntityNameMatchComparator comparator;
    EXPECT_TRUE(matches(comparator, result({entity(u"", RefEntityType::Class)})));
    const std::u16string name = u"Plot";
    comparator.setEntityNameProperty(&name);
    comparator.setEntityCaseSensitivity(Insensitive);
    EXPECT_TRUE(matches(comparator, result({entity(u"PLOT", RefEntityType::Class)})));
    comparator.setEntityCaseSensitivity(Sensitive);
    EXPECT_FALSE(matches(comparator, result({entity(u"PLOT", RefEntityType::Class)})));
    comparator.setEntityNameProperty(nullptr);
    EXPECT_EQ(*comparator.getEntityNameProperty(), u"Plot");
}

TEST(EntityTypeMatchComparatorTest, AsksForTheTypeAlone) {
    EntityTypeMatchComparator comparator(RefEntityType::Method);
    EXPECT_TRUE(matches(comparator, result({entity(u"", RefEntityType::Class),
                                            entity(u"", RefEntityType::Method)})));
    EXPECT_FALSE(matches(comparator, result({entity(u"", RefEntityType::Class)})));
    EXPECT_FALSE(matches(comparator, result({})));
    comparator.setRefEntityType(RefEntityType::Class);
    EXPECT_TRUE(matches(comparator, result({entity(u"", RefEntityType::Class)})));
    EXPECT_EQ(EntityTypeMatchComparator().getRefEntityType(), RefEntityType::Unknown);
}

TEST(ProductMatchComparatorTest, AsksForTheHelpFolderLetterByLetter) {
    ProductMatchComparator comparator(u"veltra");
    EXPECT_TRUE(matches(comparator, result({}, u"veltra")));
    EXPECT_FALSE(matches(comparator, result({}, u"VELTRA")));
    EXPECT_FALSE(matches(comparator, result({}, u"veltra2")));
    EXPECT_TRUE(matches(ProductMatchComparator(), result({}, u"")));
    EXPECT_FALSE(matches(ProductMatchComparator(), result({}, u"x")));
    const std::u16string other = u"qix";
    comparator.setProductNameProperty(&other);
    comparator.setProductNameProperty(nullptr);
    EXPECT_EQ(*comparator.getProductNameProperty(), u"qix");
    EXPECT_TRUE(matches(comparator, result({}, u"qix")));
}

TEST(MatchComparatorsTest, TwoOfAKindAreTied) {
    const EntityNameMatchComparator comparator(u"a", Sensitive);
    const ReferenceData a = result({entity(u"a", RefEntityType::Class)});
    const ReferenceData alsoA = result({entity(u"a", RefEntityType::Method)});
    const ReferenceData b = result({entity(u"b", RefEntityType::Class)});
    const ReferenceData c = result({});
    EXPECT_FALSE(comparator(a, alsoA));
    EXPECT_FALSE(comparator(alsoA, a));
    EXPECT_FALSE(comparator(b, c));
    EXPECT_FALSE(comparator(c, b));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::api::comparator
