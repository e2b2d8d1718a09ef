#include <functional>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "docparser/DocParserException.hpp"
#include "reference/api/ReferenceDataRetriever.hpp"
#include "reference/api/comparator/PreferredOrderComparator.hpp"
#include "support/Items.hpp"
#include "support/LibraryTest.hpp"
#include "support/Print.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using api::EntityCaseSensitivity;
using api::EntityPrecision;
using api::ReferenceData;
using api::ReferenceDataRetriever;
using api::ReferenceRequest;
using property::FunctionType;
using property::RefEntity;
using property::RefEntityType;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ReferenceDataRetrieverTest : public LibraryTest {};

// Orders by display name, backwards.
bool byDisplayNameDown(const ReferenceData& a, const ReferenceData& b) {
    return a.getHeaderInfo().getDisplayName() > b.getHeaderInfo().getDisplayName();
}

TEST_F(ReferenceDataRetrieverTest, NothingFoundIsAnEmptyListAndNoComparison) {
    add(ProductBuilder(u"p").entity(u"f", RefEntityType::Function, u"f.html"));
    ReferenceRequest request(u"unknown");
    bool compared = false;
    request.setRefRequestComparator([&compared](const ReferenceData&, const ReferenceData&) {
        compared = true;
        return false;
    });
    EXPECT_THAT(retrieve(request), IsEmpty());
    EXPECT_FALSE(compared);
    EXPECT_EQ(source().resourceCalls(), 0);
}

TEST_F(ReferenceDataRetrieverTest, ResultsKeepProductThenHrefThenPageOrder) {
    add(ProductBuilder(u"b").entity(u"f", RefEntityType::Function, u"z.html"));
    add(ProductBuilder(u"a")
            .entity(u"f", RefEntityType::Function, u"y.html")
            .entity(u"f", RefEntityType::Method, u"x.html")
            .item(makeItem(
                {.href = u"x.html",
                 .entities = {RefEntity(RefEntityType::Macro, u"second", FunctionType::Macro)}})));
    EXPECT_THAT(retrieve(ReferenceRequest(u"f")),
                ElementsAre("a:f[method]@x.html", "a:second[macro]@x.html", "a:f[function]@y.html",
                            "b:f[function]@z.html"));
}

TEST_F(ReferenceDataRetrieverTest, OnlyProductsThatMatchAreParsed) {
    add(ProductBuilder(u"a").entity(u"f", RefEntityType::Function, u"f.html"));
    add(ProductBuilder(u"b").entity(u"g", RefEntityType::Function, u"g.html"));
    std::vector<std::u16string> parsed;
    source().onResourceFile([&parsed](const std::u16string& file) { parsed.push_back(file); });
    EXPECT_THAT(retrieve(ReferenceRequest(u"f")), ElementsAre("a:f[function]@f.html"));
    EXPECT_THAT(retrieve(ReferenceRequest(u"f")), ElementsAre("a:f[function]@f.html"));
    EXPECT_THAT(parsed, ElementsAre(u"a.ref"));
}

TEST_F(ReferenceDataRetrieverTest, ComparatorOrdersAndTiesKeepProductOrder) {
    for (const char16_t* name : {u"a", u"b", u"c"})
        add(ProductBuilder(name)
                .entity(u"f", RefEntityType::Function, u"1.html")
                .entity(u"f", RefEntityType::Function, u"2.html"));
    ReferenceRequest request(u"f");
    request.setRefRequestComparator(byDisplayNameDown);
    EXPECT_THAT(retrieve(request), ElementsAre("c:f[function]@1.html", "c:f[function]@2.html",
                                               "b:f[function]@1.html", "b:f[function]@2.html",
                                               "a:f[function]@1.html", "a:f[function]@2.html"));
}

TEST_F(ReferenceDataRetrieverTest, PreferredOrderGoesByItsKeysAndTiesKeepProductOrder) {
    for (const char16_t* name : {u"a", u"b", u"veltra"})
        add(ProductBuilder(name)
                .entity(u"f", RefEntityType::Topic, u"1.html")
                .entity(u"f", RefEntityType::Function, u"2.html")
                .entity(u"f", RefEntityType::Function, u"3.html"));
    ReferenceRequest request(u"f");
    request.setRefRequestComparator(api::comparator::PreferredOrderComparator());
    EXPECT_THAT(retrieve(request),
                ElementsAre("veltra:f[function]@2.html", "veltra:f[function]@3.html",
                            "veltra:f[topic]@1.html", "a:f[function]@2.html",
                            "a:f[function]@3.html", "b:f[function]@2.html", "b:f[function]@3.html",
                            "a:f[topic]@1.html", "b:f[topic]@1.html"));
}

TEST_F(ReferenceDataRetrieverTest, EmptyComparatorFailsOnlyWhenThereIsSomethingToCompare) {
    add(ProductBuilder(u"a").entity(u"one", RefEntityType::Function, u"1.html"));
    add(ProductBuilder(u"b")
            .entity(u"two", RefEntityType::Function, u"2.html")
            .entity(u"two", RefEntityType::Function, u"3.html"));
    ReferenceRequest one(u"one");
    one.setRefRequestComparator(nullptr);
    EXPECT_THAT(retrieve(one), ElementsAre("a:one[function]@1.html"));
    ReferenceRequest two(u"two");
    two.setRefRequestComparator(nullptr);
    EXPECT_THROW(retrieve(two), std::bad_function_call);
}

TEST_F(ReferenceDataRetrieverTest, WhatTheComparatorThrowsReachesTheCaller) {
    for (const char16_t* name : {u"a", u"b"})
        add(ProductBuilder(name).entity(u"f", RefEntityType::Function, u"f.html"));
    ReferenceRequest request(u"f");
    request.setRefRequestComparator([](const ReferenceData&, const ReferenceData&) -> bool {
        throw std::domain_error("incomparable");
    });
    EXPECT_THROW(retrieve(request), std::domain_error);
}

TEST_F(ReferenceDataRetrieverTest, ProductThatCannotBeParsedIsSkipped) {
    for (const char16_t* name : {u"a", u"b", u"c"})
        add(ProductBuilder(name).entity(u"f", RefEntityType::Function, u"f.html"));
    source().onResourceFile([](const std::u16string& file) {
        if (file == u"b.ref")
            throw docparser::DocParserException("broken");
    });
    EXPECT_THAT(retrieve(ReferenceRequest(u"f")),
                ElementsAre("a:f[function]@f.html", "c:f[function]@f.html"));
}

// Fails when it comes to the results of one product.
class FailingFilter : public ReferenceDataRetriever {
  public:
    FailingFilter(ReferenceRequest request, std::function<void()> fail)
        : ReferenceDataRetriever(std::move(request)), m_fail(std::move(fail)) {}

  private:
    [[nodiscard]] std::vector<ReferenceData> filterReferenceData(
        const Resource& resource, const std::set<std::u16string>& /*hrefs*/) const override {
        if (resource.getHeaderInfo().getShortName() == u"b")
            m_fail();
        std::vector<ReferenceData> one;
        one.emplace_back(resource.getHeaderInfo().copy(), property::RefItem());
        return one;
    }

    std::function<void()> m_fail;
};

TEST_F(ReferenceDataRetrieverTest, ProductThatCannotBeFilteredIsSkippedToo) {
    for (const char16_t* name : {u"a", u"b", u"c"})
        add(ProductBuilder(name).entity(u"f", RefEntityType::Function, u"f.html"));
    const FailingFilter broken(ReferenceRequest(u"f"),
                               [] { throw docparser::DocParserException("broken page"); });
    std::u16string products;
    for (const auto& result : broken.getReferenceData())
        products += result.getHeaderInfo().getShortName();
    EXPECT_EQ(products, u"ac");
    const FailingFilter failing(ReferenceRequest(u"f"),
                                [] { throw std::runtime_error("no disk"); });
    EXPECT_THROW(static_cast<void>(failing.getReferenceData()), std::runtime_error);
}

// A class of a user's own that decides nothing anew.
class OwnRetriever : public ReferenceDataRetriever {
  public:
    using ReferenceDataRetriever::ReferenceDataRetriever;
};

TEST_F(ReferenceDataRetrieverTest, AClassOfOnesOwnAnswersLikeItsBase) {
    add(ProductBuilder(u"p")
            .classWith(u"Shape", u"", u"Shape.html", {{u"Size", {u"Width", u"Height"}}})
            .record(u"f", RefEntityType::Function, u"missing.html")
            .entity(u"f", RefEntityType::Function, u"f.html")
            .entity(u"f", RefEntityType::Method, u"f.html"));
    for (const auto* const text : {u"f", u"Shape", u"Shape.Width", u"nothing"}) {
        const ReferenceRequest request(text);
        const auto expected = ReferenceDataRetriever(request).getReferenceData();
        EXPECT_EQ(dump(OwnRetriever(request).getReferenceData()), dump(expected));
        EXPECT_EQ(expected.empty(), std::u16string(u"nothing") == text);
    }
    const auto all = ReferenceRequest::createMatchAllTextRequest({}, {});
    EXPECT_EQ(dump(OwnRetriever(all).getReferenceData()),
              dump(ReferenceDataRetriever(all).getReferenceData()));
}

// Wants properties by what they are for, whatever they are called.
class PurposeOfPropertyRetriever : public ReferenceDataRetriever {
  public:
    using ReferenceDataRetriever::ReferenceDataRetriever;

  private:
    [[nodiscard]] bool isPropertyContentMatch(
        const std::u16string& /*qualifiedName*/,
        const property::ClassProperty& property) const override {
        return property.getPurpose() == u"purpose of Height";
    }
};

TEST_F(ReferenceDataRetrieverTest, AClassOfOnesOwnIsAskedAboutEachPropertyWhateverItsName) {
    add(ProductBuilder(u"p")
            .classWith(u"Shape", u"", u"Shape.html", {{u"Size", {u"Width", u"Height"}}})
            .record(u"other", RefEntityType::Function, u"Shape.html"));
    for (const auto* const text : {u"Shape", u"other"})
        EXPECT_THAT(dump(PurposeOfPropertyRetriever(ReferenceRequest(text)).getReferenceData()),
                    ElementsAre(testing::StartsWith("p:Shape.Height[property]")));
}

// Cannot read on when it comes to the height.
class FailingAtHeightRetriever : public ReferenceDataRetriever {
  public:
    using ReferenceDataRetriever::ReferenceDataRetriever;

  private:
    [[nodiscard]] bool isPropertyContentMatch(
        const std::u16string& /*qualifiedName*/,
        const property::ClassProperty& property) const override {
        if (property.getName() == u"Height")
            throw docparser::DocParserException("no height");
        return true;
    }
};

TEST_F(ReferenceDataRetrieverTest, OfAProductThatFailsHalfwayNothingIsLeft) {
    for (const char16_t* name : {u"p", u"r"})
        add(ProductBuilder(name).classWith(u"Shape", u"", u"Shape.html", {{u"Size", {u"Width"}}}));
    add(ProductBuilder(u"q")
            .classWith(u"Shape", u"", u"Shape.html", {{u"Size", {u"Width"}}})
            .classWith(u"Shape", u"", u"Solid.html", {{u"Size", {u"Height"}}}));
    EXPECT_THAT(dump(FailingAtHeightRetriever(ReferenceRequest(u"Shape")).getReferenceData()),
                ElementsAre(testing::StartsWith("p:Shape.Width[property]"),
                            testing::StartsWith("r:Shape.Width[property]")));
}

TEST_F(ReferenceDataRetrieverTest, AnyOtherExceptionReachesTheCaller) {
    add(ProductBuilder(u"a").entity(u"f", RefEntityType::Function, u"f.html"));
    source().onResourceFile([](const std::u16string&) { throw std::runtime_error("no disk"); });
    EXPECT_THROW(retrieve(ReferenceRequest(u"f")), std::runtime_error);
}

TEST_F(ReferenceDataRetrieverTest, ProductThatItsReferenceFileDoesNotHoldIsSkipped) {
    add(ProductBuilder(u"a").entity(u"f", RefEntityType::Function, u"f.html"));
    add(ProductBuilder(u"b").entity(u"f", RefEntityType::Function, u"f.html"));
    // The lookup of "a" is read while its file is "a.ref"; by the time its items are wanted, that
    // file belongs to "b" alone.
    EXPECT_THAT(retrieve(ReferenceRequest(u"f", {}, {u"nobody"})), IsEmpty());
    source().shareFile(u"b", u"a.ref");
    source().shareFile(u"a", u"elsewhere");
    EXPECT_THAT(retrieve(ReferenceRequest(u"f", {}, {u"a"})), IsEmpty());
    EXPECT_EQ(source().resourceCalls(), 1);
}

TEST_F(ReferenceDataRetrieverTest, HrefsWithoutItemsContributeNothing) {
    add(ProductBuilder(u"a")
            .record(u"f", RefEntityType::Function, u"missing.html")
            .entity(u"f", RefEntityType::Function, u"there.html"));
    EXPECT_THAT(retrieve(ReferenceRequest(u"f")), ElementsAre("a:f[function]@there.html"));
}

TEST_F(ReferenceDataRetrieverTest, NothingIsDeDuplicated) {
    add(ProductBuilder(u"a")
            .entity(u"f", RefEntityType::Function, u"f.html")
            .item(makeItem(
                {.href = u"f.html",
                 .entities = {RefEntity(RefEntityType::Function, u"f", FunctionType::Function)}})));
    EXPECT_THAT(retrieve(ReferenceRequest(u"f")),
                ElementsAre("a:f[function]@f.html", "a:f[function]@f.html"));
}

TEST_F(ReferenceDataRetrieverTest, FoldsCaseWhenAsked) {
    add(ProductBuilder(u"a").entity(u"pkg.\u00C4rger", RefEntityType::Function, u"f.html"));
    ReferenceRequest request(u"PKG.\u00E4RGER");
    EXPECT_THAT(retrieve(request), IsEmpty());
    request.setEntityCaseSensitivity(EntityCaseSensitivity::Insensitive);
    EXPECT_EQ(retrieve(request).size(), 1u);
}

TEST_F(ReferenceDataRetrieverTest, MovedRetrieverAnswersLikeItsSource) {
    add(ProductBuilder(u"a").entity(u"pkg.f", RefEntityType::Function, u"f.html"));
    ReferenceRequest request(u"F");
    request.setEntityCaseSensitivity(EntityCaseSensitivity::Insensitive);
    request.setEntityPrecision(EntityPrecision::Ignore_Package);
    ReferenceDataRetriever source(request);
    ReferenceDataRetriever moved(std::move(source));
    EXPECT_THAT(dump(moved.getReferenceData()), ElementsAre("a:pkg.f[function]@f.html"));
    ReferenceDataRetriever assigned;
    assigned = std::move(moved);
    EXPECT_THAT(dump(assigned.getReferenceData()), ElementsAre("a:pkg.f[function]@f.html"));
}

TEST_F(ReferenceDataRetrieverTest, DefaultRetrieverFindsNothing) {
    add(ProductBuilder(u"a").entity(u"f", RefEntityType::Function, u"f.html"));
    EXPECT_THAT(ReferenceDataRetriever().getReferenceData(), IsEmpty());
}

TEST_F(ReferenceDataRetrieverTest, ResultsOutliveTheCaches) {
    add(ProductBuilder(u"a")
            .item(makeFullItem(u"full.html"))
            .record(u"pkg.probe", RefEntityType::Function, u"full.html"));
    const auto results =
        ReferenceDataRetriever(ReferenceRequest(u"pkg.probe", {RefEntityType::Function}))
            .getReferenceData();
    cache_manager::ReferenceCacheManager::ClearAllCaches();
    ASSERT_EQ(results.size(), 1u);
    EXPECT_EQ(results[0].getRefItem(), makeFullItem(u"full.html"));
    EXPECT_EQ(results[0].getHeaderInfo().getDisplayName(), u"The a");
}

TEST(ReferenceDataRetrieverNamesTest, HasItsHostNames) {
    EXPECT_STREQ(ReferenceDataRetriever::getZORBClassName(), "ReferenceDataRetriever");
    EXPECT_STREQ(ReferenceDataRetriever::getZORBPackageName(), "veltra.internal.reference.api");
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
