#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>

#include "fl/i18n/utf.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using fl::i18n::toUtf16;
using fl::i18n::toUtf8;

struct Pair {
    const char* name;
    std::string utf8;
    std::u16string utf16;
};

const std::vector<Pair> pairs = {
    {"nothing", "", u""},
    {"ASCII", "plot(x)", u"plot(x)"},
    {"a zero", std::string("a\0b", 3), std::u16string(u"a\0b", 3)},
    {"two bytes", "\xC3\xA9", u"\u00E9"},
    {"three bytes", "\xE6\xB8\xAC\xE5\xAE\x9A", u"測定"},
    {"four bytes", "\xF0\x90\x90\x80", u"\U00010400"},
    {"the last character", "\xF4\x8F\xBF\xBF", u"\U0010FFFF"},
    {"around the surrogates", "\xED\x9F\xBF\xEE\x80\x80", u"\uD7FF\uE000"},
};

TEST(UtfTest, ConvertsBothWays) {
    for (const auto& row : pairs) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(toUtf16(row.utf8), row.utf16);
        EXPECT_EQ(toUtf8(row.utf16), row.utf8);
    }
}

TEST(UtfTest, RefusesIllFormedUtf8AndNamesTheByte) {
    struct Row {
        const char* name;
        std::string_view text;
        const char* where;
    };
    const std::vector<Row> rows = {
        {"a stray continuation byte", "\x80", "at byte 0."},
        {"a byte that never occurs", "ab\xFF", "at byte 2."},
        {"an overlong slash", "abc\xC0\xAF", "at byte 3."},
        {"an encoded surrogate", "a\xED\xA0\x80", "at byte 1."},
        {"beyond the last character", "\xF4\x90\x80\x80", "at byte 0."},
        {"cut off at the end", "a\xC3\xA9\xE6\xB8", "at byte 3."},
        {"cut off by a letter", "\xE6\xB8x", "at byte 0."},
        {"Latin-1",
         "Gr\xF6\xDF"
         "e",
         "at byte 2."},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        try {
            static_cast<void>(toUtf16(row.text));
            ADD_FAILURE() << "nothing was thrown";
        } catch (const std::invalid_argument& problem) {
            EXPECT_THAT(problem.what(), testing::HasSubstr(row.where));
        }
    }
}

// Whatever stands before, between and after ASCII of any length.
TEST(UtfTest, ConvertsOtherCharactersAtAnyPlaceWithinAscii) {
    for (std::size_t before = 0; before < 20; ++before)
        for (std::size_t after = 0; after < 20; ++after)
            for (const auto& row : pairs) {
                SCOPED_TRACE(std::to_string(before) + " units, " + row.name + ", " +
                             std::to_string(after) + " units");
                const std::string start(before, '\x7F');
                const std::string end(after, 'z');
                const std::u16string wideStart(before, u'\x7F');
                const std::u16string wideEnd(after, u'z');
                EXPECT_EQ(toUtf16(start + row.utf8 + end + row.utf8),
                          wideStart + row.utf16 + wideEnd + row.utf16);
            }
}

TEST(UtfTest, NamesTheIllFormedByteAtAnyPlaceWithinAscii) {
    for (std::size_t before = 0; before < 20; ++before) {
        const std::string text = "\xC3\xA9" + std::string(before, 'a') + "\x80" + "bcdefghijk";
        SCOPED_TRACE(before);
        try {
            static_cast<void>(toUtf16(text));
            ADD_FAILURE() << "nothing was thrown";
        } catch (const std::invalid_argument& problem) {
            EXPECT_THAT(problem.what(),
                        testing::HasSubstr("at byte " + std::to_string(before + 2) + "."));
        }
    }
}

TEST(UtfTest, WritesAReplacementForEachUnpairedSurrogate) {
    constexpr char16_t lead = 0xD801;
    constexpr char16_t trail = 0xDC00;
    const std::string replacement = "\xEF\xBF\xBD";
    EXPECT_EQ(toUtf8(std::u16string{u'a', lead}), "a" + replacement);
    EXPECT_EQ(toUtf8(std::u16string{trail, u'a'}), replacement + "a");
    EXPECT_EQ(toUtf8(std::u16string{trail, lead}), replacement + replacement);
    EXPECT_EQ(toUtf8(std::u16string{lead, lead, trail}), replacement + "\xF0\x90\x90\x80");
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
