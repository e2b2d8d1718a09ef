#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "docimage/Stemmer.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using docimage::isStopWord;
using docimage::Stemmer;
using docimage::wordsOf;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(StemmerTest, TheFormsOfAWordHaveOneStem) {
    Stemmer stemmer;
    for (const char* word : {"sort", "sorts", "sorted", "sorting"})
        EXPECT_EQ(stemmer.stem(word), "sort") << word;
    EXPECT_EQ(std::string(stemmer.stem("categories")), std::string(stemmer.stem("category")));
    EXPECT_EQ(stemmer.stem(""), "");
}

TEST(StemmerTest, WhatIsNoEnglishWordStaysAsItIs) {
    Stemmer stemmer;
    for (const char* word : {"utf8s", "\xc3\xa4rgers", "12s"})
        EXPECT_EQ(stemmer.stem(word), word);
    const std::string endless(100'000, 's');
    EXPECT_EQ(stemmer.stem(endless), endless);
}

TEST(StemmerTest, WordsAreRunsOfLettersAndDigits) {
    EXPECT_THAT(wordsOf(u""), IsEmpty());
    EXPECT_THAT(wordsOf(u" Read a CSV-file, quickly! "),
                ElementsAre("read", "a", "csv", "file", "quickly"));
    EXPECT_THAT(wordsOf(u"n's Python\u2019s don't x'"), ElementsAre("n", "python", "don", "x"));
    EXPECT_THAT(wordsOf(u"\u00C4rger macht \u00E4rgerlich"),
                ElementsAre("\xc3\xa4rger", "macht", "\xc3\xa4rgerlich"));
}

TEST(StemmerTest, TextWithoutSpacesIsDividedByADictionary) {
    // "Makes a table" in Japanese: table, particle, make.
    EXPECT_THAT(wordsOf(u"表を作成"),
                ElementsAre("\xe8\xa1\xa8", "\xe3\x82\x92", "\xe4\xbd\x9c\xe6\x88\x90"));
}

TEST(StemmerTest, StopWordsSayNothing) {
    for (const char* word : {"a", "how", "to", "your", "the", "of"})
        EXPECT_TRUE(isStopWord(word)) << word;
    for (const char* word : {"", "sort", "howto", "zip", "abc"})
        EXPECT_FALSE(isStopWord(word)) << word;
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
