// The lexicon and the table of names against what a search of all of them finds.
#include <algorithm>
#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>

#include "docimage/Image.hpp"
#include "docimage/Lexicon.hpp"
#include "docimage/NameTable.hpp"
#include "docimage/searchForm.hpp"
#include "docimage/varint.hpp"
#include "support/Generator.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using namespace docimage;
using testing::ElementsAre;
using testing::IsEmpty;

struct MadeLexicon {
    std::shared_ptr<const Image> image;
    Lexicon lexicon;
};

MadeLexicon lexiconOf(const std::vector<std::u16string>& texts) {
    LexiconBuilder builder;
    for (std::size_t number = 0; number < texts.size(); ++number)
        builder.addText(texts[number], static_cast<std::uint32_t>(number));
    ImageWriter writer;
    builder.writeTo(writer, 7);
    auto image = writer.finish();
    const Lexicon lexicon(*image, 7);
    return {.image = std::move(image), .lexicon = lexicon};
}

std::vector<std::string> wordsWith(const Lexicon& lexicon, const WordPart& part) {
    std::vector<std::string> words;
    lexicon.forEachWordWith(part,
                            [&](std::uint32_t word) { words.emplace_back(lexicon.word(word)); });
    return words;
}

std::vector<std::uint32_t> textsWith(const Lexicon& lexicon, const std::string& word) {
    std::vector<std::uint32_t> texts;
    lexicon.forEachWordWith(
        {.letters = word, .isStart = true, .isEnd = true}, [&](std::uint32_t number) {
            lexicon.forEachTextWith(number, [&](std::uint32_t text) { texts.push_back(text); });
        });
    return texts;
}

TEST(LexiconTest, FindsWordsByAnyPartOfThem) {
    const auto made = lexiconOf({u"Fit a curve", u"refit, curve_fit; unfit", u"a.fi"});
    const Lexicon& lexicon = made.lexicon;
    EXPECT_THAT(wordsWith(lexicon, {.letters = "fit"}),
                ElementsAre("curve_fit", "fit", "refit", "unfit"));
    EXPECT_THAT(wordsWith(lexicon, {.letters = "fit", .isStart = true}), ElementsAre("fit"));
    EXPECT_THAT(wordsWith(lexicon, {.letters = "fit", .isEnd = true}),
                ElementsAre("curve_fit", "fit", "refit", "unfit"));
    EXPECT_THAT(wordsWith(lexicon, {.letters = "cur", .isEnd = true}), IsEmpty());
    EXPECT_THAT(wordsWith(lexicon, {.letters = "fi"}),
                ElementsAre("curve_fit", "fi", "fit", "refit", "unfit"));
    EXPECT_THAT(wordsWith(lexicon, {.letters = "a", .isStart = true, .isEnd = true}),
                ElementsAre("a"));
    EXPECT_THAT(wordsWith(lexicon, {.letters = "fitt"}), IsEmpty());
    EXPECT_THAT(textsWith(lexicon, "curve"), ElementsAre(0U));
    EXPECT_THAT(textsWith(lexicon, "a"), ElementsAre(0U, 2U));
}

TEST(LexiconTest, AgreesWithASearchOfAllWords) {
    Generator generator(1);
    for (int round = 0; round < 200; ++round) {
        std::vector<std::u16string> texts;
        std::set<std::string> words;
        for (std::size_t count = generator.below(30); texts.size() < count;) {
            std::u16string text;
            for (std::size_t length = generator.below(12); text.size() < length;)
                text += generator.pick({u'a', u'b', u'c', u' ', u'\u00E9', u'\u65E5'});
            forEachWord(searchForm(text), [&](std::string_view word) { words.emplace(word); });
            texts.push_back(std::move(text));
        }
        const auto made = lexiconOf(texts);
        ASSERT_EQ(made.lexicon.wordCount(), words.size());
        for (const std::string letters : {"a", "b", "ab", "ba", "abc", "aab", "bcab", "\u00E9",
                                          "\u65E5", "a\u65E5", "\u65E5\u65E5"})
            for (const bool isStart : {false, true})
                for (const bool isEnd : {false, true}) {
                    std::vector<std::string> expected;
                    for (const auto& word : words)
                        if ((isStart && isEnd && word == letters) ||
                            (isStart && !isEnd && word.starts_with(letters)) ||
                            (!isStart && isEnd && word.ends_with(letters)) ||
                            (!isStart && !isEnd && word.find(letters) != std::string::npos))
                            expected.push_back(word);
                    ASSERT_EQ(wordsWith(made.lexicon, {letters, isStart, isEnd}), expected)
                        << letters << isStart << isEnd;
                }
    }
}

TEST(LexiconTest, AVisitThatReturnsFalseIsTheLast) {
    LexiconBuilder builder;
    for (std::uint32_t text = 0; text < 10; ++text)
        for (const std::string_view word : {"ab", "abc", "abcd", "b"})
            builder.addWord(word, text);
    ImageWriter writer;
    builder.writeTo(writer, 0);
    const auto image = writer.finish();
    const Lexicon lexicon(*image, 0);
    std::size_t visits = 0;
    lexicon.forEachTextWith(0, [&](std::uint32_t text) {
        ++visits;
        return text < 3;
    });
    EXPECT_EQ(visits, 4);
    // By a beginning, by letters anywhere, and by trigrams.
    const WordPart parts[] = {
        {.letters = "a", .isStart = true}, {.letters = "b"}, {.letters = "abc"}};
    for (const WordPart& part : parts) {
        visits = 0;
        lexicon.forEachWordWith(part, [&](std::uint32_t /*word*/) {
            ++visits;
            return false;
        });
        EXPECT_EQ(visits, 1) << part.letters;
    }
    visits = 0;
    lexicon.forEachWordWith({.letters = "", .isStart = true},
                            [&](std::uint32_t /*word*/) { ++visits; });
    EXPECT_EQ(visits, 4);
}

TEST(VarintTest, NumbersThatDoNotAscendAreDamage) {
    std::string deltas;
    appendVarint(0xFFFFFFF0U, deltas);
    std::vector<std::uint32_t> numbers;
    const auto take = [&](std::uint32_t number) { numbers.push_back(number); };
    forEachNumber(deltas, take);
    EXPECT_EQ(numbers, std::vector<std::uint32_t>{0xFFFFFFF0U});
    appendVarint(0x0FU, deltas);
    EXPECT_NO_THROW(forEachNumber(deltas, take));
    appendVarint(1, deltas);
    EXPECT_THROW(forEachNumber(deltas, take), DamagedImage);
}

TEST(LexiconTest, TellsWhetherAllTextsAreWellFormed) {
    EXPECT_TRUE(lexiconOf({}).lexicon.isWellFormed());
    EXPECT_TRUE(lexiconOf({u"a", u"\U00010400"}).lexicon.isWellFormed());
    EXPECT_FALSE(lexiconOf({u"a", u"b\xD801", u"c"}).lexicon.isWellFormed());
}

TEST(NameTableTest, FindsAllNumbersOfAHashInOrder) {
    Generator generator(1);
    for (const std::size_t size : {0U, 1U, 2U, 3U, 100U, 5000U}) {
        std::vector<NameTable::Entry> entries;
        for (std::uint32_t number = 0; number < size; ++number)
            entries.push_back(
                {.hash = static_cast<std::uint32_t>(generator.below(size)) * 0x01234567U,
                 .number = number});
        ImageWriter writer;
        NameTable::write(entries, writer, 3);
        const auto image = writer.finish();
        const NameTable table(*image, 3);
        EXPECT_EQ(table.size(), size);
        for (std::uint32_t base = 0; base < size + 1; ++base) {
            const std::uint32_t hash = base * 0x01234567U;
            std::vector<std::uint32_t> expected;
            for (const auto& entry : entries)
                if (entry.hash == hash)
                    expected.push_back(entry.number);
            std::vector<std::uint32_t> found;
            table.find(hash, [&](std::uint32_t number) { found.push_back(number); });
            ASSERT_EQ(found, expected);
        }
    }
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
