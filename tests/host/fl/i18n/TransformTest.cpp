#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <unicode/uchar.h>
#include <unicode/ustring.h>
#include <unicode/utf16.h>

#include "fl/i18n/transform.hpp"
#include "fl/i18n/utf.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using fl::i18n::to_lower;
using fl::i18n::detail::transform;

std::u16string lowerCased(std::u16string_view text) {
    std::u16string result(text.size() * 3 + 1, u'#');
    const std::size_t length =
        transform(result.data(), result.size(), text.data(), text.size(), to_lower{});
    EXPECT_LE(length, result.size());
    result.resize(length);
    return result;
}

// The full lower-case mapping of the root locale, as ICU has it.
std::u16string fullMapping(std::u16string_view text) {
    std::u16string result(text.size() * 3 + 1, u'#');
    UErrorCode error = U_ZERO_ERROR;
    const std::int32_t length =
        u_strToLower(result.data(), static_cast<std::int32_t>(result.size()), text.data(),
                     static_cast<std::int32_t>(text.size()), "", &error);
    EXPECT_TRUE(U_SUCCESS(error)) << u_errorName(error);
    result.resize(static_cast<std::size_t>(length));
    return result;
}

TEST(TransformTest, LowersEveryAsciiUnitAsTheFullMappingDoes) {
    for (char16_t unit = 0; unit < 0x80; ++unit) {
        const std::u16string text(1, unit);
        EXPECT_EQ(lowerCased(text), fullMapping(text)) << "unit " << static_cast<int>(unit);
    }
}

TEST(TransformTest, LowersRandomAsciiTextsAsTheFullMappingDoes) {
    const auto seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> lengths(0, 70);
    std::uniform_int_distribution<int> units(0, 0x7F);
    for (int round = 0; round < 2000; ++round) {
        std::u16string text(static_cast<std::size_t>(lengths(random)), u'\0');
        for (char16_t& unit : text)
            unit = static_cast<char16_t>(units(random));
        ASSERT_EQ(lowerCased(text), fullMapping(text)) << fl::i18n::toUtf8(text);
    }
}

// Every character alone, and beside a sigma, whose form its neighbours decide.
TEST(TransformTest, LowersEveryCharacterAsTheFullMappingDoes) {
    for (char32_t number = 0; number <= UCHAR_MAX_VALUE; ++number) {
        if (U_IS_SURROGATE(number))
            continue;
        std::u16string character;
        if (U_IS_SUPPLEMENTARY(number))
            character = {U16_LEAD(number), U16_TRAIL(number)};
        else
            character = {static_cast<char16_t>(number)};
        // After a sigma that ends a word but for this character, and before one.
        const std::u16string text = character + u" A\u03A3" + character + u" A\u03A3" + character +
                                    u"B " + character + u"\u03A3 A" + character + u"\u03A3 1" +
                                    character + u"\u03A3";
        ASSERT_EQ(lowerCased(text), fullMapping(text))
            << "character " << static_cast<UChar32>(number);
    }
}

// Of characters that matter to each other, in texts of every length up to a few lines, and cut at
// any place.
TEST(TransformTest, LowersRandomTextsAsTheFullMappingDoes) {
    const std::vector<std::u16string> characters = {
        u"a", u"Z", u"1", u" ", u"\u03A3", u"\u03A3", u"\u03A3", u"\u0391", u"\u0130",
        // Ignored beside a sigma: ASCII, one and two units, with case and without.
        u".", u"'", u"\u00AD", u"\u0301", u"\u02B0", u"\u0345", u"\U0001F3FB", u"\U0001D167",
        u"\u212A", u"信", u"\U00010400", u"\U0001F600", u"THE WORDS BETWEEN THEM"};
    const auto seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    std::uniform_int_distribution<std::size_t> which(0, characters.size() - 1);
    for (std::size_t round = 0; round < 20000; ++round) {
        std::u16string text;
        for (std::size_t count = round % (round % 100 == 0 ? 2000 : 12); count > 0; --count)
            text += characters[which(random)];
        const std::u16string whole = fullMapping(text);
        ASSERT_EQ(lowerCased(text), whole) << fl::i18n::toUtf8(text);
        const std::size_t capacity = random() % (whole.size() + 1);
        std::u16string part(capacity, u'#');
        ASSERT_EQ(transform(part.data(), capacity, text.data(), text.size(), to_lower{}),
                  whole.size());
        ASSERT_EQ(part, whole.substr(0, capacity)) << fl::i18n::toUtf8(text);
    }
}

TEST(TransformTest, AppliesTheFullMappingOfTheRootLocale) {
    struct Row {
        const char* name;
        std::u16string text;
        std::u16string expected;
    };
    const std::vector<Row> rows = {
        {"ASCII", u"FFT2.Plot/Size_9", u"fft2.plot/size_9"},
        {"Latin", u"ÄÖÜ GRÖSSE", u"äöü grösse"},
        {"sharp s", u"STRAẞE", u"straße"},
        {"dotted capital I grows", u"\u0130", u"i\u0307"},
        {"dotted capital I between ASCII", u"A\u0130B", u"ai\u0307b"},
        {"capital I is not Turkish", u"TITLE\u00C9", u"title\u00E9"},
        {"sigma within a word", u"\u03A3\u039F\u03A3\u0391", u"\u03C3\u03BF\u03C3\u03B1"},
        {"sigma at the end of a word", u"\u039F\u03A3", u"\u03BF\u03C2"},
        {"sigma alone", u"\u03A3", u"\u03C3"},
        {"sigma at the end, across an accent and a soft hyphen", u"\u039F\u0301\u03A3\u00AD.",
         u"\u03BF\u0301\u03C2\u00AD."},
        {"sigma within a word, across an apostrophe", u"\u039F\u03A3'\u039F",
         u"\u03BF\u03C3'\u03BF"},
        {"Kelvin sign shrinks to ASCII", u"\u212A", u"k"},
        {"Deseret letter beyond the first plane", u"\U00010400", u"\U00010428"},
        {"Deseret among others", u"A\U00010400B\U00010401", u"a\U00010428b\U00010429"},
        {"Japanese has no case", u"信号処理", u"信号処理"},
        {"emoji has no case", u"\U0001F600X", u"\U0001F600x"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(fl::i18n::toUtf8(lowerCased(row.text)), fl::i18n::toUtf8(row.expected));
    }
}

TEST(TransformTest, OfAnEmptyTextIsEmpty) {
    EXPECT_EQ(transform(nullptr, 0, u"", 0, to_lower{}), 0U);
    EXPECT_EQ(lowerCased(u""), u"");
}

TEST(TransformTest, TellsTheWholeLengthAndWritesWhatFits) {
    constexpr char16_t untouched = u'#';
    const std::vector<std::u16string> texts = {
        u"ABCDEF",         // ASCII alone
        u"ABCDÉF",         // other letters of one unit
        u"\u0130\u0130X",  // longer than the text: five units
    };
    for (const auto& text : texts) {
        const std::u16string whole = fullMapping(text);
        for (std::size_t capacity = 0; capacity <= whole.size() + 1; ++capacity) {
            SCOPED_TRACE(fl::i18n::toUtf8(text) + " in " + std::to_string(capacity));
            std::u16string buffer(whole.size() + 4, untouched);
            EXPECT_EQ(transform(buffer.data(), capacity, text.data(), text.size(), to_lower{}),
                      whole.size());
            const std::size_t written = std::min(capacity, whole.size());
            EXPECT_EQ(buffer.substr(0, written), whole.substr(0, written));
            EXPECT_EQ(buffer.substr(written), std::u16string(buffer.size() - written, untouched));
        }
    }
}

TEST(TransformTest, MeasuresWithoutABuffer) {
    for (const std::u16string_view text : {u"ABC", u"\u0130", u"\U00010400"}) {
        SCOPED_TRACE(fl::i18n::toUtf8(text));
        EXPECT_EQ(transform(nullptr, 0, text.data(), text.size(), to_lower{}),
                  fullMapping(text).size());
    }
}

TEST(TransformTest, RefusesUnpairedSurrogates) {
    constexpr char16_t lead = 0xD801;
    constexpr char16_t trail = 0xDC00;
    struct Row {
        const char* name;
        std::u16string text;
        const char* unit;
    };
    const std::vector<Row> rows = {
        {"lead alone", {lead}, "unit 0"},
        {"lead at the end", {u'a', u'b', lead}, "unit 2"},
        {"trail alone", {trail}, "unit 0"},
        {"trail first", {trail, lead}, "unit 0"},
        {"lead and lead", {lead, lead, trail}, "unit 0"},
        {"trail after a pair", {lead, trail, trail}, "unit 2"},
        {"lead before a letter", {u'a', lead, u'b'}, "unit 1"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        std::u16string buffer(16, u'#');
        try {
            transform(buffer.data(), buffer.size(), row.text.data(), row.text.size(), to_lower{});
            ADD_FAILURE() << "nothing was thrown";
        } catch (const std::invalid_argument& problem) {
            EXPECT_THAT(problem.what(), testing::HasSubstr(row.unit));
        }
    }
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
