// What names go on from what is typed.
#include <algorithm>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>

#include "fl/i18n/utf.hpp"
#include "reference/ask/complete.hpp"
#include "support/LibraryTest.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using ask::CompleteOptions;
using property::RefEntityType;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class CompleteTest : public LibraryTest {
  protected:
    void addFrames() {
        source().add(
            ProductBuilder(u"frames")
                .record(u"frames.Table", RefEntityType::Class, u"Table.html", u"Columns.")
                .record(u"frames.Table.drop", RefEntityType::Method, u"drop.html")
                .record(u"frames.Table.group_by", RefEntityType::Method, u"group.html")
                .record(u"frames.Table.groups", RefEntityType::Property, u"groups.html")
                .record(u"frames.Table._group", RefEntityType::Method, u"_group.html")
                .record(u"frames.TYPES", RefEntityType::Constant, u"TYPES.html")
                .record(u"frames.read_csv", RefEntityType::Function, u"csv.html", u"Read a file.")
                .record(u"frames.io.csv.Reader", RefEntityType::Class, u"Reader.html")
                .record(u"frames.io.csv.Writer", RefEntityType::Class, u"Writer.html")
                .build());
    }

    static std::vector<std::string> complete(const std::u16string& beginning,
                                             const CompleteOptions& options = {}) {
        std::vector<std::string> texts;
        for (const auto& completion : ask::complete(beginning, options)) {
            texts.push_back(fl::i18n::toUtf8(completion.text));
            EXPECT_EQ(completion.isName, !completion.name.empty()) << texts.back();
            EXPECT_EQ(completion.isName, completion.text.back() != u'.') << texts.back();
        }
        return texts;
    }
};

TEST_F(CompleteTest, GoesOnPartByPart) {
    addFrames();
    EXPECT_THAT(complete(u"fr"), ElementsAre("frames."));
    EXPECT_THAT(complete(u"frames."),
                ElementsAre("frames.read_csv", "frames.Table", "frames.TYPES", "frames.io."));
    EXPECT_THAT(complete(u"frames.io."), ElementsAre("frames.io.csv."));
    EXPECT_THAT(complete(u"frames.io.csv.R"), ElementsAre("frames.io.csv.Reader"));
    EXPECT_THAT(complete(u""), ElementsAre("frames."));
}

TEST_F(CompleteTest, APackageMayBeTheEndOfAName) {
    addFrames();
    EXPECT_THAT(complete(u"Table.gr"), ElementsAre("Table.group_by", "Table.groups"));
    EXPECT_THAT(complete(u"csv.w"), ElementsAre("csv.Writer"));
    EXPECT_THAT(complete(u"io.csv.w"), ElementsAre("io.csv.Writer"));
    EXPECT_THAT(complete(u"able.gr"), IsEmpty());
}

TEST_F(CompleteTest, ABeginningAloneIsThatOfAFirstOrOfALastPart) {
    addFrames();
    EXPECT_THAT(complete(u"read_"), ElementsAre("read_csv"));
    EXPECT_THAT(complete(u"t"), ElementsAre("Table", "TYPES"));
    EXPECT_THAT(complete(u"readc"), IsEmpty()) << "what is typed stays";
}

TEST_F(CompleteTest, TheCaseThatWasTypedGoesFirst) {
    addFrames();
    source().add(ProductBuilder(u"other")
                     .record(u"base.table", RefEntityType::Term, u"t.html")
                     .record(u"base.Table", RefEntityType::Class, u"T.html")
                     .build());
    EXPECT_THAT(complete(u"frames.ta"), ElementsAre("frames.Table"));
    EXPECT_THAT(complete(u"frames.TY"), ElementsAre("frames.TYPES"));
    EXPECT_THAT(complete(u"frames.Ta"), ElementsAre("frames.Table"));
    EXPECT_THAT(complete(u"frames.T"), ElementsAre("frames.Table", "frames.TYPES"));
    EXPECT_THAT(complete(u"FRAMES.r"), ElementsAre("FRAMES.read_csv"));
    EXPECT_THAT(complete(u"base.ta"), ElementsAre("base.table", "base.Table"));
    EXPECT_THAT(complete(u"base.Ta"), ElementsAre("base.Table", "base.table"));
}

TEST_F(CompleteTest, WhatBeginsWithAnUnderscoreComesLastUnlessItIsTyped) {
    addFrames();
    EXPECT_THAT(complete(u"Table."),
                ElementsAre("Table.drop", "Table.group_by", "Table.groups", "Table._group"));
    EXPECT_THAT(complete(u"Table._"), ElementsAre("Table._group"));
}

TEST_F(CompleteTest, WhatIsTypedInFullGoesFirst) {
    source().add(ProductBuilder(u"full")
                     .record(u"in", RefEntityType::Topic, u"in.html")
                     .record(u"into", RefEntityType::Function, u"into.html")
                     .build());
    EXPECT_THAT(complete(u"i"), ElementsAre("into", "in"));
    EXPECT_THAT(complete(u"in"), ElementsAre("in", "into"));
}

TEST_F(CompleteTest, OtherLanguagesDotsStay) {
    addFrames();
    EXPECT_THAT(complete(u"frames::Table::d"), ElementsAre("frames::Table::drop"));
    EXPECT_THAT(complete(u"Table->d"), ElementsAre("Table->drop"));
    EXPECT_THAT(complete(u"Table#d"), ElementsAre("Table#drop"));
    EXPECT_THAT(complete(u"frames/io"), ElementsAre("frames/io."));
}

TEST_F(CompleteTest, TellsWhatIsMeant) {
    addFrames();
    const auto completions = ask::complete(u"read_");
    ASSERT_EQ(completions.size(), 1U);
    EXPECT_EQ(completions[0].name, u"frames.read_csv");
    EXPECT_EQ(completions[0].type, RefEntityType::Function);
    EXPECT_EQ(completions[0].purpose, u"Read a file.");
}

TEST_F(CompleteTest, ProductsAreChosenAndPreferred) {
    addFrames();
    source().add(ProductBuilder(u"alpha")
                     .record(u"alpha.read", RefEntityType::Function, u"read.html")
                     .record(u"alpha.Table.group_of", RefEntityType::Method, u"group_of.html")
                     .build());
    EXPECT_THAT(complete(u"read"), ElementsAre("read", "read_csv", "Reader"));
    EXPECT_THAT(complete(u"read", {.products = {u"frames"}}), ElementsAre("read_csv", "Reader"));
    EXPECT_THAT(complete(u"Table.gr", {.products = {u"alpha"}}), ElementsAre("Table.group_of"));
    EXPECT_THAT(complete(u"read", {.products = {u"missing"}}), IsEmpty());
    EXPECT_THAT(complete(u"rea"), ElementsAre("read", "read_csv", "Reader"));
    EXPECT_THAT(complete(u"rea", {.preferredProducts = {u"frames"}}),
                ElementsAre("read_csv", "read", "Reader"));
    EXPECT_THAT(complete(u"read", {.limit = 1}), ElementsAre("read"));
    EXPECT_THAT(complete(u"read", {.limit = 0}), IsEmpty());
}

TEST_F(CompleteTest, APackageMayBeTypedByItsAlias) {
    source().add(ProductBuilder(u"frames")
                     .record(u"frames.read_csv", RefEntityType::Function, u"csv.html")
                     .record(u"frames.io.open", RefEntityType::Function, u"open.html")
                     .record(u"fr.read_only", RefEntityType::Function, u"only.html")
                     .alias(u"fr", u"frames", 9)
                     .alias(u"fio", u"frames.io", 3)
                     .build());
    EXPECT_THAT(complete(u"fr.read_"), ElementsAre("fr.read_csv", "fr.read_only"));
    EXPECT_THAT(complete(u"fr.io."), ElementsAre("fr.io.open"));
    EXPECT_THAT(complete(u"fio.o"), ElementsAre("fio.open"));
    EXPECT_THAT(complete(u"gr.o"), IsEmpty());
}

TEST_F(CompleteTest, OneTextComesOnce) {
    for (const char16_t* product : {u"alpha", u"beta", u"gamma"})
        source().add(ProductBuilder(product)
                         .record(std::u16string(product) + u".Table.drop", RefEntityType::Method,
                                 u"drop.html")
                         .record(u"shared.begin", RefEntityType::Function, u"begin.html")
                         .record(u"shared.begin.late", RefEntityType::Function, u"late.html")
                         .build());
    EXPECT_THAT(complete(u"Table."), ElementsAre("Table.drop"));
    EXPECT_THAT(complete(u"dr"), ElementsAre("drop"));
    EXPECT_THAT(complete(u"shared."), ElementsAre("shared.begin"));
}

TEST_F(CompleteTest, NothingThatIsTypedIsWrong) {
    addFrames();
    source().add(ProductBuilder(u"signs")
                     .record(u"..", RefEntityType::Operator, u"range.html")
                     .record(u"signs.Σίσυφος", RefEntityType::Function, u"sisyphos.html")
                     .record(u"signs.+", RefEntityType::Operator, u"plus.html")
                     .build());
    EXPECT_THAT(complete(u"signs.σί"), ElementsAre("signs.Σίσυφος"));
    EXPECT_THAT(complete(u"signs.+"), ElementsAre("signs.+"));
    EXPECT_THAT(complete(u"\t fram"), ElementsAre("frames."));
    for (const std::u16string& text :
         {std::u16string(u"."), std::u16string(u".."), std::u16string(u"frames.."),
          std::u16string(u"frames.Table.drop.x"), std::u16string(1, u'\0'),
          std::u16string(1, u'\xD800'), std::u16string(1, u'\xDC00') + u".a",
          std::u16string(5000, u'f'), std::u16string(1U << 20U, u'.')})
        EXPECT_THAT(complete(text), IsEmpty()) << text.size();
}

TEST_F(CompleteTest, APackageMayBeginWithADotOrEndWithOne) {
    source().add(ProductBuilder(u"dots")
                     .record(u".hidden.part.name", RefEntityType::Function, u"a.html")
                     .record(u"a..part.name", RefEntityType::Function, u"b.html")
                     .build());
    EXPECT_THAT(complete(u".hidden."), ElementsAre(".hidden.part."));
    EXPECT_THAT(complete(u".hidden.part.n"), ElementsAre(".hidden.part.name"));
    EXPECT_THAT(complete(u"a..part."), ElementsAre("a..part.name"));
}

TEST_F(CompleteTest, OfManyThatAreCompletedAlikeTheBestIsTold) {
    constexpr int products = 30;
    for (int number = 10; number < 10 + products; ++number) {
        const std::u16string name = u"p" + fl::i18n::toUtf16(std::to_string(number));
        source().add(ProductBuilder(name)
                         .record(name + u".Table.drop", RefEntityType::Method, u"drop.html", name)
                         .build());
    }
    const auto best = ask::complete(u"dro", {.preferredProducts = {u"p39"}});
    ASSERT_EQ(best.size(), 1);
    EXPECT_EQ(best.front().name, u"p39.Table.drop");
}

// Most are passed over unseen.
TEST_F(CompleteTest, ASmallerLimitGivesTheFirstOfTheSame) {
    std::mt19937 random(21);  // NOLINT(cert-msc32-c,cert-msc51-cpp): the same names on each run
    const std::u16string letters = u"aAbBc_.\u00DF\u0130";
    for (const char16_t product : {u'x', u'y', u'z'}) {
        ProductBuilder builder(std::u16string(1, product));
        for (int number = 0; number < 200; ++number) {
            std::u16string name = u"a";
            for (std::size_t length = 1 + random() % 9; length > 0; --length)
                name += letters[random() % letters.size()];
            if (name.back() == u'.')
                name += u'b';
            const auto types = {RefEntityType::Function, RefEntityType::Class,
                                RefEntityType::Property};
            builder.record(name, *(types.begin() + random() % types.size()), name + u".html");
        }
        source().add(builder.build());
    }
    for (const std::u16string beginning : {u"", u"a", u"A", u"b", u"aa", u"a.", u"_", u"c", u"aB"})
        for (CompleteOptions options : {CompleteOptions(), CompleteOptions{.products = {u"y"}},
                                        CompleteOptions{.preferredProducts = {u"z"}}}) {
            options.limit = 1000;
            const auto all = complete(beginning, options);
            for (const std::size_t limit : {0U, 1U, 2U, 5U, 20U}) {
                options.limit = limit;
                auto wanted = all;
                wanted.resize(std::min(limit, all.size()));
                EXPECT_EQ(complete(beginning, options), wanted) << fl::i18n::toUtf8(beginning);
            }
        }
}

TEST_F(CompleteTest, WithoutDocumentationThereIsNothing) {
    EXPECT_THAT(complete(u"a"), IsEmpty());
    EXPECT_THAT(complete(u""), IsEmpty());
}

// Every name is reached from each beginning of it, and nothing is given that is none.
TEST_F(CompleteTest, ReachesEachNameFromEachBeginning) {
    std::mt19937 random(20);  // NOLINT(cert-msc32-c,cert-msc51-cpp): the same names on each run
    const std::u16string letters = u"aAb_.";
    std::set<std::u16string> names;
    ProductBuilder product(u"random");
    while (names.size() < 300) {
        std::u16string name = u"r";
        for (std::size_t length = 1 + random() % 7; length > 0; --length) {
            const char16_t unit = letters[random() % letters.size()];
            name += unit == u'.' && name.back() == u'.' ? u'a' : unit;
        }
        if (name.back() != u'.' && names.insert(name).second)
            product.record(name, RefEntityType::Function, name + u".html");
    }
    source().add(product.build());
    for (const auto& name : names)
        for (std::size_t length = 0; length <= name.size(); ++length) {
            const std::u16string beginning = name.substr(0, length);
            const std::size_t dot = name.find(u'.', length);
            const bool isPart = dot != std::u16string::npos;
            const std::u16string wanted = isPart ? name.substr(0, dot) : name;
            const auto completions = ask::complete(beginning, {.limit = 1000});
            const bool isThere = std::ranges::any_of(completions, [&](const auto& completion) {
                // What is a name as well is completed as one.
                return completion.text == (completion.isName ? wanted : wanted + u'.') &&
                       (completion.isName || isPart);
            });
            EXPECT_TRUE(isThere) << fl::i18n::toUtf8(beginning) << " of " << fl::i18n::toUtf8(name);
            for (const auto& completion : completions)
                EXPECT_TRUE(!completion.isName || names.contains(completion.name));
        }
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
