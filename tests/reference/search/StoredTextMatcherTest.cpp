// The bytes of a text are searched like the text itself, however it is folded.
#include <string>

#include <gtest/gtest.h>

#include "docimage/unitBytes.hpp"
#include "reference/search/ReferenceRequestExt.hpp"
#include "reference/search/StoredTextMatcher.hpp"

namespace reference::search {
namespace VELTRA_TEST_FILE {

struct Case {
    const char* name;
    std::u16string searched;
    std::u16string stored;
    bool whereCaseCounts;
    bool whereItDoesNot;
};

bool isMatch(const Case& c, bool caseCounts) {
    const ReferenceRequestExt ext(
        {.text = c.searched, .types = {}, .products = {}, .isCaseSensitive = caseCounts});
    StoredTextMatcher matcher(ext);
    const bool answer = matcher.matches(docimage::toUnitBytes(c.stored));
    EXPECT_EQ(ext.isTextMatch(c.stored), answer) << c.name;
    // One that has looked at other texts before answers alike.
    static_cast<void>(matcher.matches("A LONGER TEXT THAN ANY OTHER"));
    EXPECT_EQ(matcher.matches(docimage::toUnitBytes(c.stored)), answer) << c.name;
    return answer;
}

TEST(StoredTextMatcherTest, AnswersAsTheRequestDoesForTheText) {
    const std::u16string lone(1, u'\xD800');
    const Case cases[] = {
        {"the same", u"fit", u"to fit a curve", true, true},
        {"another case", u"FIT", u"to fit a curve", false, true},
        {"another case stored", u"fit", u"TO FIT A CURVE", false, true},
        {"not there", u"fits", u"to fit a curve", false, false},
        {"nothing", u"", u"to fit a curve", true, true},
        {"nothing in nothing", u"", u"", true, true},
        {"something in nothing", u"a", u"", false, false},
        {"the first letter", u"a", u"A", false, true},
        {"the last letter", u"z", u"Z", false, true},
        {"what stands before the first letter", u"`", u"@", false, false},
        {"what stands after the last letter", u"{", u"[", false, false},
        {"other letters beside", u"fit", u"\u00DCber FIT", false, true},
        {"other letters", u"\u00FCber", u"\u00DCber Fit", false, true},
        {"other letters that are not there", u"\u00E4ber", u"\u00DCber Fit", false, false},
        {"the Kelvin sign is a k", u"k", u"1 \u212A", false, true},
        {"a k is no Kelvin sign", u"\u212A", u"1 k", false, true},
        {"a dotted capital I begins like an i", u"i", u"\u0130", false, true},
        {"a final sigma is a sigma of its own", u"\u03C3", u"\u039F\u03A3", false, false},
        {"half a pair keeps the case of its text", u"fit", lone + u"FIT", false, false},
        {"half a pair is found", lone, u"x" + lone, true, true},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(isMatch(c, true), c.whereCaseCounts) << c.name;
        EXPECT_EQ(isMatch(c, false), c.whereItDoesNot) << c.name;
    }
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::search
