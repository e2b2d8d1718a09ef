#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "reference/api/AllTextDataRetriever.hpp"
#include "reference/api/ClassEntityDataRetriever.hpp"
#include "reference/api/EntityPurposeDataRetriever.hpp"
#include "reference/api/PageNameDataRetriever.hpp"
#include "support/Items.hpp"
#include "support/LibraryTest.hpp"
#include "support/Print.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using api::ClassEntityDataRetriever;
using api::EntityPurposeDataRetriever;
using api::PageNameDataRetriever;
using api::ReferenceRequest;
using property::RefEntityType;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

template <typename Retriever>
std::vector<std::string> found(const ReferenceRequest& request) {
    return dump(Retriever(request).getReferenceData());
}

ReferenceRequest ignoringCase(ReferenceRequest request) {
    request.setEntityCaseSensitivity(api::EntityCaseSensitivity::Insensitive);
    return request;
}

class SpecializedRetrieversTest : public LibraryTest {
  protected:
    SpecializedRetrieversTest() {
        add(ProductBuilder(u"p")
                .classWith(u"geo.Shape", u"geo", u"ref/shape.html",
                           {{u"Size", {u"Width", u"Height"}}, {u"Look", {u"Colour"}}})
                .entity(u"geo.Shape.draw", RefEntityType::Method, u"ref/draw.html",
                        u"Draw with WIDTH"));
    }

    const std::string shape = "p:geo.Shape[class]@ref/shape.html";
    const std::string width = "p:geo.Shape.Width[property]@ref/shape.html#Width";
    const std::string height = "p:geo.Shape.Height[property]@ref/shape.html#Height";
    const std::string colour = "p:geo.Shape.Colour[property]@ref/shape.html#Colour";
    const std::string draw = "p:geo.Shape.draw[method]@ref/draw.html";
};

TEST_F(SpecializedRetrieversTest, ClassSearchYieldsTheClassThenEveryPropertyOfEveryGroup) {
    EXPECT_THAT(found<ClassEntityDataRetriever>(ReferenceRequest(u"geo.Shape")),
                ElementsAre(draw, shape, width, height, colour));
    EXPECT_THAT(
        found<ClassEntityDataRetriever>(ReferenceRequest(u"geo.Shape", {RefEntityType::Property})),
        ElementsAre(shape, width, height, colour));
    const auto results =
        ClassEntityDataRetriever(ReferenceRequest(u"geo.Shape")).getReferenceData();
    for (const auto& result : results)
        EXPECT_EQ(result.getHeaderInfo(), results.front().getHeaderInfo());
}

TEST_F(SpecializedRetrieversTest, ClassSearchYieldsEachEntryOnceAndOneProductAfterTheOther) {
    for (const char16_t* name : {u"y", u"z"})
        add(ProductBuilder(name)
                .entity(u"Solid", RefEntityType::Class, u"Solid.html")
                .record(u"Solid.Solid", RefEntityType::Constructor, u"Solid.html")
                .entity(u"Solid.Inner", RefEntityType::Class, u"Inner.html"));
    EXPECT_THAT(dump(api::ClassEntityDataRetriever(ReferenceRequest(u"Solid")).getReferenceData()),
                ElementsAre("y:Solid.Inner[class]@Inner.html", "y:Solid[class]@Solid.html",
                            "z:Solid.Inner[class]@Inner.html", "z:Solid[class]@Solid.html"));
}

TEST_F(SpecializedRetrieversTest, ClassSearchWithoutThePropertyTypeYieldsClassesAsTheyAre) {
    EXPECT_THAT(
        found<ClassEntityDataRetriever>(ReferenceRequest(u"geo.Shape", {RefEntityType::Class})),
        ElementsAre(shape));
    EXPECT_THAT(
        found<ClassEntityDataRetriever>(ReferenceRequest(u"geo.Shape", {RefEntityType::Method})),
        ElementsAre(draw));
}

TEST_F(SpecializedRetrieversTest, ClassSearchLeavesOutAnItemThatIsNotClassLike) {
    add(ProductBuilder(u"q").classWith(u"Config", u"", u"config.html", {{u"", {u"Path"}}},
                                       RefEntityType::Topic));
    cache_manager::ReferenceCacheManager::ClearAllCaches();
    EXPECT_THAT(found<ClassEntityDataRetriever>(ReferenceRequest(u"Config")),
                ElementsAre("q:Config.Path[property]@config.html#Path"));
}

TEST_F(SpecializedRetrieversTest, PurposeSearchFindsAPropertyByItsPurposeWithoutItsClass) {
    EXPECT_THAT(found<EntityPurposeDataRetriever>(ignoringCase(ReferenceRequest(u"OF WIDTH"))),
                ElementsAre(width));
    EXPECT_THAT(found<EntityPurposeDataRetriever>(ignoringCase(ReferenceRequest(u"width"))),
                ElementsAre(draw, width));
    EXPECT_THAT(found<EntityPurposeDataRetriever>(ReferenceRequest(u"of Height")),
                ElementsAre(height));
    EXPECT_THAT(found<EntityPurposeDataRetriever>(ReferenceRequest(u"OF HEIGHT")), IsEmpty());
}

TEST_F(SpecializedRetrieversTest, PurposeSearchBringsTheClassWhenItMatchesByItself) {
    // The class's name is part of each property's name.
    EXPECT_THAT(found<EntityPurposeDataRetriever>(ReferenceRequest(u"geo.Shape")),
                ElementsAre(draw, shape, width, height, colour));
    // By its purpose the record leads to the class; the properties do not match.
    EXPECT_THAT(
        found<EntityPurposeDataRetriever>(ReferenceRequest(u"Shape.", {RefEntityType::Property})),
        ElementsAre(width, height, colour));
}

TEST_F(SpecializedRetrieversTest, PurposeSearchBringsTheClassByItsOwnPurposeOnly) {
    const auto pen = makeItem(
        {.href = u"pen.html",
         .entities = {{RefEntityType::Class, u"Pen", property::FunctionType::NotCallable}},
         .purpose = u"Draws an Outline",
         .classPropertyGroups = {property::ClassPropertyGroup(
             u"", {property::ClassProperty(u"Ink", u"Colour of the outline", u"pen.html#Ink", {}),
                   property::ClassProperty(u"Tip", u"Width of the line", u"pen.html#Tip", {})})}});
    add(ProductBuilder(u"q").item(pen).record(u"Pen", RefEntityType::Class, u"pen.html",
                                              u"Colour, width, outline, Outline"));
    cache_manager::ReferenceCacheManager::ClearAllCaches();
    const auto pens = [](const std::u16string& text, bool caseSensitive) {
        const ReferenceRequest request(text, {}, {u"q"});
        return found<EntityPurposeDataRetriever>(caseSensitive ? request : ignoringCase(request));
    };
    const std::string entry = "q:Pen[class]@pen.html";
    const std::string ink = "q:Pen.Ink[property]@pen.html#Ink";
    EXPECT_THAT(pens(u"OUTLINE", false), ElementsAre(entry, ink));
    EXPECT_THAT(pens(u"Colour", true), ElementsAre(ink)) << "only the property says so";
    EXPECT_THAT(pens(u"outline", true), ElementsAre(ink)) << "the class says so in capitals";
    // No property matches: the class's entry stays as it is, whatever led to it.
    EXPECT_THAT(pens(u"Outline", true), ElementsAre(entry));
}

TEST_F(SpecializedRetrieversTest, PurposeSearchForEverythingTakesTheClassWhoseTypePasses) {
    EXPECT_THAT(
        found<EntityPurposeDataRetriever>(ReferenceRequest::createMatchAllTextRequest({}, {})),
        ElementsAre(draw, shape, width, height, colour));
    EXPECT_THAT(found<EntityPurposeDataRetriever>(
                    ReferenceRequest::createMatchAllTextRequest({RefEntityType::Property}, {})),
                ElementsAre(width, height, colour));
}

TEST_F(SpecializedRetrieversTest, PageSearchYieldsThePagesEntriesAndNoProperties) {
    EXPECT_THAT(found<PageNameDataRetriever>(ReferenceRequest(u"ref/shape.html")),
                ElementsAre(shape));
    ReferenceRequest request(u"SHAPE.html");
    request.setEntityPrecision(api::EntityPrecision::Ignore_Package);
    EXPECT_THAT(found<PageNameDataRetriever>(request), IsEmpty());
    EXPECT_THAT(found<PageNameDataRetriever>(ignoringCase(request)), ElementsAre(shape));
}

TEST_F(SpecializedRetrieversTest, PageSearchForEverythingYieldsPropertiesWithoutTheirClass) {
    EXPECT_THAT(found<PageNameDataRetriever>(ReferenceRequest::createMatchAllTextRequest({}, {})),
                ElementsAre(draw, width, height, colour));
}

TEST_F(SpecializedRetrieversTest, MoveKeepsTheirKind) {
    ClassEntityDataRetriever source(ReferenceRequest(u"geo.Shape", {RefEntityType::Property}));
    ClassEntityDataRetriever moved(std::move(source));
    EXPECT_EQ(moved.getReferenceData().size(), 4u);
    ClassEntityDataRetriever assigned;
    assigned = std::move(moved);
    EXPECT_EQ(assigned.getReferenceData().size(), 4u);
}

TEST(SpecializedRetrieverNamesTest, HaveTheirHostNamesInTheBasesPackage) {
    EXPECT_STREQ(api::AllTextDataRetriever::getZORBClassName(), "AllTextDataRetriever");
    EXPECT_STREQ(ClassEntityDataRetriever::getZORBClassName(), "ClassEntityDataRetriever");
    EXPECT_STREQ(EntityPurposeDataRetriever::getZORBClassName(), "EntityPurposeDataRetriever");
    EXPECT_STREQ(PageNameDataRetriever::getZORBClassName(), "PageNameDataRetriever");
    EXPECT_STREQ(PageNameDataRetriever::getZORBPackageName(), "veltra.internal.reference.api");
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
