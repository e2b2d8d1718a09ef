#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "reference/api/AllTextDataRetriever.hpp"
#include "support/Items.hpp"
#include "support/LibraryTest.hpp"
#include "support/Print.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using api::AllTextDataRetriever;
using api::ReferenceRequest;
using namespace property;
using ::testing::ElementsAre;

class AllTextDataRetrieverTest : public LibraryTest {
  protected:
    // Whether an item is found by a text, case counting or not.
    bool isFound(ItemFields fields, const std::u16string& text, bool caseSensitive = true) {
        fields.href = u"page.html";
        add(ProductBuilder(u"p")
                .record(u"unrelated", RefEntityType::Function, u"page.html")
                .item(makeItem(std::move(fields))));
        cache_manager::ReferenceCacheManager::ClearAllCaches();
        ReferenceRequest request(text);
        if (!caseSensitive)
            request.setEntityCaseSensitivity(api::EntityCaseSensitivity::Insensitive);
        return !AllTextDataRetriever(request).getReferenceData().empty();
    }
};

TEST_F(AllTextDataRetrieverTest, SearchesTheseFieldsAndNoOthers) {
    const std::u16string needle = u"the needle here";
    const struct {
        const char* name;
        ItemFields fields;
        bool expected;
    } cases[] = {
        {"purpose", {.purpose = needle}, true},
        {"description", {.description = needle}, true},
        {"package", {.packageName = needle}, true},
        {"entity name",
         {.entities = {RefEntity(RefEntityType::Function, needle, FunctionType::Function)}},
         true},
        {"syntax", {.syntaxGroups = {SyntaxGroup(u"", {needle})}}, true},
        {"syntax group title", {.syntaxGroups = {SyntaxGroup(needle, {})}}, true},
        {"input name", {.inputs = {Input(needle, u"", u"", {})}}, true},
        {"input purpose", {.inputs = {Input(u"", needle, u"", {})}}, true},
        {"input value", {.inputs = {Input(u"", u"", u"", {u"", needle})}}, true},
        {"input href", {.inputs = {Input(u"", u"", needle, {})}}, false},
        {"output name", {.outputs = {Output(needle, u"", u"", {})}}, true},
        {"output purpose", {.outputs = {Output(u"", needle, u"", {})}}, true},
        {"output value", {.outputs = {Output(u"", u"", u"", {needle})}}, true},
        {"property group title", {.classPropertyGroups = {ClassPropertyGroup(needle, {})}}, true},
        {"property name",
         {.classPropertyGroups = {ClassPropertyGroup(u"", {ClassProperty(needle, u"", u"", {})})}},
         true},
        {"property purpose",
         {.classPropertyGroups = {ClassPropertyGroup(u"", {ClassProperty(u"", needle, u"", {})})}},
         true},
        {"property value",
         {.classPropertyGroups = {ClassPropertyGroup(u"",
                                                     {ClassProperty(u"", u"", u"", {needle})})}},
         true},
        {"example title", {.examples = {Example(needle, u"")}}, true},
        {"example code", {.examples = {Example(u"", needle)}}, false},
        {"see-also name", {.seeAlso = {SeeAlso(u"", needle)}}, true},
        {"see-also page", {.seeAlso = {SeeAlso(needle, u"")}}, false},
        {"version", {.introduced = needle}, false},
        {"input group",
         {.inputGroups = {InputGroup(needle, {Input(needle, u"", u"", {})})}},
         false},
        {"parameter", {.parameters = {Parameter(needle, needle, needle)}}, false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(isFound(c.fields, u"needle"), c.expected) << c.name;
}

TEST_F(AllTextDataRetrieverTest, CaseCountsOnlyWhenAsked) {
    EXPECT_TRUE(isFound({.purpose = u"A NEEDLE"}, u"needle", false));
    EXPECT_TRUE(isFound({.purpose = u"A needle"}, u"NEEDLE", false));
    EXPECT_FALSE(isFound({.purpose = u"A NEEDLE"}, u"needle", true));
}

TEST_F(AllTextDataRetrieverTest, EmptyTextMatchesEveryItemOfEveryNominatedPage) {
    EXPECT_TRUE(isFound({}, u""));
    EXPECT_TRUE(isFound({}, u"", false));
}

TEST_F(AllTextDataRetrieverTest, PagesThatNoRecordCanNominateAreNotRead) {
    add(ProductBuilder(u"p").item(makeItem({.href = u"page.html", .purpose = u"needle"})));
    EXPECT_TRUE(AllTextDataRetriever(ReferenceRequest(u"needle")).getReferenceData().empty());
    EXPECT_EQ(source().resourceCalls(), 0);
}

TEST_F(AllTextDataRetrieverTest, TypesChoosePagesNotEntriesAndClassesAreNotExpanded) {
    add(ProductBuilder(u"p")
            .classWith(u"Shape", u"", u"page.html", {{u"Size", {u"Width"}}})
            .item(makeItem({.href = u"page.html", .purpose = u"Width of things"}))
            .entity(u"f", RefEntityType::Function, u"f.html", u"Width"));
    EXPECT_THAT(dump(AllTextDataRetriever(ReferenceRequest(u"Width", {RefEntityType::Class}))
                         .getReferenceData()),
                ElementsAre("p:Shape[class]@page.html", "p:@page.html"));
}

TEST_F(AllTextDataRetrieverTest, SameItemOfTwoProductsIsReturnedTwice) {
    for (const char16_t* name : {u"a", u"b"})
        add(ProductBuilder(name).entity(u"f", RefEntityType::Function, u"f.html", u"Same"));
    EXPECT_THAT(dump(AllTextDataRetriever(ReferenceRequest(u"Same")).getReferenceData()),
                ElementsAre("a:f[function]@f.html", "b:f[function]@f.html"));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
