#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "reference/api/ReferenceDataRetriever.hpp"
#include "support/Items.hpp"
#include "support/LibraryTest.hpp"
#include "support/Print.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using api::EntityCaseSensitivity;
using api::EntityPrecision;
using api::ReferenceDataRetriever;
using api::ReferenceRequest;
using namespace property;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::vector<ProductBuilder::Group> twoGroups = {{u"Size", {u"Width", u"Height"}},
                                                      {u"Look", {u"Colour"}}};

class PropertyExpansionTest : public LibraryTest {
  protected:
    void addShape() {
        add(ProductBuilder(u"p").classWith(u"geo.Shape", u"geo", u"ref/geo.shape.html", twoGroups));
    }
};

TEST_F(PropertyExpansionTest, PropertyRecordCarriesWhatItsClassAndItsPropertySay) {
    addShape();
    const auto results =
        ReferenceDataRetriever(ReferenceRequest(u"geo.Shape.Height")).getReferenceData();
    ASSERT_EQ(results.size(), 1u);
    EXPECT_EQ(results[0].getRefItem(),
              makeItem({.href = u"ref/geo.shape.html#Height",
                        .entities = {RefEntity(RefEntityType::Property, u"geo.Shape.Height",
                                               FunctionType::Property)},
                        .packageName = u"geo",
                        .purpose = u"purpose of Height",
                        .introduced = u"3.2",
                        .deprecationStatus = DeprecationStatus::Deprecated,
                        .classPropertyGroups = {ClassPropertyGroup(
                            u"Size",
                            {ClassProperty(u"Height", u"purpose of Height",
                                           u"ref/geo.shape.html#Height", {u"value of Height"})})},
                        .seeAlso = {SeeAlso(u"geo.shape.html", u"geo.Shape")}}));
    EXPECT_EQ(results[0].getHeaderInfo().getShortName(), u"p");
}

// The class says something in every field, and the property's entry has only those that are meant.
TEST_F(PropertyExpansionTest, PropertyRecordLeavesEmptyWhatOnlyTheClassHas) {
    add(ProductBuilder(u"p")
            .item(makeFullItem(u"ref/probe.html"))
            .record(u"pkg.Probe.Rate", RefEntityType::Property, u"ref/probe.html"));
    const auto results =
        ReferenceDataRetriever(ReferenceRequest(u"pkg.Probe.Rate")).getReferenceData();
    ASSERT_EQ(results.size(), 1u);
    EXPECT_EQ(results[0].getRefItem(),
              makeItem({.href = u"ref/probe.html#Rate",
                        .entities = {RefEntity(RefEntityType::Property, u"pkg.Probe.Rate",
                                               FunctionType::Property)},
                        .packageName = u"pkg",
                        .purpose = u"Samples a second",
                        .introduced = u"9.1",
                        .deprecationStatus = DeprecationStatus::Deprecated,
                        .classPropertyGroups = {ClassPropertyGroup(
                            u"Timing", {ClassProperty(u"Rate", u"Samples a second",
                                                      u"ref/probe.html#Rate", {u"100"})})},
                        .seeAlso = {SeeAlso(u"probe.html", u"pkg.Probe")}}));
    EXPECT_EQ(results[0].getHeaderInfo(), HeaderInfo(u"p.ref", u"p", u"p", u"The p", u"1.0"));
}

TEST_F(PropertyExpansionTest, PackageIsAddedToANameThatDoesNotHoldIt) {
    struct Case {
        const char* name;
        std::u16string className;
        std::u16string packageName;
        std::u16string expected;
    };
    const Case cases[] = {
        {"added", u"Shape", u"geo", u"geo.Shape.Width"},
        {"held at the start", u"geo.Shape", u"geo", u"geo.Shape.Width"},
        {"held anywhere", u"Ngeoid", u"geo", u"Ngeoid.Width"},
        {"no package", u"Shape", u"", u"Shape.Width"},
        {"held in the property", u"Shape", u"Wid", u"Shape.Width"},
    };
    for (const auto& c : cases) {
        add(ProductBuilder(u"p").classWith(c.className, c.packageName, u"page.html",
                                           {{u"", {u"Width"}}}));
        cache_manager::ReferenceCacheManager::ClearAllCaches();
        const auto results =
            ReferenceDataRetriever(ReferenceRequest(c.className + u".Width")).getReferenceData();
        ASSERT_EQ(results.size(), 1u) << c.name;
        EXPECT_EQ(results[0].getRefItem().getRefEntities()[0].getName(), c.expected) << c.name;
        // A page without a folder is its own name.
        EXPECT_EQ(results[0].getRefItem().getSeeAlsoInfo()[0], SeeAlso(u"page.html", c.className))
            << c.name;
    }
}

TEST_F(PropertyExpansionTest, ClassGivesWayToItsMatchingPropertiesAlone) {
    addShape();
    ReferenceRequest request(u"shape.width");
    request.setEntityCaseSensitivity(EntityCaseSensitivity::Insensitive);
    request.setEntityPrecision(EntityPrecision::Ignore_Package);
    EXPECT_THAT(retrieve(request),
                ElementsAre("p:geo.Shape.Width[property]@ref/geo.shape.html#Width"));
}

TEST_F(PropertyExpansionTest, ClassItselfIsFoundAsItIs) {
    addShape();
    EXPECT_THAT(retrieve(ReferenceRequest(u"geo.Shape")),
                ElementsAre("p:geo.Shape[class]@ref/geo.shape.html"));
}

TEST_F(PropertyExpansionTest, HappensOnlyWhenPropertiesAreAdmitted) {
    addShape();
    EXPECT_THAT(retrieve(ReferenceRequest(u"geo.Shape.Width", {RefEntityType::Property})),
                ElementsAre("p:geo.Shape.Width[property]@ref/geo.shape.html#Width"));
    EXPECT_THAT(retrieve(ReferenceRequest(u"geo.Shape.Width", {RefEntityType::Class})), IsEmpty());
    EXPECT_THAT(retrieve(ReferenceRequest(u"geo.Shape", {RefEntityType::Class})),
                ElementsAre("p:geo.Shape[class]@ref/geo.shape.html"));
}

TEST_F(PropertyExpansionTest, MatchAllYieldsTheClassWhenItsTypeIsWantedAndThenEveryProperty) {
    addShape();
    const std::vector<std::string> properties = {
        "p:geo.Shape.Width[property]@ref/geo.shape.html#Width",
        "p:geo.Shape.Height[property]@ref/geo.shape.html#Height",
        "p:geo.Shape.Colour[property]@ref/geo.shape.html#Colour"};
    EXPECT_EQ(retrieve(ReferenceRequest::createMatchAllTextRequest({RefEntityType::Property}, {})),
              properties);
    std::vector<std::string> all = properties;
    all.insert(all.begin(), "p:geo.Shape[class]@ref/geo.shape.html");
    EXPECT_EQ(retrieve(ReferenceRequest::createMatchAllTextRequest({}, {})), all);
    EXPECT_EQ(retrieve(ReferenceRequest::createMatchAllTextRequest(
                  {RefEntityType::Class, RefEntityType::Property}, {})),
              all);
    EXPECT_THAT(retrieve(ReferenceRequest::createMatchAllTextRequest({RefEntityType::Class}, {})),
                ElementsAre("p:geo.Shape[class]@ref/geo.shape.html"));
}

TEST_F(PropertyExpansionTest, FirstEntityThatMatchesIsTheOneThatIsExpanded) {
    const auto item =
        makeItem({.href = u"c.html",
                  .entities = {RefEntity(RefEntityType::Class, u"A", FunctionType::NotCallable),
                               RefEntity(RefEntityType::Class, u"B", FunctionType::NotCallable)},
                  .classPropertyGroups = {
                      ClassPropertyGroup(u"", {ClassProperty(u"x", u"", u"c.html#x", {})})}});
    add(ProductBuilder(u"p")
            .item(item)
            .record(u"A.x", RefEntityType::Property, u"c.html")
            .record(u"B.x", RefEntityType::Property, u"c.html"));
    EXPECT_THAT(retrieve(ReferenceRequest(u"B.x")), ElementsAre("p:B.x[property]@c.html#x"));
    EXPECT_THAT(
        retrieve(ReferenceRequest::createMatchAllTextRequest({RefEntityType::Property}, {})),
        ElementsAre("p:A.x[property]@c.html#x"));
}

TEST_F(PropertyExpansionTest, PropertiesOfOneSearchDoNotShowInTheNext) {
    add(ProductBuilder(u"p")
            .classWith(u"A", u"", u"a.html", {{u"", {u"x"}}})
            .classWith(u"B", u"", u"b.html", {{u"", {u"y"}}}));
    const ReferenceDataRetriever retriever(ReferenceRequest(u"B.y"));
    EXPECT_THAT(dump(retriever.getReferenceData()), ElementsAre("p:B.y[property]@b.html#y"));
    EXPECT_THAT(dump(retriever.getReferenceData()), ElementsAre("p:B.y[property]@b.html#y"));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
