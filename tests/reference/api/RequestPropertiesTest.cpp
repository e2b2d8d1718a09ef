// A request's and a retriever's properties as the scripting language sees them.

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "reference/api/ClassEntityDataRetriever.hpp"
#include "reference/api/ReferenceDataRetriever.hpp"
#include "reference/api/ReferenceRequest.hpp"
#include "reference/api/comparator/IndexOrderComparator.hpp"
#include "reference/api/comparator/ProductMatchComparator.hpp"
#include "support/HostValues.hpp"
#include "support/LibraryTest.hpp"
#include "support/Print.hpp"

namespace reference::api {
namespace VELTRA_TEST_FILE {

using comparator::IndexOrderComparator;
using comparator::ProductMatchComparator;
using property::RefEntityType;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::IsNull;
using ::testing::NotNull;
using tests::asColumn;
using tests::construct;
using tests::members;
using tests::nativeOf;
using tests::objects;
using tests::outcomeOf;
using zorb::HostName;

std::string className(const vqArray* value) {
    return omGetCOSClassID(value).str();
}

// A ProductMatchComparator as a script makes one.
vqArrayPtr productMatch(const std::u16string& product) {
    auto object = construct<ProductMatchComparator>();
    nativeOf<ProductMatchComparator>(object).setProductNameProperty(&product);
    return object;
}

TEST(RequestEntityTextTest, IsTheNativeText) {
    ReferenceRequest request(u"fit");
    EXPECT_EQ(*request.getEntityTextProperty(), u"fit");
    const std::u16string text = u"plot";
    request.setEntityTextProperty(&text);
    EXPECT_EQ(request.getEntityText(), u"plot");
    request.setEntityTextProperty(nullptr);
    EXPECT_EQ(request.getEntityText(), u"plot");
    request.setEntityText(u"roots");
    EXPECT_EQ(*request.getEntityTextProperty(), u"roots");
}

TEST(RequestEnumerationTest, ANewRequestShowsMembersOfNumberZero) {
    const ReferenceRequest request;
    EXPECT_EQ(*request.getEntityCaseSensitivityProperty(), *members<EntityCaseSensitivity>({0}));
    EXPECT_EQ(*request.getEntityPrecisionProperty(), *members<EntityPrecision>({0}));
}

TEST(RequestEnumerationTest, ASecondReadGivesTheVerySameArray) {
    const ReferenceRequest request;
    EXPECT_EQ(request.getEntityCaseSensitivityProperty(),
              request.getEntityCaseSensitivityProperty());
    EXPECT_EQ(request.getEntityPrecisionProperty(), request.getEntityPrecisionProperty());
}

TEST(RequestEnumerationTest, ANativeSetterLeavesWhatWasReadAlone) {
    ReferenceRequest request;
    const vqArray* before = request.getEntityCaseSensitivityProperty();
    request.setEntityCaseSensitivity(EntityCaseSensitivity::Insensitive);
    EXPECT_EQ(request.getEntityCaseSensitivityProperty(), before);
    EXPECT_EQ(*before, *members<EntityCaseSensitivity>({0}));
    // What was never read shows the native value.
    request.setEntityPrecision(EntityPrecision::Ignore_Package);
    EXPECT_EQ(*request.getEntityPrecisionProperty(), *members<EntityPrecision>({1}));
}

TEST(RequestEnumerationTest, TheSetterTakesAMemberAndShowsIt) {
    ReferenceRequest request;
    const auto member = members<EntityPrecision>({1});
    request.setEntityPrecisionProperty(member.get());
    EXPECT_EQ(request.getEntityPrecision(), EntityPrecision::Ignore_Package);
    EXPECT_EQ(*request.getEntityPrecisionProperty(), *member);
    request.setEntityCaseSensitivityProperty(members<EntityCaseSensitivity>({1}).get());
    EXPECT_FALSE(request.isCaseSensitive());
}

TEST(RequestEnumerationTest, AnyNumberIsStored) {
    ReferenceRequest request;
    request.setEntityPrecisionProperty(members<EntityPrecision>({4000000000}).get());
    EXPECT_EQ(static_cast<std::uint32_t>(request.getEntityPrecision()), 4000000000U);
    // A plain number and another enumeration's member are stored, and shown, as they are.
    const auto number = matrix::createNumber(7);
    request.setEntityPrecisionProperty(number.get());
    EXPECT_EQ(static_cast<std::uint32_t>(request.getEntityPrecision()), 7U);
    EXPECT_EQ(*request.getEntityPrecisionProperty(), *number);
    request.setEntityPrecisionProperty(members<RefEntityType>({1}).get());
    EXPECT_EQ(request.getEntityPrecision(), EntityPrecision::Ignore_Package);
    EXPECT_EQ(*request.getEntityPrecisionProperty(), *members<RefEntityType>({1}));
}

TEST(RequestEnumerationTest, TwoMembersAreRefusedAndNullIsIgnored) {
    ReferenceRequest request;
    EXPECT_EQ(outcomeOf([&] {
                  request.setEntityPrecisionProperty(members<EntityPrecision>({1, 1}).get());
              }),
              "VELTRA:class:RequireScalar");
    EXPECT_TRUE(request.isExactMatch());
    request.setEntityPrecisionProperty(nullptr);
    EXPECT_TRUE(request.isExactMatch());
    EXPECT_EQ(*request.getEntityPrecisionProperty(), *members<EntityPrecision>({0}));
}

TEST(RequestTypesTest, AColumnIsStoredAndShownAsARow) {
    ReferenceRequest request;
    const auto row = members<RefEntityType>({RefEntityType::Method, RefEntityType::Class});
    request.setTypesProperty(asColumn(row).get());
    EXPECT_THAT(request.getTypes(), ElementsAre(RefEntityType::Method, RefEntityType::Class));
    ASSERT_THAT(request.getTypesProperty(), NotNull());
    EXPECT_EQ(*request.getTypesProperty(), *row);
}

TEST(RequestTypesTest, NullAndEmptyArraysClearThemAndLeaveAnEmptyRow) {
    for (const auto& empty : {vqArrayPtr(), members<RefEntityType>({}), matrix::createStringRow({}),
                              matrix::createCellRow({})}) {
        ReferenceRequest request(u"a", {RefEntityType::Class});
        request.setTypesProperty(empty.get());
        EXPECT_THAT(request.getTypes(), IsEmpty());
        ASSERT_THAT(request.getTypesProperty(), NotNull());
        EXPECT_EQ(*request.getTypesProperty(), *members<RefEntityType>({}));
        EXPECT_EQ(request.getTypesProperty()->getRows(), 1U);
        EXPECT_EQ(request.getTypesProperty()->getColumns(), 0U);
    }
}

// The asymmetry with the products is deliberate.
TEST(RequestTypesTest, TypesGivenNativelyAreNotShownButProductsAre) {
    ReferenceRequest request(u"a", {RefEntityType::Class}, {u"veltra"});
    EXPECT_THAT(request.getTypesProperty(), IsNull());
    EXPECT_EQ(*request.getProductsProperty(), *matrix::createStringRow({u"veltra"}));
    request.addReferenceTypes({RefEntityType::Method});
    EXPECT_THAT(request.getTypesProperty(), IsNull());
}

TEST(RequestTypesTest, NativeAdditionsLeaveWhatWasSetAlone) {
    ReferenceRequest request;
    request.setTypesProperty(members<RefEntityType>({1}).get());
    const vqArray* before = request.getTypesProperty();
    request.addReferenceTypes({RefEntityType::Method});
    EXPECT_EQ(request.getTypesProperty(), before);
    EXPECT_THAT(request.getTypes(), ElementsAre(RefEntityType::Class, RefEntityType::Method));
}

TEST(RequestTypesTest, UnnamedNumbersAndRepetitionsAreKept) {
    ReferenceRequest request;
    request.setTypesProperty(members<RefEntityType>({99, 1, 99}).get());
    EXPECT_EQ(*request.getTypesProperty(), *members<RefEntityType>({99, 1, 99}));
    EXPECT_EQ(request.getTypes().size(), 3U);
    EXPECT_EQ(static_cast<std::uint32_t>(request.getTypes().front()), 99U);
}

TEST(RequestTypesTest, MembersOfAnotherEnumerationAreRefused) {
    ReferenceRequest request;
    EXPECT_EQ(outcomeOf([&] { request.setTypesProperty(members<EntityPrecision>({1}).get()); }),
              "VELTRA:class:RequireClass");
    EXPECT_THAT(request.getTypesProperty(), IsNull());
}

TEST(RequestProductsTest, AreTakenFromTextsOfAnyShape) {
    ReferenceRequest request;
    const auto column = asColumn(matrix::createStringRow({u"a", u"b"}));
    request.setProductsProperty(column.get());
    EXPECT_THAT(request.getProducts(), ElementsAre(u"a", u"b"));
    EXPECT_EQ(*request.getProductsProperty(), *column);
    EXPECT_EQ(request.getProductsProperty(), request.getProductsProperty());
    request.setProductsProperty(matrix::createStringRow({}).get());
    EXPECT_THAT(request.getProducts(), IsEmpty());
}

TEST(RequestProductsTest, NativeAdditionsLeaveWhatWasReadAlone) {
    ReferenceRequest request(u"a", {}, {u"veltra"});
    const vqArray* before = request.getProductsProperty();
    request.addProducts({u"pendrake"});
    EXPECT_EQ(request.getProductsProperty(), before);
    EXPECT_EQ(*before, *matrix::createStringRow({u"veltra"}));
}

TEST(RequestComparatorTest, ANewRequestShowsTheDefaultOrder) {
    const ReferenceRequest request;
    const vqArray* first = request.getComparatorProperty();
    ASSERT_THAT(first, NotNull());
    EXPECT_EQ(className(first), "veltra.internal.reference.api.comparator.IndexOrderComparator");
    EXPECT_EQ(first->getNumberOfElements(), 1U);
    EXPECT_EQ(request.getComparatorProperty(), first);
}

// A native function cannot be turned back into an object.
TEST(RequestComparatorTest, ANativeComparatorIsNotShown) {
    ReferenceRequest request;
    request.setRefRequestComparator(ProductMatchComparator(u"a"));
    EXPECT_EQ(className(request.getComparatorProperty()),
              HostName<IndexOrderComparator>::id().str());
}

TEST(RequestComparatorTest, OrdersByTheObjectAndShowsIt) {
    ReferenceRequest request;
    const auto object = productMatch(u"second");
    request.setComparatorProperty(object.get());
    EXPECT_EQ(*request.getComparatorProperty(), *object);

    const ReferenceData first(property::HeaderInfo({}, u"first", {}, {}, {}), {});
    const ReferenceData second(property::HeaderInfo({}, u"second", {}, {}, {}), {});
    EXPECT_TRUE(request.getRefRequestComparator()(second, first));
    EXPECT_FALSE(request.getRefRequestComparator()(first, second));

    // A copy is taken; what is set on the object later does not count.
    const std::u16string name = u"first";
    nativeOf<ProductMatchComparator>(object).setProductNameProperty(&name);
    EXPECT_TRUE(request.getRefRequestComparator()(second, first));
}

TEST(RequestComparatorTest, RefusesAnyCountButOneAndWhatIsNoComparator) {
    ReferenceRequest request;
    const auto outcome = [&request](const vqArrayPtr& value) {
        return outcomeOf([&] { request.setComparatorProperty(value.get()); });
    };
    EXPECT_EQ(outcome(matrix::createObjectRow({})), "VELTRA:referenceapi:ExpectedScalarComparator");
    EXPECT_EQ(outcome(objects({productMatch(u"a"), productMatch(u"b")})),
              "VELTRA:referenceapi:ExpectedScalarComparator");
    EXPECT_EQ(outcome(construct<ReferenceRequest>()), "VELTRA:referenceapi:InvalidComparator");
    EXPECT_EQ(outcome(nullptr), "");
}

TEST(RequestCopyTest, SharesTheHostValues) {
    ReferenceRequest request(u"a", {}, {u"veltra"});
    request.setTypesProperty(members<RefEntityType>({1}).get());
    const vqArray* const shown[] = {
        request.getTypesProperty(), request.getProductsProperty(), request.getComparatorProperty(),
        request.getEntityCaseSensitivityProperty(), request.getEntityPrecisionProperty()};
    const auto expectShown = [&shown](const ReferenceRequest& copy) {
        EXPECT_EQ(copy.getTypesProperty(), shown[0]);
        EXPECT_EQ(copy.getProductsProperty(), shown[1]);
        EXPECT_EQ(copy.getComparatorProperty(), shown[2]);
        EXPECT_EQ(copy.getEntityCaseSensitivityProperty(), shown[3]);
        EXPECT_EQ(copy.getEntityPrecisionProperty(), shown[4]);
    };
    expectShown(request.copy());
    const ReferenceRequest constructed(
        request);  // NOLINT(performance-unnecessary-copy-initialization)
    expectShown(constructed);
    ReferenceRequest assigned(u"b", {}, {u"other"});
    static_cast<void>(assigned.getProductsProperty());
    assigned = request;
    expectShown(assigned);
    const auto& self = assigned;
    assigned = self;
    expectShown(assigned);

    ReferenceRequest moved(std::move(assigned));
    expectShown(moved);
    assigned = std::move(moved);
    expectShown(assigned);
}

TEST(RequestCopyTest, AMovedFromRequestHasNoHostValues) {
    ReferenceRequest request;
    request.setTypesProperty(members<RefEntityType>({1}).get());
    const ReferenceRequest moved(std::move(request));
    EXPECT_THAT(request.getTypesProperty(), IsNull());  // NOLINT(bugprone-use-after-move)
}

TEST(RequestCopyTest, SettingACopyLeavesTheSourceAlone) {
    const ReferenceRequest request;
    const vqArray* before = request.getEntityPrecisionProperty();
    ReferenceRequest copy = request.copy();
    copy.setEntityPrecisionProperty(members<EntityPrecision>({1}).get());
    EXPECT_EQ(request.getEntityPrecisionProperty(), before);
    EXPECT_TRUE(request.isExactMatch());
}

TEST(RequestCopyTest, NothingIsLeftBehind) {
    const tests::LiveCounts before;
    {
        ReferenceRequest request(u"a", {RefEntityType::Class}, {u"p"});
        request.setTypesProperty(members<RefEntityType>({1, 2}).get());
        request.setComparatorProperty(productMatch(u"a").get());
        static_cast<void>(request.getProductsProperty());
        static_cast<void>(request.getEntityPrecisionProperty());
        const ReferenceRequest copy = request.copy();
        request.setTypesProperty(nullptr);
        outcomeOf([&] { request.setTypesProperty(members<EntityPrecision>({0}).get()); });
    }
    EXPECT_EQ(tests::LiveCounts(), before);
}

class RetrieverPropertyTest : public tests::LibraryTest {
  protected:
    RetrieverPropertyTest() {
        add(tests::ProductBuilder(u"veltra")
                .entity(u"fit", RefEntityType::Function, u"fit.html")
                .entity(u"Plot", RefEntityType::Class, u"plot.html"));
    }

    // A request as a script makes one.
    static vqArrayPtr request(const std::u16string& text) {
        return zorb::wrap(ReferenceRequest(text));
    }
};

TEST_F(RetrieverPropertyTest, ShowsACopyOfTheRequestMadeOnce) {
    const ReferenceDataRetriever retriever(ReferenceRequest(u"fit", {}, {u"veltra"}));
    const vqArray* first = retriever.getReferenceRequestProperty();
    ASSERT_THAT(first, NotNull());
    EXPECT_EQ(className(first), "veltra.internal.reference.api.ReferenceRequest");
    EXPECT_EQ(retriever.getReferenceRequestProperty(), first);
    EXPECT_EQ(nativeOf<ReferenceRequest>(first).getEntityText(), u"fit");
    EXPECT_THAT(nativeOf<ReferenceRequest>(first).getProducts(), ElementsAre(u"veltra"));
}

TEST_F(RetrieverPropertyTest, TheSetterSearchesByTheNewRequest) {
    ReferenceDataRetriever retriever;
    EXPECT_THAT(tests::dump(retriever.getReferenceData()), IsEmpty());
    retriever.setReferenceRequestProperty(request(u"fit").get());
    EXPECT_THAT(tests::dump(retriever.getReferenceData()),
                ElementsAre("veltra:fit[function]@fit.html"));
}

TEST_F(RetrieverPropertyTest, TheSetterDerivesAnewWhatTheSearchCompares) {
    auto insensitive = ReferenceRequest(u"PLOT");
    insensitive.setEntityCaseSensitivity(EntityCaseSensitivity::Insensitive);
    ClassEntityDataRetriever retriever(ReferenceRequest(u"fit"));
    retriever.setReferenceRequestProperty(zorb::wrap(insensitive).get());
    EXPECT_THAT(tests::dump(retriever.getReferenceData()),
                ElementsAre("veltra:Plot[class]@plot.html"));
}

// Unlike other setters, this one keeps a new object, so that a script that goes on changing its
// request does not see those changes here, where they have no effect.
TEST_F(RetrieverPropertyTest, TheSetterShowsANewObjectWithAnEqualRequest) {
    ReferenceDataRetriever retriever;
    const auto given = request(u"fit");
    retriever.setReferenceRequestProperty(given.get());
    const vqArray* shown = retriever.getReferenceRequestProperty();
    EXPECT_FALSE(*shown == *given);
    EXPECT_EQ(nativeOf<ReferenceRequest>(shown).getEntityText(), u"fit");
    EXPECT_EQ(retriever.getReferenceRequestProperty(), shown);

    nativeOf<ReferenceRequest>(given).setEntityText(u"other");
    EXPECT_EQ(nativeOf<ReferenceRequest>(shown).getEntityText(), u"fit");
    EXPECT_THAT(tests::dump(retriever.getReferenceData()),
                ElementsAre("veltra:fit[function]@fit.html"));
}

TEST_F(RetrieverPropertyTest, WhatIsSetOnTheShownObjectDoesNotReachTheRetriever) {
    const ReferenceDataRetriever retriever(ReferenceRequest(u"fit"));
    nativeOf<ReferenceRequest>(retriever.getReferenceRequestProperty()).setEntityText(u"other");
    EXPECT_THAT(tests::dump(retriever.getReferenceData()),
                ElementsAre("veltra:fit[function]@fit.html"));
}

TEST_F(RetrieverPropertyTest, NullIsIgnored) {
    ReferenceDataRetriever retriever{ReferenceRequest(u"fit")};
    const vqArray* before = retriever.getReferenceRequestProperty();
    retriever.setReferenceRequestProperty(nullptr);
    EXPECT_EQ(retriever.getReferenceRequestProperty(), before);
    EXPECT_THAT(tests::dump(retriever.getReferenceData()),
                ElementsAre("veltra:fit[function]@fit.html"));
}

TEST_F(RetrieverPropertyTest, TheFirstOfSeveralRequestsIsTaken) {
    ReferenceDataRetriever retriever;
    retriever.setReferenceRequestProperty(objects({request(u"fit"), request(u"Plot")}).get());
    EXPECT_THAT(tests::dump(retriever.getReferenceData()),
                ElementsAre("veltra:fit[function]@fit.html"));
}

TEST_F(RetrieverPropertyTest, MovingARetrieverMovesTheShownRequest) {
    ReferenceDataRetriever source{ReferenceRequest(u"fit")};
    const vqArrayPtr shown(source.getReferenceRequestProperty());
    ReferenceDataRetriever moved(std::move(source));
    EXPECT_EQ(moved.getReferenceRequestProperty(), shown.get());

    const tests::LiveCounts before;
    ReferenceDataRetriever target{ReferenceRequest(u"Plot")};
    static_cast<void>(target.getReferenceRequestProperty());
    target = std::move(moved);
    EXPECT_EQ(target.getReferenceRequestProperty(), shown.get());
    EXPECT_EQ(tests::LiveCounts(), before);  // what the target showed is gone
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::api
