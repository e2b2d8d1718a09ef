// The form that texts are indexed in: what an index proposes rests on these properties.
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>

#include "docimage/componentForms.hpp"
#include "docimage/searchForm.hpp"
#include "docimage/unitBytes.hpp"
#include "support/Generator.hpp"
#include "support/LookupModel.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using namespace docimage;
using testing::ElementsAre;

// Letters of all that is special: case, two letters for one, a lower case that depends on its
// neighbours, surrogate pairs and halves, and boundaries.
std::u16string randomText(Generator& generator, std::size_t longest) {
    std::u16string text;
    for (std::size_t length = generator.below(longest + 1); text.size() < length;)
        text += generator.pick<std::u16string>(
            {u"a", u"B", u"_", u"7", u".", u"/", u" ", u"-", u"\u00DF", u"\u0130", u"\u03A3",
             u"\u03C2", u"\u03C3", u"\u0391", u"\u65E5", u"\U00010400", u"\xD801", u"\xDC00"});
    return text;
}

TEST(UnitBytesTest, KeepEveryUnit) {
    std::u16string all;
    for (char32_t unit = 0; unit < 0x10000; ++unit)
        all += static_cast<char16_t>(unit);
    EXPECT_EQ(fromUnitBytes(toUnitBytes(all)), all);
    for (const char16_t unit : all)
        ASSERT_EQ(fromUnitBytes(toUnitBytes({&unit, 1})), std::u16string(1, unit));
    EXPECT_EQ(toUnitBytes(u"a\u00E9\u65E5"), "a\u00E9\u65E5");
    EXPECT_EQ(toUnitBytes(u"\xD801"), "\xED\xA0\x81");
}

TEST(UnitBytesTest, OrderAndPartsAreThoseOfTheTexts) {
    Generator generator(1);
    for (int round = 0; round < 20'000; ++round) {
        const std::u16string a = randomText(generator, 6);
        const std::u16string b = randomText(generator, 3);
        EXPECT_EQ(toUnitBytes(a) < toUnitBytes(b), a < b);
        EXPECT_EQ(toUnitBytes(a).find(toUnitBytes(b)) != std::string::npos,
                  a.find(b) != std::u16string::npos);
    }
}

TEST(UnitBytesTest, AreThoseOfTheirTextAlone) {
    // Units of one, two and three bytes, and others that differ from them in one of these.
    const std::vector<std::u16string> texts = {
        u"",       u"a",      u"b",       u"ab",     u"\u0100",    u"\u0101",
        u"\u0140", u"\u0120", u"a\u0100", u"\u65E5", u"\u65E6",    u"\u65C5",
        u"\u6525", u"\u75E5", u"\u65E5a", u"\xD801", u"\U00010400"};
    for (const auto& text : texts)
        for (const auto& other : texts)
            EXPECT_EQ(areUnitBytesOf(toUnitBytes(text), other), text == other)
                << testing::PrintToString(text) << " and " << testing::PrintToString(other);
}

TEST(UnitBytesTest, BytesThatAreNoTextAreReadWithinTheirBounds) {
    for (const std::string_view bytes : {"\xE6", "\xE6\x97", "\xC3", "a\xFF", "\x80"}) {
        EXPECT_LE(fromUnitBytes(bytes).size(), bytes.size());
        EXPECT_FALSE(areUnitBytesOf(bytes, u"\u65E5\u672C"));
    }
}

TEST(SearchFormTest, IsTheLowerCaseWithOneSigma) {
    EXPECT_EQ(searchForm(u""), "");
    EXPECT_EQ(searchForm(u"Plot.A-7"), "plot.a-7");
    EXPECT_EQ(searchForm(u"\u0130"), "i\u0307");
    EXPECT_EQ(searchForm(u"\u03A3\u0391\u03A3"), "\u03C3\u03B1\u03C3");
    EXPECT_EQ(searchForm(u"\u03C2"), "\u03C3");
    EXPECT_EQ(searchForm(u"A\xD801"
                         u"B"),
              "a\xED\xA0\x81"
              "b");
    EXPECT_EQ(searchForm(std::u16string(2000, u'\u0130')).size(), 2000U * 3);
}

TEST(SearchFormTest, WhatATextHoldsItsFormHolds) {
    Generator generator(2);
    for (int round = 0; round < 20'000; ++round) {
        const std::u16string before = randomText(generator, 3);
        const std::u16string part = randomText(generator, 3);
        const std::u16string after = randomText(generator, 3);
        const std::u16string text = before + part + after;
        const bool splitsPair =
            (!before.empty() && !part.empty() && (before.back() & 0xFC00) == 0xD800 &&
             (part.front() & 0xFC00) == 0xDC00) ||
            (!after.empty() && !part.empty() && (part.back() & 0xFC00) == 0xD800 &&
             (after.front() & 0xFC00) == 0xDC00);
        if (splitsPair)
            continue;
        EXPECT_NE(searchForm(text).find(searchForm(part)), std::string::npos)
            << testing::PrintToString(text) << " holds " << testing::PrintToString(part);
    }
}

TEST(SearchFormTest, IsTheFormOfTheLowerCase) {
    Generator generator(3);
    for (int round = 0; round < 20'000; ++round) {
        const std::u16string text = randomText(generator, 8);
        EXPECT_EQ(searchForm(modelLowerCase(text)), searchForm(text))
            << testing::PrintToString(text);
    }
}

TEST(SearchFormTest, TellsWhichTextsAreWellFormed) {
    EXPECT_TRUE(isWellFormed(u""));
    EXPECT_TRUE(isWellFormed(u"a\U00010400"));
    EXPECT_FALSE(isWellFormed(u"a\xD801"));
    EXPECT_FALSE(
        isWellFormed(u"\xDC00"
                     u"a"));
    EXPECT_FALSE(isWellFormed(u"\xD801\xD801\xDC00"));
}

std::vector<std::string> wordsOf(std::string_view form) {
    std::vector<std::string> words;
    forEachWord(form, [&](std::string_view word) { words.emplace_back(word); });
    return words;
}

TEST(SearchFormTest, WordsAreRunsOfLettersDigitsAndUnderscores) {
    EXPECT_THAT(wordsOf(""), ElementsAre());
    EXPECT_THAT(wordsOf(" ., "), ElementsAre());
    EXPECT_THAT(wordsOf("a.b_c(7)"), ElementsAre("a", "b_c", "7"));
    EXPECT_THAT(wordsOf("\u65E5\u672C go"), ElementsAre("\u65E5\u672C", "go"));
}

TEST(ComponentFormsTest, AreDividedByDotsAndSlashes) {
    struct Case {
        const char* name;
        const char* last;
        const char* lastTwo;
    };
    for (const auto& [name, last, lastTwo] :
         {Case{"", "", ""}, Case{"a", "a", "a"}, Case{"a.b", "b", "a.b"}, Case{"a/b.c", "c", "b.c"},
          Case{"a.b/c", "c", "b/c"}, Case{".", "", "."}, Case{".a", "a", ".a"},
          Case{"a..b", "b", ".b"}, Case{"a.", "", "a."}, Case{"a.b.", "", "b."}}) {
        EXPECT_EQ(lastComponent(name), last) << name;
        EXPECT_EQ(lastTwoComponents(name), lastTwo) << name;
    }
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
