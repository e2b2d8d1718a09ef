// What a request derives from its text, and what it says of single names and texts.
#include <string>

#include <gtest/gtest.h>

#include "property/RefEntityType.hpp"
#include "reference/search/ReferenceRequestExt.hpp"

namespace reference::search {
namespace VELTRA_TEST_FILE {

using property::RefEntityType;

ReferenceRequestExt::Request asked(const std::u16string& text) {
    return {.text = text, .types = {}, .products = {}};
}

TEST(ReferenceRequestExtTest, ByDefaultNamesAreComparedAsTheyStand) {
    const std::u16string text = u"a.Fit";
    const ReferenceRequestExt ext(asked(text));
    EXPECT_TRUE(ext.isCaseSensitive());
    EXPECT_TRUE(ext.isExactMatch());
    EXPECT_FALSE(ext.isAllTextMatch());
    EXPECT_EQ(ext.searchText(), u"a.Fit");
    EXPECT_EQ(ext.componentCount(), 2U);
    EXPECT_TRUE(ext.isEntityNameMatch(u"a.Fit", RefEntityType::Function));
    EXPECT_FALSE(ext.isEntityNameMatch(u"b.a.Fit", RefEntityType::Function));
    EXPECT_FALSE(ext.isEntityNameMatch(u"a.fit", RefEntityType::Function));
}

TEST(ReferenceRequestExtTest, WhereEverythingMatchesEveryNameDoes) {
    const std::u16string text;
    auto request = asked(text);
    request.isAllTextMatch = true;
    EXPECT_TRUE(ReferenceRequestExt(request).isEntityNameMatch(u"a.Fit", RefEntityType::Function));
    EXPECT_FALSE(
        ReferenceRequestExt(asked(text)).isEntityNameMatch(u"a.Fit", RefEntityType::Function));
}

TEST(ReferenceRequestExtTest, NamesAndPurposesAreSearchedForTheText) {
    const std::u16string text = u"Fit";
    const ReferenceRequestExt exact(asked(text));
    EXPECT_TRUE(exact.isNameAndPurposeMatch(u"a.Fitting", u""));
    EXPECT_TRUE(exact.isNameAndPurposeMatch(u"", u"How to Fit"));
    EXPECT_FALSE(exact.isNameAndPurposeMatch(u"a.fitting", u"How to fit"));
    auto request = asked(text);
    request.isCaseSensitive = false;
    const ReferenceRequestExt folded(request);
    EXPECT_TRUE(folded.isNameAndPurposeMatch(u"a.fitting", u""));
    EXPECT_TRUE(folded.isNameAndPurposeMatch(u"", u"HOW TO FIT"));
    EXPECT_FALSE(folded.isNameAndPurposeMatch(u"a.FITTING", u"")) << "names come folded";
    const std::u16string nothing;
    EXPECT_FALSE(ReferenceRequestExt(asked(nothing)).isNameAndPurposeMatch(u"a", u"b"));
    EXPECT_TRUE(ReferenceRequestExt(asked(nothing)).isTextMatch(u"a"));
    EXPECT_TRUE(exact.isTextMatch(u"To Fit"));
    EXPECT_FALSE(exact.isTextMatch(u"To fit"));
}

// Half of a pair at an end of the text may be one half of a letter where it is looked for.
TEST(ReferenceRequestExtTest, ThePartFormIsWithoutHalvesOfPairsAtItsEnds) {
    const auto partOf = [](const std::u16string& text) {
        const ReferenceRequestExt ext(asked(text));
        return std::string(ext.partForm());
    };
    EXPECT_EQ(partOf(u"fit"), "fit");
    for (const char16_t trail : {u'\xDC00', u'\xDD55', u'\xDFFF'})
        EXPECT_EQ(partOf(trail + std::u16string(u"fit")), "fit");
    for (const char16_t lead : {u'\xD800', u'\xD955', u'\xDBFF'})
        EXPECT_EQ(partOf(std::u16string(u"fit") + lead), "fit");
    EXPECT_EQ(partOf(u"\xDC00"
                     u"fit"
                     u"\xD800"),
              "fit");
    EXPECT_EQ(partOf(u"\xDC00"), "");
    EXPECT_EQ(partOf(u"\xD800"), "");
    // What is no half, and a half that nothing can go before or follow.
    for (const std::u16string text : {u"\xD7FF"
                                      u"fit",
                                      u"\xE000"
                                      u"fit",
                                      u"fit"
                                      u"\xD7FF",
                                      u"fit"
                                      u"\xE000",
                                      u"\xD800"
                                      u"fit",
                                      u"fit"
                                      u"\xDC00"}) {
        const ReferenceRequestExt ext(asked(text));
        EXPECT_EQ(ext.partForm(), ext.nameForm());
        EXPECT_EQ(ext.partForm().size(), 6U);
    }
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::search
