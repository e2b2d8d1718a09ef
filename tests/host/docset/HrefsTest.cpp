#include <string>

#include <gtest/gtest.h>

#include "docset/hrefs.hpp"
#include "fl/i18n/utf.hpp"

namespace reference::docset {
namespace VELTRA_TEST_FILE {

TEST(HrefsTest, APageIsBelowItsHelpFolder) {
    for (const char16_t* href : {u"a.html", u"ref/a.html#b", u"ref/./a.html", u"ref/../a.html",
                                 u"a:b", u"a..b/..c", u"#top", u"a.html#../../x", u"a.html?b:c"})
        EXPECT_EQ(whyNotAPage(href).has_value(), std::u16string(href) == u"a:b")
            << fl::i18n::toUtf8(href);
    for (const char16_t* href :
         {u"../a.html", u"ref/../../a.html", u"%2e%2E/a.html", u".%2e/a.html", u"/a.html",
          u"//host/a.html", u"https://host/a.html", u"javascript:a()", u"a\\b.html", u"a\nb.html",
          u"a\u0085.html"})
        EXPECT_TRUE(whyNotAPage(href).has_value()) << fl::i18n::toUtf8(href);
}

TEST(HrefsTest, ATargetMayBeOfAnotherProductOrOfTheWeb) {
    for (const char16_t* href : {u"", u"a.html", u"../other/a.html", u"#place", u"http://host/a",
                                 u"HTTPS://host/a?b=../..#c"})
        EXPECT_EQ(whyNotATarget(href, u"demo"), std::nullopt) << fl::i18n::toUtf8(href);
    for (const char16_t* href :
         {u"../../a.html", u"..", u"javascript:a()", u"JAVASCRIPT:a()", u"data:text/html,a",
          u"file:///etc/passwd", u"/etc/passwd", u"//host/a", u"..\\a", u"\u0001javascript:a()"})
        EXPECT_EQ(whyNotATarget(href, u"demo").has_value(), std::u16string(href) != u"..")
            << fl::i18n::toUtf8(href);
    EXPECT_EQ(whyNotATarget(u"../../a.html", u"python/library"), std::nullopt);
    EXPECT_NE(whyNotATarget(u"../a.html", u""), std::nullopt);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::docset
