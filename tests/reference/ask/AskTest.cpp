// What questions find, and how.
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "AskFixture.hpp"
#include "fl/i18n/utf.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "reference/ask/QuestionError.hpp"
#include "reference/ask/ask.hpp"
#include "support/Items.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using ask::AskOptions;
using cache_manager::ReferenceCacheManager;
using property::RefEntityType;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

using AskTest = AskFixture;

TEST_F(AskTest, EachRungFindsWhatItIsFor) {
    struct Case {
        const char16_t* question;
        const char* first;
    };
    const Case cases[] = {
        {u"frames.read_csv", "frames.read_csv [name]"},
        {u"FRAMES.Read_CSV", "frames.read_csv [any-case]"},
        {u"read_csv", "frames.read_csv [without-package]"},
        {u"Table.drop", "frames.Table.drop [without-package]"},
        {u"frames.sort_rows", "frames.Table.sort_rows [without-package]"},
        {u"fr.read_csv(\"x.csv\")",
         "frames.read_csv [other-package] without fr, which is not installed"},
        {u"Table(rows).drop(1)", "frames.Table.drop [without-package]"},
        {u"numbers.read_csv", "frames.read_csv [other-package] without numbers"},
        {u"read csv", "frames.read_csv [parts]"},
        {u"csv reader", "frames.io.CsvReader [parts]"},
        {u"table groupby", "frames.Table.group_by [parts]"},
        {u"ReadCsv", "frames.read_csv [parts]"},
        {u"sort table rows", "frames.Table.sort_rows [parts]"},
        {u"read_c", "frames.read_csv [beginning]"},
        {u"gauss", "numbers.gaussian_kernel [beginning]"},
        {u"frames.read_cvs", "frames.read_csv [spelling] spelling: read_csv"},
        {u"guassian_kernl", "numbers.gaussian_kernel [spelling] spelling: gaussian_kernel"},
        {u"baussian_kernel", "numbers.gaussian_kernel [spelling] spelling: gaussian_kernel"},
        {u"guassian kernel", "numbers.gaussian_kernel [parts] spelling: gaussian"},
        {u"how do I sort rows by column", "frames.Table.sort_rows [words]"},
        {u"reading documents", "frames.read_json [words]"},
        {u"delete rows", "frames.Table.drop [most-words]"},
        {u"mean", "Mean [any-case]"},
        {u"Mean", "Mean [name]"},
        {u"numbers norm", "numbers.linalg.norm [without-package]"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(first(c.question), c.first) << fl::i18n::toUtf8(c.question);
}

TEST_F(AskTest, ShortWordsAreNotMisspelt) {
    EXPECT_THAT(find(u"nrm"), IsEmpty());
    EXPECT_EQ(first(u"nrom"), "numbers.linalg.norm [spelling] spelling: norm");
}

TEST_F(AskTest, FiltersTakeAwayAndSayHowMuch) {
    EXPECT_THAT(find(u"read type:class"), ElementsAre(StartsWith("frames.io.CsvReader")));
    const auto answer = ask::ask(u"frames.read_csv type:class");
    EXPECT_THAT(answer.hits, IsEmpty());
    EXPECT_EQ(answer.total, 0U);
    EXPECT_GE(answer.filteredAway, 1U);
    ASSERT_FALSE(answer.turnedAway.empty());
    EXPECT_EQ(answer.turnedAway.front().name, u"frames.read_csv");

    EXPECT_THAT(find(u"mean product:frames"), IsEmpty());
    EXPECT_EQ(first(u"read", {.products = {u"frames"}}).substr(0, 7), "frames.");
    EXPECT_THAT(find(u"read_csv", {.types = {RefEntityType::Method}}), IsEmpty());
    EXPECT_THAT(find(u"read -json"), testing::Not(testing::Contains(HasSubstr("json"))));
    EXPECT_THAT(find(u"table \"JSON  document\""), ElementsAre(StartsWith("frames.read_json")));
    EXPECT_THAT(find(u"\"no such phrase\" read"), IsEmpty());
    EXPECT_THAT(find(u"read in:purpose"), testing::Each(HasSubstr("[words]")));
    EXPECT_THAT(find(u"columns in:name"), IsEmpty());
    EXPECT_THAT(find(u"columns in:text"), testing::Each(HasSubstr("[text]")));
}

TEST_F(AskTest, AnUnknownProductIsAnError) {
    try {
        static_cast<void>(ask::ask(u"read product:framez"));
        ADD_FAILURE();
    } catch (const ask::QuestionError& error) {
        EXPECT_EQ(error.position(), 13U);
        EXPECT_EQ(error.length(), 6U);
        EXPECT_THAT(error.what(), HasSubstr("frames, numbers"));
    }
}

TEST_F(AskTest, AnUnknownProductIsToldSomeOfThoseThatThereAre) {
    for (char16_t letter = u'a'; letter <= u'v'; ++letter)
        source().add(ProductBuilder(std::u16string(3, letter)).build());
    try {
        static_cast<void>(ask::ask(u"read product:framez"));
        ADD_FAILURE();
    } catch (const ask::QuestionError& error) {
        EXPECT_THAT(error.what(), AllOf(HasSubstr("aaa, bbb, ccc"), HasSubstr(", rrr, …"),
                                        testing::Not(HasSubstr("sss"))));
    }
}

TEST_F(AskTest, AProductThatIsNotInstalledIsPassedOverAmongTheOptions) {
    EXPECT_THAT(find(u"norm", {.products = {u"none", u"numbers"}}),
                ElementsAre("numbers.linalg.norm [without-package]"));
    EXPECT_THAT(find(u"norm", {.products = {u"none"}}), IsEmpty());
}

TEST_F(AskTest, ProductsThatAreNamedOrPreferredGoFirst) {
    source().add(
        ProductBuilder(u"also")
            .entity(u"also.linalg.norm", RefEntityType::Function, u"m.html", u"Another average.")
            .build());
    EXPECT_EQ(first(u"norm"), "also.linalg.norm [without-package]");
    EXPECT_EQ(first(u"norm", {.preferredProducts = {u"numbers"}}),
              "numbers.linalg.norm [without-package]");
    EXPECT_EQ(first(u"numbers norm", {.preferredProducts = {u"also"}}),
              "numbers.linalg.norm [without-package]");
    EXPECT_EQ(first(u"norm", {.preferredProducts = {u"none", u"numbers"}}),
              "numbers.linalg.norm [without-package]");
}

TEST_F(AskTest, WhatIsDeprecatedComesAfterWhatIsNot) {
    ProductBuilder product(u"old");
    product.record(u"a.turn", RefEntityType::Function, u"a.html", u"Turns.");
    product.record(u"b.turn", RefEntityType::Function, u"b.html", u"Turns.");
    for (const auto* href : {u"a.html", u"b.html"}) {
        const bool isOld = href[0] == u'a';
        product.item(makeItem({.href = href,
                               .entities = {{RefEntityType::Function, isOld ? u"a.turn" : u"b.turn",
                                             property::FunctionType::Function}},
                               .purpose = u"Turns.",
                               .deprecationStatus = isOld ? property::DeprecationStatus::Deprecated
                                                          : property::DeprecationStatus::Current}));
    }
    source().add(product.build());
    EXPECT_THAT(find(u"turn"), ElementsAre("b.turn [without-package]", "a.turn [without-package]"));
    EXPECT_THAT(find(u"turn is:deprecated"), ElementsAre("a.turn [without-package]"));
    EXPECT_THAT(find(u"turn is:current"), ElementsAre("b.turn [without-package]"));
}

// Names that differ in one respect alone, so that the key under test decides.
TEST_F(AskTest, WithinARungEachKeyOfTheOrderDecides) {
    const auto add =
        [this](const char16_t* product,
               std::initializer_list<std::pair<const char16_t*, RefEntityType::Value>> entities) {
            ProductBuilder builder(product);
            for (const auto& [name, type] : entities)
                builder.entity(name, type, std::u16string(name) + u".html");
            source().add(builder.build());
        };
    add(u"aa", {{u"a.Cased", RefEntityType::Function},
                {u"a.kinds", RefEntityType::Class},
                {u"a.b.deep", RefEntityType::Function},
                {u"long_one.lengthy", RefEntityType::Function},
                {u"a.sort_row", RefEntityType::Function},
                {u"a.left_over_some", RefEntityType::Function},
                {u"a.spread.part", RefEntityType::Function}});
    add(u"bb", {{u"b.cased", RefEntityType::Function},
                {u"b.kinds", RefEntityType::Function},
                {u"quite.deep", RefEntityType::Function},
                {u"b.lengthy", RefEntityType::Function},
                {u"b.row_sort", RefEntityType::Function},
                {u"b.left_over", RefEntityType::Function},
                {u"b.very.deep.spread_part", RefEntityType::Function}});
    struct Case {
        const char16_t* question;
        const char* first;
        const char* second;
    };
    const Case cases[] = {
        {u"cased", "b.cased", "a.Cased"},
        {u"Cased", "a.Cased", "b.cased"},
        {u"kinds", "b.kinds", "a.kinds"},
        {u"deep", "quite.deep", "a.b.deep"},
        {u"lengthy", "b.lengthy", "long_one.lengthy"},
        {u"row sort", "b.row_sort", "a.sort_row"},
        {u"sort row", "a.sort_row", "b.row_sort"},
        {u"left over", "b.left_over", "a.left_over_some"},
        {u"spread part", "b.very.deep.spread_part", "a.spread.part"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(fl::i18n::toUtf8(c.question));
        EXPECT_THAT(find(c.question, {.limit = 2}),
                    ElementsAre(StartsWith(std::string(c.first) + " "),
                                StartsWith(std::string(c.second) + " ")));
    }
}

TEST_F(AskTest, WhatOthersReferToIsLikelier) {
    ProductBuilder product(u"referred");
    const auto add = [&](const std::u16string& name, const std::u16string& purpose,
                         const std::u16string& description) {
        const std::u16string href = name + u".html";
        product.record(name, RefEntityType::Function, href, purpose);
        product.item(makeItem(
            {.href = href,
             .entities = {{RefEntityType::Function, name, property::FunctionType::Function}},
             .purpose = purpose,
             .description = description}));
    };
    add(u"referred.abler", u"Feed the otters.", u"As it was.");
    add(u"referred.baker", u"Feed the otters.", u"As it was.");
    for (const char16_t letter : {u'p', u'q', u'r', u's'})
        add(u"referred." + std::u16string(5, letter), u"Something else.", u"See also baker.");
    source().add(product.build());
    EXPECT_EQ(first(u"feeding otters"), "referred.baker [words]");
}

TEST_F(AskTest, AQualifiedNameThatItsPackageDoesNotHaveIsCorrectedByOneSlip) {
    source().add(ProductBuilder(u"letters")
                     .entity(u"letters.isspace", RefEntityType::Function, u"a.html", u"Blank.")
                     .build());
    EXPECT_EQ(first(u"letters.insspaec"), "letters.isspace [spelling] spelling: isspace");
    EXPECT_EQ(first(u"insspaec"), "letters.isspace [spelling] spelling: isspace");
    EXPECT_EQ(first(u"np.isspaec"), "letters.isspace [spelling] spelling: isspace");
    EXPECT_THAT(find(u"np.insspaec"), IsEmpty());
}

// Names that differ in one respect alone.
TEST_F(AskTest, OfNamesWithTheSameWordsTheLikeliestIsFirst) {
    const auto add = [](ProductBuilder& product, const std::u16string& name,
                        const std::u16string& purpose,
                        RefEntityType::Value type = RefEntityType::Function) {
        product.entity(name, type, name + u".html", purpose);
    };
    ProductBuilder product(u"likely");
    add(product, u"a.b.c.d.walk", u"Lead an otter.");
    add(product, u"a.stroll", u"Lead an otter.");
    add(product, u"a.Badger", u"Feed a walrus.", RefEntityType::Class);
    add(product, u"a.weasel", u"Feed a walrus.");
    add(product, u"a.fox", u"Wash a heron on every second day of the week in the morning.");
    add(product, u"a.vole", u"Wash a heron.");
    add(product, u"a._hare", u"Draw a lizard.");
    add(product, u"a.lynx", u"Draw a lizard.");
    add(product, u"a.__crab", u"Paint a turtle.");
    add(product, u"a.__dove__", u"Paint a turtle.");
    add(product, u"a.__eels.__flea__", u"Paint a turtle.");
    source().add(product.build());
    EXPECT_EQ(first(u"lead the otters"), "a.stroll [words]");
    EXPECT_EQ(first(u"feeding walruses"), "a.weasel [words]");
    EXPECT_EQ(first(u"washing herons"), "a.vole [words]");
    EXPECT_EQ(first(u"drawing lizards"), "a.lynx [words]");
    EXPECT_EQ(first(u"painting turtles"), "a.__dove__ [words]");
}

TEST_F(AskTest, WhatTheLikelierCallOfCodeFindsGoesFirstOnWhicheverRung) {
    EXPECT_THAT(find(u"frames.read_csv(\"x.csv\").sort_rows(1)"),
                ElementsAre("frames.Table.sort_rows [without-package]", "frames.read_csv [name]"));
}

TEST_F(AskTest, APropertyOfAClassIsAHitOfItsOwn) {
    source().add(ProductBuilder(u"shapes")
                     .classWith(u"geo.Shape", u"geo", u"Shape.html", {{u"Size", {u"Breadth"}}})
                     .build());
    const auto answer = ask::ask(u"breadth");
    ASSERT_EQ(answer.hits.size(), 1U);
    EXPECT_EQ(answer.hits.front().name, u"geo.Shape.Breadth");
    EXPECT_EQ(answer.hits.front().data.getRefItem().getPurpose(), u"purpose of Breadth");
}

TEST_F(AskTest, TheEntriesOfOneNameAreInThePreferredOrderAndOfTheWantedType) {
    source().add(ProductBuilder(u"same")
                     .entity(u"duo", RefEntityType::Tool, u"a.html", u"A tool.")
                     .entity(u"duo", RefEntityType::Class, u"b.html", u"A class.")
                     .build());
    const auto both = ask::ask(u"duo");
    ASSERT_EQ(both.hits.size(), 2U);
    EXPECT_EQ(both.hits[0].data.getRefItem().getPurpose(), u"A class.");
    EXPECT_EQ(both.hits[1].data.getRefItem().getPurpose(), u"A tool.");
    const auto tool = ask::ask(u"duo type:tool");
    ASSERT_EQ(tool.hits.size(), 1U);
    EXPECT_EQ(tool.total, 1U);
    EXPECT_EQ(tool.hits[0].data.getRefItem().getPurpose(), u"A tool.");
}

TEST_F(AskTest, AnEntryWithTwoNamesIsOneHit) {
    ProductBuilder product(u"twice");
    for (const char16_t* name : {u"inner._impl.twin", u"inner.twin"})
        product.record(name, RefEntityType::Function, u"twin.html");
    product.item(makeItem(
        {.href = u"twin.html",
         .entities = {
             {RefEntityType::Function, u"inner.twin", property::FunctionType::Function},
             {RefEntityType::Function, u"inner._impl.twin", property::FunctionType::Function}}}));
    source().add(product.build());
    EXPECT_THAT(find(u"twin"), ElementsAre("inner.twin [without-package]"));
    EXPECT_EQ(ask::ask(u"twin").total, 1U);
}

TEST_F(AskTest, ANameIsFoundEvenIfItIsNoQuestion) {
    source().add(ProductBuilder(u"odd")
                     .entity(u"type:", RefEntityType::Term, u"a.html")
                     .entity(u"\"", RefEntityType::Operator, u"b.html")
                     .entity(u"->", RefEntityType::Operator, u"c.html")
                     .entity(u"-q", RefEntityType::Option, u"d.html")
                     .entity(u"abstract base class", RefEntityType::Term, u"e.html")
                     .build());
    for (const char16_t* name : {u"type:", u"\"", u"->", u"-q", u"abstract base class"})
        EXPECT_EQ(first(name), fl::i18n::toUtf8(name) + " [name]");
    EXPECT_EQ(first(u"Abstract Base Class"), "abstract base class [any-case]");
    EXPECT_THROW(static_cast<void>(ask::ask(u"is:")), ask::QuestionError);
}

TEST_F(AskTest, TheLimitCutsHitsAndNotTheirCount) {
    const auto all = ask::ask(u"frames", {.limit = 100});
    const auto few = ask::ask(u"frames", {.limit = 2});
    EXPECT_EQ(few.total, all.total);
    ASSERT_EQ(few.hits.size(), 2U);
    EXPECT_EQ(few.hits[1].name, all.hits[1].name);
    EXPECT_THAT(ask::ask(u"frames", {.limit = 0}).hits, IsEmpty());
}

TEST_F(AskTest, ADocumentationOfNothingAnswersNothing) {
    const auto answer = ask::ask(u"zzyzx qqfoo");
    EXPECT_THAT(answer.hits, IsEmpty());
    EXPECT_EQ(answer.total, 0U);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
