#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "reference/api/ReferenceData.hpp"
#include "reference/api/ReferenceRequest.hpp"

namespace reference::api {
namespace VELTRA_TEST_FILE {

using property::RefEntityType;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

bool ordersByShortName(const ReferenceData& a, const ReferenceData& b) {
    return a.getHeaderInfo().getShortName() < b.getHeaderInfo().getShortName();
}

ReferenceData ofProduct(std::u16string shortName) {
    return {property::HeaderInfo({}, {}, std::move(shortName), {}, {}), property::RefItem()};
}

// Whether the request's comparator tells the two products apart at all.
bool ordersAnything(const ReferenceRequest& request) {
    const ReferenceData a = ofProduct(u"a");
    const ReferenceData b = ofProduct(u"b");
    const auto& comparator = request.getRefRequestComparator();
    return comparator(a, b) || comparator(b, a);
}

TEST(ReferenceRequestTest, DefaultAsksForNothingInParticular) {
    const ReferenceRequest request;
    EXPECT_THAT(request.getEntityText(), IsEmpty());
    EXPECT_THAT(request.getTypes(), IsEmpty());
    EXPECT_THAT(request.getProducts(), IsEmpty());
    EXPECT_TRUE(request.isCaseSensitive());
    EXPECT_TRUE(request.isExactMatch());
    EXPECT_FALSE(request.isAllTextMatch());
    EXPECT_EQ(request.getEntityCaseSensitivity(), EntityCaseSensitivity::Sensitive);
    EXPECT_EQ(request.getEntityPrecision(), EntityPrecision::Exact_Match);
}

TEST(ReferenceRequestTest, EveryConstructorStoresAComparatorThatTiesEverything) {
    const std::vector<ReferenceRequest> requests = {
        ReferenceRequest(), ReferenceRequest(u"a"), ReferenceRequest(u"a", {RefEntityType::Class}),
        ReferenceRequest(u"a", {RefEntityType::Class}, {u"p"}),
        ReferenceRequest::createMatchAllTextRequest({}, {})};
    for (const auto& request : requests) {
        ASSERT_TRUE(request.getRefRequestComparator());
        EXPECT_FALSE(ordersAnything(request));
    }
}

TEST(ReferenceRequestTest, ConstructorsKeepWhatTheyAreGiven) {
    const ReferenceRequest request(u"pkg.f", {RefEntityType::Method, RefEntityType::Class},
                                   {u"b", u"a"});
    EXPECT_EQ(request.getEntityText(), u"pkg.f");
    EXPECT_THAT(request.getTypes(), ElementsAre(RefEntityType::Method, RefEntityType::Class));
    EXPECT_THAT(request.getProducts(), ElementsAre(u"b", u"a"));
}

TEST(ReferenceRequestTest, MatchAllTextRequestKeepsItsFlagThroughCopiesAndSetters) {
    ReferenceRequest request =
        ReferenceRequest::createMatchAllTextRequest({RefEntityType::Class}, {u"p"});
    EXPECT_TRUE(request.isAllTextMatch());
    EXPECT_THAT(request.getEntityText(), IsEmpty());
    EXPECT_TRUE(request.isCaseSensitive());
    EXPECT_TRUE(request.isExactMatch());
    EXPECT_THAT(request.getTypes(), ElementsAre(RefEntityType::Class));
    EXPECT_THAT(request.getProducts(), ElementsAre(u"p"));

    EXPECT_TRUE(request.copy().isAllTextMatch());
    const ReferenceRequest constructed = request;
    EXPECT_TRUE(constructed.isAllTextMatch());
    ReferenceRequest assigned;
    assigned = request;
    EXPECT_TRUE(assigned.isAllTextMatch());

    request.setEntityText(u"text");
    request.setEntityPrecision(EntityPrecision::Ignore_Package);
    request.setEntityCaseSensitivity(EntityCaseSensitivity::Insensitive);
    EXPECT_TRUE(request.isAllTextMatch());

    assigned = ReferenceRequest();
    EXPECT_FALSE(assigned.isAllTextMatch());
}

TEST(ReferenceRequestTest, OptionOutOfRangeIsStoredUnchangedAndCountsAsNotZero) {
    ReferenceRequest request;
    request.setEntityCaseSensitivity(static_cast<EntityCaseSensitivity::Value>(4000000000u));
    request.setEntityPrecision(static_cast<EntityPrecision::Value>(9));
    EXPECT_EQ(static_cast<std::uint32_t>(request.getEntityCaseSensitivity()), 4000000000u);
    EXPECT_EQ(static_cast<std::uint32_t>(request.getEntityPrecision()), 9u);
    EXPECT_FALSE(request.isCaseSensitive());
    EXPECT_FALSE(request.isExactMatch());
}

TEST(ReferenceRequestTest, AddingKeepsOrderAndDuplicates) {
    ReferenceRequest request(u"", {RefEntityType::Class}, {u"p"});
    request.addProducts({u"p", u"p"});
    request.addProducts({u"q", u"a"});
    request.addReferenceTypes({RefEntityType::Method, RefEntityType::Class});
    EXPECT_THAT(request.getProducts(), ElementsAre(u"p", u"p", u"p", u"q", u"a"));
    EXPECT_THAT(request.getTypes(),
                ElementsAre(RefEntityType::Class, RefEntityType::Method, RefEntityType::Class));
}

TEST(ReferenceRequestTest, CopyIsIndependentOfItsSource) {
    ReferenceRequest request(u"text", {RefEntityType::Class}, {u"p"});
    request.setRefRequestComparator(ordersByShortName);
    const ReferenceRequest copy = request.copy();
    request.setEntityText(u"other");
    request.addProducts({u"q"});
    request.addReferenceTypes({RefEntityType::Macro});
    request.setRefRequestComparator(nullptr);
    EXPECT_EQ(copy.getEntityText(), u"text");
    EXPECT_THAT(copy.getProducts(), ElementsAre(u"p"));
    EXPECT_THAT(copy.getTypes(), ElementsAre(RefEntityType::Class));
    EXPECT_TRUE(ordersAnything(copy));
}

TEST(ReferenceRequestTest, MoveEmptiesTheSource) {
    ReferenceRequest source(u"a text longer than any small buffer", {RefEntityType::Class}, {u"p"});
    source.setEntityPrecision(EntityPrecision::Ignore_Package);
    const ReferenceRequest target = std::move(source);
    EXPECT_EQ(target.getEntityText(), u"a text longer than any small buffer");
    EXPECT_FALSE(target.isExactMatch());
    // NOLINTBEGIN(bugprone-use-after-move): what a moved-from request holds is part of its
    // contract.
    EXPECT_THAT(source.getEntityText(), IsEmpty());
    EXPECT_THAT(source.getTypes(), IsEmpty());
    EXPECT_THAT(source.getProducts(), IsEmpty());
    // NOLINTEND(bugprone-use-after-move)
}

TEST(ReferenceRequestTest, SelfAssignmentKeepsEverything) {
    ReferenceRequest request(u"text", {RefEntityType::Class}, {u"p"});
    const ReferenceRequest& same = request;
    request = same;
    EXPECT_EQ(request.getEntityText(), u"text");
    EXPECT_THAT(request.getTypes(), ElementsAre(RefEntityType::Class));
    EXPECT_THAT(request.getProducts(), ElementsAre(u"p"));
    EXPECT_TRUE(request.getRefRequestComparator());
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::api
