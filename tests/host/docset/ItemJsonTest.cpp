// Records and items, written as JSON and read back from the files of a set.
#include <limits>
#include <string>
#include <vector>

#include <boost/json/object.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>
#include <gmock/gmock.h>

#include "docset/ItemWriter.hpp"
#include "docset/publish.hpp"
#include "docset/validate.hpp"
#include "host/docset/Sets.hpp"
#include "support/Items.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

namespace json = boost::json;
using namespace property;
using docset::JsonForm;
using docset::toJson;

// Numbers that this edition of the property library has no name for.
template <typename Enumeration>
typename Enumeration::Value unnamed(std::uint32_t below) {
    return static_cast<typename Enumeration::Value>(std::numeric_limits<std::uint32_t>::max() -
                                                    below);
}

RefItem itemOfUnnamedNumbers(std::u16string href) {
    return makeItem(
        {.href = std::move(href),
         .entities = {RefEntity(unnamed<RefEntityType>(0), u"strange", unnamed<FunctionType>(1))},
         .deprecationStatus = unnamed<DeprecationStatus>(2)});
}

TEST(ItemJsonTest, APublishedProductIsReadBackAsItWas) {
    docset::ProductDocumentation product = makeProduct(u"demo");
    const std::u16string fullHref = u"ref/probe.html";
    const std::u16string strangeHref = u"ref/strange.html#\"here\" 測定";
    product.pages[fullHref] = {makeFullItem(fullHref)};
    product.pages[strangeHref] = {itemOfUnnamedNumbers(strangeHref),
                                  itemOfUnnamedNumbers(strangeHref)};
    for (const auto& [href, items] : product.pages)
        for (const auto& item : items)
            for (const auto& entity : item.getRefEntities())
                product.entities[entity.getName()] = {RefItemLookup(
                    entity.getRefEntityType(), entity.getFunctionType(), href, item.getPurpose())};
    product.entities[u"strange"].emplace_back(RefEntityType::Function, FunctionType::Function,
                                              strangeHref, u"");
    for (const char16_t* name : {u"pkg.Probe.Rate", u"pkg.Probe.Name"})
        product.entities[name] = {
            RefItemLookup(RefEntityType::Property, FunctionType::Property, fullHref, u"")};

    const TempFolder root;
    docset::publishProduct(root.path(), "en_US", product);
    EXPECT_EQ(dump(docset::validate(root.path()).faults), "");
    const auto back = readProduct(root.path(), u"demo");
    ASSERT_TRUE(back);
    EXPECT_EQ(back->header, product.header);
    EXPECT_EQ(back->entities, product.entities);
    EXPECT_EQ(back->pages, product.pages);
}

TEST(ItemJsonTest, EveryNamedNumberIsReadBackAsItWas) {
    docset::ProductDocumentation product = makeProduct(u"demo", u"", 0);
    const std::u16string href = u"ref/all.html";
    for (const auto type : RefEntityType::namedValues())
        for (const auto functionType : FunctionType::namedValues()) {
            const std::u16string name(1, static_cast<char16_t>(0x3041 + type * 10 + functionType));
            product.entities[name] = {RefItemLookup(type, functionType, href, u"")};
            product.pages[href].push_back(
                makeItem({.href = href, .entities = {RefEntity(type, name, functionType)}}));
        }
    const TempFolder root;
    docset::publishProduct(root.path(), "en_US", product);
    EXPECT_EQ(readProduct(root.path(), u"demo"), product);
}

TEST(ItemJsonTest, ASetLeavesOutWhatSaysNothing) {
    const RefItem item =
        makeItem({.href = u"ref/a.html",
                  .entities = {RefEntity(RefEntityType::Function, u"a", FunctionType::Function)}});
    EXPECT_EQ(json::value(toJson(item, JsonForm::Set)),
              json::parse(R"({"entities": [{"name": "a", "type": "function",
                                            "functionType": "function"}]})"));
    const RefItemLookup record(RefEntityType::Function, FunctionType::Function, u"ref/a.html", u"");
    EXPECT_EQ(json::value(toJson(record)),
              json::parse(R"({"type": "function", "functionType": "function",
                              "href": "ref/a.html"})"));
}

TEST(ItemJsonTest, ASetHasUnnamedNumbersAsNumbersAndTheCompleteFormAsTexts) {
    const RefItem item = itemOfUnnamedNumbers(u"ref/a.html");
    const json::object inSet = toJson(item, JsonForm::Set);
    EXPECT_EQ(inSet.at("entities").at(0).at("type"), 4294967295U);
    EXPECT_EQ(inSet.at("entities").at(0).at("functionType"), 4294967294U);
    EXPECT_EQ(inSet.at("deprecationStatus"), 4294967293U);
    const json::object complete = toJson(item, JsonForm::Complete);
    EXPECT_EQ(complete.at("entities").at(0).at("type"), "4294967295");
    EXPECT_EQ(complete.at("entities").at(0).at("functionType"), "4294967294");
    EXPECT_EQ(complete.at("deprecationStatus"), "4294967293");
}

TEST(ItemJsonTest, TheCompleteFormHasEveryMemberButAThumbnailThatThereIsNot) {
    const auto membersOf = [](const RefItem& item) {
        std::vector<std::string> names;
        for (const auto& member : toJson(item, JsonForm::Complete))
            names.emplace_back(member.key());
        return names;
    };
    std::vector<std::string> expected = membersOf(makeFullItem(u"ref/a.html"));
    EXPECT_EQ(expected.size(), 16U);
    EXPECT_EQ(std::erase(expected, "appThumbnail"), 1U);
    EXPECT_EQ(membersOf(makeItem({})), expected);
}

TEST(ItemJsonTest, BothFormsSayTheSameOfAFullItem) {
    const RefItem item = makeFullItem(u"ref/a.html");
    const json::object complete = toJson(item, JsonForm::Complete);
    for (const auto& member : toJson(item, JsonForm::Set)) {
        const std::string name(member.key());
        SCOPED_TRACE(name);
        ASSERT_TRUE(complete.contains(name));
        if (member.value().is_string()) {
            EXPECT_EQ(member.value(), complete.at(name));
        }
    }
}

TEST(ItemJsonTest, AnItemsHrefIsNotAmongItsMembers) {
    EXPECT_FALSE(toJson(makeFullItem(u"ref/a.html"), JsonForm::Set).contains("href"));
    EXPECT_FALSE(toJson(makeFullItem(u"ref/a.html"), JsonForm::Complete).contains("href"));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
