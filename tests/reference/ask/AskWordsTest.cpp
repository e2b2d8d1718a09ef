// What questions find by the words of names and texts, and what stands in for words.
#include <string>
#include <utility>

#include <gmock/gmock.h>

#include "AskFixture.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "support/Items.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using cache_manager::ReferenceCacheManager;
using property::RefEntityType;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

using AskWordsTest = AskFixture;

TEST_F(AskWordsTest, WordsOfPackagesAloneAreNoParts) {
    source().add(ProductBuilder(u"deep")
                     .entity(u"outer.inner.leaf", RefEntityType::Function, u"leaf.html")
                     .build());
    EXPECT_THAT(find(u"outer inner in:name"), IsEmpty());
    EXPECT_THAT(find(u"outer leaf in:name"), ElementsAre("outer.inner.leaf [parts]"));
}

TEST_F(AskWordsTest, WordsOfATextCountWhereTheyStandTogether) {
    std::u16string far = u"An otter swims.";
    for (int word = 0; word < 100; ++word)
        far += u" filler";
    far += u" The walrus sleeps.";
    ProductBuilder product(u"zoo");
    for (const auto& [name, description] :
         {std::pair<std::u16string, std::u16string>{u"zoo.far", far},
          {u"zoo.near", u"An otter swims while the walrus sleeps."}}) {
        const std::u16string href = name + u".html";
        product.record(name, RefEntityType::Function, href);
        product.item(makeItem(
            {.href = href,
             .entities = {{RefEntityType::Function, name, property::FunctionType::Function}},
             .description = description}));
    }
    source().add(product.build());
    EXPECT_THAT(find(u"walrus otter in:text"), ElementsAre("zoo.near [text]"));
    EXPECT_EQ(first(u"walruses and otters"), "zoo.near [text]");
}

TEST_F(AskWordsTest, AWordMayBePartOfACompound) {
    source().add(ProductBuilder(u"counting")
                     .entity(u"counting.isprime", RefEntityType::Function, u"a.html", u"Test it.")
                     .entity(u"counting.primer", RefEntityType::Function, u"b.html", u"Test it.")
                     .entity(u"counting.cyprime", RefEntityType::Function, u"c.html", u"Test it.")
                     .build());
    EXPECT_EQ(first(u"test of a prime"), "counting.isprime [most-words]");
}

TEST_F(AskWordsTest, WhatACompoundIsMadeOfIsAskedOfItsProductAlone) {
    source().add(ProductBuilder(u"cells")
                     .entity(u"cells.gridprime", RefEntityType::Function, u"a.html", u"Any cell.")
                     .entity(u"cells.isprime", RefEntityType::Function, u"b.html", u"Any cell.")
                     .build());
    const auto words = find(u"some primes product:cells");
    source().add(ProductBuilder(u"more")
                     .entity(u"more.draw", RefEntityType::Function, u"c.html", u"Draw a grid.")
                     .build());
    ReferenceCacheManager::ClearAllCaches();
    EXPECT_THAT(words, ElementsAre("cells.isprime [most-words]"));
    EXPECT_EQ(find(u"some primes product:cells"), words);
}

TEST_F(AskWordsTest, ACompoundMayHaveAWordThatItsProductHasElsewhere) {
    source().add(ProductBuilder(u"cells")
                     .entity(u"cells.gridprime", RefEntityType::Function, u"a.html", u"Any cell.")
                     .entity(u"cells.draw", RefEntityType::Function, u"b.html", u"Draw a grid.")
                     .build());
    EXPECT_THAT(find(u"some primes"), ElementsAre("cells.gridprime [most-words]"));
}

// Words that most documentation has neither find anything beside others, nor are they passed over
// where there are no others.
TEST_F(AskWordsTest, CommonWordsAloneAreAQuestion) {
    source().add(ProductBuilder(u"kit")
                     .entity(u"kit.weld", RefEntityType::Function, u"a.html", u"Creates objects.")
                     .entity(u"kit.saw", RefEntityType::Function, u"b.html", u"Divides planks.")
                     .build());
    EXPECT_EQ(first(u"create new objects"), "kit.weld [most-words]");
    EXPECT_EQ(first(u"create planks somehow"), "kit.saw [most-words]");
}

TEST_F(AskWordsTest, ANumberIsNeitherMissedNorCorrected) {
    source().add(ProductBuilder(u"picture")
                     .entity(u"picture.turn", RefEntityType::Function, u"a.html", u"Rotate it.")
                     .entity(u"picture.crc2020", RefEntityType::Function, u"b.html", u"Sum it.")
                     .build());
    EXPECT_EQ(first(u"rotate by 90"), "picture.turn [words]");
    EXPECT_EQ(first(u"rotate by 2021"), "picture.turn [words]");
    EXPECT_EQ(first(u"rotate by 2020"), "picture.turn [words]");
}

TEST_F(AskWordsTest, WordsOfATextMayBeInAnyLetters) {
    ProductBuilder product(u"zoo");
    for (const auto& [name, description] :
         {std::pair<std::u16string, std::u16string>{u"zoo.a", u"Die Größe der ÜBERSICHT."},
          {u"zoo.b", u"Eine Größe."}}) {
        const std::u16string href = name + u".html";
        product.record(name, RefEntityType::Function, href);
        product.item(makeItem(
            {.href = href,
             .entities = {{RefEntityType::Function, name, property::FunctionType::Function}},
             .description = description}));
    }
    source().add(product.build());
    EXPECT_THAT(find(u"übersicht größe in:text"), ElementsAre("zoo.a [text]"));
}

TEST_F(AskWordsTest, APhraseIsFoundAcrossLines) {
    source().add(
        ProductBuilder(u"zoo")
            .entity(u"zoo.feed", RefEntityType::Function, u"a.html", u" \tThe otter\nswims  far.")
            .entity(u"zoo.lead", RefEntityType::Function, u"b.html", u"The otter dives.")
            .build());
    EXPECT_THAT(find(u"\"otter swims far\""), ElementsAre(testing::StartsWith("zoo.feed ")));
    EXPECT_THAT(find(u"\"the  otter\tswims\""), ElementsAre(testing::StartsWith("zoo.feed ")));
    EXPECT_THAT(find(u"otter \"otterswims\""), IsEmpty());
    EXPECT_THAT(find(u"otter \" the\""),
                ElementsAre(testing::HasSubstr("zoo"), testing::HasSubstr("zoo")));
}

TEST_F(AskWordsTest, APhraseMayMeanANameThatHasNoneOfItsWords) {
    source().add(ProductBuilder(u"spread")
                     .entity(u"spread.std", RefEntityType::Function, u"a.html", u"How far apart.")
                     .entity(u"spread.conf_int", RefEntityType::Function, u"b.html", u"Bounds.")
                     .entity(u"spread.other", RefEntityType::Function, u"c.html", u"Another.")
                     .build());
    EXPECT_EQ(first(u"standard deviation of samples"), "spread.std [most-words]");
    EXPECT_EQ(first(u"confidence interval"), "spread.conf_int [most-words]");
    EXPECT_THAT(find(u"standard"), IsEmpty());
}

// What all names have would make each of them an answer.
TEST_F(AskWordsTest, AWordThatManyNamesHaveSaysNothingInPlaceOfAnother) {
    ProductBuilder product(u"tables");
    for (unsigned number = 0; number < 100; ++number) {
        const std::u16string name = u"tables.f" + std::u16string(number / 10 + 1, u'x') +
                                    static_cast<char16_t>(u'a' + number % 10);
        product.entity(name, RefEntityType::Function, name + u".html",
                       number < 50 ? u"Shuffle them." : u"Leave them.");
    }
    source().add(product.build());
    EXPECT_THAT(find(u"scramble"), IsEmpty());
    source().add(ProductBuilder(u"decks")
                     .entity(u"decks.deal", RefEntityType::Function, u"a.html", u"Shuffle them.")
                     .entity(u"decks.cut", RefEntityType::Function, u"b.html", u"Cut them.")
                     .build());
    ReferenceCacheManager::ClearAllCaches();
    EXPECT_THAT(find(u"scramble"), ElementsAre("decks.deal [most-words]"));
}

TEST_F(AskWordsTest, WordsOfAPhraseThatTheThesaurusKnowsAreNotMisspelt) {
    source().add(ProductBuilder(u"chance")
                     .entity(u"chance.random", RefEntityType::Function, u"a.html", u"Any number.")
                     .entity(u"chance.month", RefEntityType::Function, u"b.html", u"One of twelve.")
                     .build());
    EXPECT_EQ(first(u"monte carlo"), "chance.random [most-words]");
}

TEST_F(AskWordsTest, SynonymsAreFoundWhateverElseIsInstalled) {
    source().add(ProductBuilder(u"clock")
                     .entity(u"clock.TimeZone", RefEntityType::Class, u"a.html", u"An offset.")
                     .build());
    EXPECT_EQ(first(u"utc"), "clock.TimeZone [most-words]");
    source().add(ProductBuilder(u"more")
                     .entity(u"more.all_timezones", RefEntityType::Function, u"b.html", u"Names.")
                     .build());
    ReferenceCacheManager::ClearAllCaches();
    EXPECT_THAT(find(u"utc product:clock"), ElementsAre("clock.TimeZone [most-words]"));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
