#include <chrono>
#include <string>

#include <gtest/gtest.h>

#include "sphinx/HtmlDocument.hpp"
#include "sphinx/InlineText.hpp"

namespace reference::importers::sphinx {
namespace VELTRA_TEST_FILE {

std::string repeated(std::string_view text, int times) {
    std::string result;
    for (int each = 0; each < times; ++each)
        result += text;
    return result;
}

TEST(HtmlDocumentTest, GivesElementsWithTheirAttributesAndClasses) {
    HtmlArena arena;
    const std::string page = "<div id=\"a\" class=\"one two\n three\">x<!--c--><b>y</b> </div>";
    const HtmlDocument document(arena, page);
    const Node div = document.root().findTag("div");
    ASSERT_TRUE(div);
    EXPECT_EQ(div.attribute("id"), "a");
    EXPECT_EQ(div.attribute("title"), std::nullopt);
    EXPECT_TRUE(div.hasClass("three"));
    EXPECT_FALSE(div.hasClass("thre"));
    EXPECT_EQ(div.firstElement().tag(), "b");
    EXPECT_EQ(div.firstElement().parent(), div);
    EXPECT_FALSE(div.firstElement().nextElement());
    EXPECT_TRUE(div.firstElement().nextSibling().isBlank());
}

TEST(HtmlDocumentTest, MayBeMadeAgainAndAgainInOneArena) {
    HtmlArena arena;
    for (int each = 0; each < 100; ++each) {
        const std::string page = "<p>" + repeated("<i>x</i>", 1000) + std::to_string(each);
        const HtmlDocument document(arena, page);
        EXPECT_TRUE(inlineText(document.root()).ends_with(std::to_string(each)));
    }
}

TEST(HtmlDocumentTest, RefusesElementsNestedTooDeepWithoutDelay) {
    const struct {
        const char* name;
        std::string page;
    } rows[] = {
        {"never closed", repeated("<div>", 100000)},
        {"closed", repeated("<div>", 100000) + repeated("</div>", 100000)},
        {"lists", repeated("<ul><li>", 100000)},
        {"unknown elements", repeated("<zz>", 100000)},
        {"formatting", repeated("<b><i>", 50000)},
        {"upper case", repeated("<DIV>", 100000)},
        {"a little too deep", repeated("<div>", HtmlDocument::maxDepth + 1)},
    };
    for (const auto& row : rows) {
        HtmlArena arena;
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_THROW(HtmlDocument(arena, row.page), HtmlError) << row.name;
        EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5)) << row.name;
    }
}

TEST(HtmlDocumentTest, AcceptsAnHonestDepthAndLongPages) {
    HtmlArena arena;
    const std::string deep = repeated("<div>", 400) + "x" + repeated("</div>", 400);
    EXPECT_NO_THROW(HtmlDocument(arena, deep));
    const std::string unclosed = repeated("<p>a<br><img>", 20000);
    EXPECT_NO_THROW(HtmlDocument(arena, unclosed));
}

TEST(HtmlDocumentTest, AnElementHasSoManyAttributes) {
    std::string attributes;
    for (int each = 0; each < HtmlDocument::maxAttributes; ++each)
        attributes += " a" + std::to_string(each) + "=1";
    HtmlArena arena;
    const std::string most = "<p" + attributes + ">x</p>";
    EXPECT_EQ(inlineText(HtmlDocument(arena, most).root()), "x");
    const std::string tooMany = "<p" + attributes + " and>x</p>";
    EXPECT_THROW(HtmlDocument(arena, tooMany), HtmlError);
}

// Formatting elements that are never closed are opened again in every paragraph, so that a page of
// this kind grows without measure.
TEST(HtmlDocumentTest, RefusesPagesThatGrowBeyondMeasure) {
    std::string page = "<p>";
    for (int each = 0; each < 400; ++each)
        page += "<b id=" + std::to_string(each) + ">";
    page += repeated("<p>x", 100000);
    HtmlArena arena;
    EXPECT_THROW(HtmlDocument(arena, page), HtmlError);
    const std::string fine = "<p>fine</p>";
    EXPECT_EQ(inlineText(HtmlDocument(arena, fine).root()), "fine");
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::importers::sphinx
