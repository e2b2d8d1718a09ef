#include <map>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "support/LibraryTest.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using api::EntityCaseSensitivity;
using api::EntityPrecision;
using api::ReferenceRequest;
using cache_manager::ReferenceCacheManager;
using property::FunctionType;
using property::RefEntityType;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using enum ReferenceCacheManager::SearchMethod;
using Types = std::vector<RefEntityType::Value>;
using Hrefs = std::vector<std::u16string>;

ReferenceRequest insensitive(ReferenceRequest request) {
    request.setEntityCaseSensitivity(EntityCaseSensitivity::Insensitive);
    return request;
}

ReferenceRequest withoutPackage(ReferenceRequest request) {
    request.setEntityPrecision(EntityPrecision::Ignore_Package);
    return request;
}

class EntitySearchTest : public LibraryTest {
  protected:
    // Each matching href as "product:href", in the order of the answer.
    static Hrefs search(const ReferenceRequest& request,
                        ReferenceCacheManager::SearchMethod method = ReferenceSearch) {
        Hrefs hrefs;
        for (const auto& [product, matches] :
             ReferenceCacheManager::GetProductsWithEntity(request, method))
            for (const auto& href : matches.hrefs)
                hrefs.push_back(product + u":" + href);
        return hrefs;
    }
};

TEST_F(EntitySearchTest, LoadsTheLookupCachesOnFirstUseAndNeverSearchesUninstalledProducts) {
    add(ProductBuilder(u"p").record(u"f", RefEntityType::Function, u"f.html"));
    add(ProductBuilder(u"q").record(u"f", RefEntityType::Function, u"f.html"), false);
    EXPECT_THAT(search(ReferenceRequest(u"f")), ElementsAre(u"p:f.html"));
    EXPECT_THAT(search(ReferenceRequest(u"f", {}, {u"q"})), IsEmpty());
    EXPECT_EQ(source().lookupCalls(), 1);
}

TEST_F(EntitySearchTest, AnswersWithTheReferenceFileNameAndOrderedUniqueHrefs) {
    add(ProductBuilder(u"p")
            .record(u"f", RefEntityType::Function, u"b.html")
            .record(u"f", RefEntityType::Method, u"a.html")
            .record(u"f", RefEntityType::Macro, u"b.html"));
    const auto answer =
        ReferenceCacheManager::GetProductsWithEntity(ReferenceRequest(u"f"), ReferenceSearch);
    ASSERT_THAT(answer, ::testing::SizeIs(1));
    EXPECT_EQ(answer.at(u"p").referenceFileName, u"p.ref");
    EXPECT_THAT(answer.at(u"p").hrefs, ElementsAre(u"a.html", u"b.html"));
}

TEST_F(EntitySearchTest, ProductWithoutAMatchIsAbsentFromTheAnswer) {
    add(ProductBuilder(u"p").record(u"f", RefEntityType::Function, u"f.html"));
    add(ProductBuilder(u"q").record(u"g", RefEntityType::Function, u"g.html"));
    const auto answer =
        ReferenceCacheManager::GetProductsWithEntity(ReferenceRequest(u"f"), ReferenceSearch);
    EXPECT_TRUE(answer.contains(u"p"));
    EXPECT_FALSE(answer.contains(u"q"));
}

TEST_F(EntitySearchTest, ProductListChoosesProductsBySpelling) {
    for (const char16_t* name : {u"p", u"P", u"q"})
        add(ProductBuilder(name).record(u"f", RefEntityType::Function, u"f.html"));
    struct Case {
        const char* name;
        std::vector<std::u16string> products;
        Hrefs expected;
    };
    const Case cases[] = {
        {"empty list", {}, {u"P:f.html", u"p:f.html", u"q:f.html"}},
        {"one empty name", {u""}, {u"P:f.html", u"p:f.html", u"q:f.html"}},
        {"an empty name among others", {u"", u"q"}, {u"q:f.html"}},
        {"two empty names", {u"", u""}, {}},
        {"case counts", {u"P"}, {u"P:f.html"}},
        {"unknown names are skipped", {u"nobody", u"q"}, {u"q:f.html"}},
        {"a name twice counts once", {u"q", u"q"}, {u"q:f.html"}},
        {"answer is in name order", {u"q", u"P"}, {u"P:f.html", u"q:f.html"}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(search(ReferenceRequest(u"f", {}, c.products)), c.expected) << c.name;
}

TEST_F(EntitySearchTest, NamesMatchByCaseAndPrecision) {
    add(ProductBuilder(u"p")
            .record(u"pkg.Plot", RefEntityType::Class, u"class.html")
            .record(u"pkg.plot", RefEntityType::Function, u"function.html")
            .record(u"plot", RefEntityType::Command, u"command.html")
            .record(u"pkg.go", RefEntityType::Command, u"go.html")
            .record(u"tool/plot", RefEntityType::Function, u"slash.html")
            .record(u"replot", RefEntityType::Function, u"other.html"));
    struct Case {
        const char* name;
        ReferenceRequest request;
        Hrefs expected;
    };
    const Case cases[] = {
        {"exact", ReferenceRequest(u"pkg.plot"), {u"p:function.html"}},
        {"exact needs the package", ReferenceRequest(u"Plot"), {}},
        {"folded",
         insensitive(ReferenceRequest(u"PKG.PLOT")),
         {u"p:class.html", u"p:function.html"}},
        {"without package",
         withoutPackage(ReferenceRequest(u"plot")),
         {u"p:command.html", u"p:function.html", u"p:slash.html"}},
        {"without package, folded",
         insensitive(withoutPackage(ReferenceRequest(u"PLOT"))),
         {u"p:class.html", u"p:command.html", u"p:function.html", u"p:slash.html"}},
        {"a command keeps its qualification", withoutPackage(ReferenceRequest(u"go")), {}},
        {"a command by its whole name",
         withoutPackage(ReferenceRequest(u"pkg.go")),
         {u"p:go.html"}},
        {"empty text matches no name", withoutPackage(ReferenceRequest(u"")), {}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(search(c.request), c.expected) << c.name;
}

TEST_F(EntitySearchTest, ExactlyThirteenTypesMayLackTheirPackage) {
    for (std::uint32_t number = 0; number < 30; ++number) {
        const std::u16string digits{static_cast<char16_t>(u'0' + number / 10),
                                    static_cast<char16_t>(u'0' + number % 10)};
        add(ProductBuilder(u"p" + digits)
                .record(u"pkg.name", static_cast<RefEntityType::Value>(number), u"x.html"));
    }
    EXPECT_THAT(
        search(withoutPackage(ReferenceRequest(u"name"))),
        ElementsAre(u"p00:x.html", u"p01:x.html", u"p02:x.html", u"p03:x.html", u"p04:x.html",
                    u"p05:x.html", u"p06:x.html", u"p07:x.html", u"p08:x.html", u"p10:x.html",
                    u"p11:x.html", u"p22:x.html", u"p23:x.html"));
}

TEST_F(EntitySearchTest, TypesFilterRecordsAndMethodsAdmitFunctionsCalledLikeMethods) {
    add(ProductBuilder(u"p")
            .record(u"f", RefEntityType::Function, u"function.html")
            .record(u"f", RefEntityType::Function, u"method-like.html", u"", FunctionType::Method)
            .record(u"f", RefEntityType::Method, u"method.html")
            .record(u"f", RefEntityType::Class, u"class.html"));
    const auto of = [](Types types) { return search(ReferenceRequest(u"f", std::move(types))); };
    EXPECT_THAT(of({RefEntityType::Method}), ElementsAre(u"p:method-like.html", u"p:method.html"));
    EXPECT_THAT(of({RefEntityType::Class}), ElementsAre(u"p:class.html"));
    EXPECT_THAT(of({RefEntityType::Function}),
                ElementsAre(u"p:function.html", u"p:method-like.html"));
    EXPECT_THAT(of({RefEntityType::Macro}), IsEmpty());
    EXPECT_THAT(of({}), ElementsAre(u"p:class.html", u"p:function.html", u"p:method-like.html",
                                    u"p:method.html"));
}

TEST_F(EntitySearchTest, NameTestOfAKeysFirstAcceptedRecordServesItsOthers) {
    // Without its package, "name" matches the function and would not match the command.
    add(ProductBuilder(u"function-first")
            .record(u"pkg.name", RefEntityType::Function, u"function.html")
            .record(u"pkg.name", RefEntityType::Command, u"command.html"));
    add(ProductBuilder(u"command-first")
            .record(u"pkg.name", RefEntityType::Command, u"command.html")
            .record(u"pkg.name", RefEntityType::Function, u"function.html"));
    EXPECT_THAT(search(withoutPackage(ReferenceRequest(u"name"))),
                ElementsAre(u"function-first:command.html", u"function-first:function.html"));
    // A record of a type that is not accepted does not ask for its key.
    EXPECT_THAT(search(withoutPackage(ReferenceRequest(u"name", {RefEntityType::Function}))),
                ElementsAre(u"command-first:function.html", u"function-first:function.html"));
}

TEST_F(EntitySearchTest, MatchAllRequestFindsEveryRecordOfItsTypesAndProducts) {
    add(ProductBuilder(u"p")
            .record(u"f", RefEntityType::Function, u"f.html")
            .record(u"C", RefEntityType::Class, u"c.html"));
    add(ProductBuilder(u"q").record(u"C", RefEntityType::Class, u"c.html"));
    for (const auto method : {ReferenceSearch, ClassEntitySearch, NameAndPurposeSearch,
                              AllTextSearch, PageNameSearch}) {
        EXPECT_THAT(search(ReferenceRequest::createMatchAllTextRequest({}, {}), method),
                    ElementsAre(u"p:c.html", u"p:f.html", u"q:c.html"))
            << method;
        EXPECT_THAT(
            search(ReferenceRequest::createMatchAllTextRequest({RefEntityType::Class}, {u"p"}),
                   method),
            ElementsAre(u"p:c.html"))
            << method;
    }
}

TEST_F(EntitySearchTest, UnknownMethodSearchesByName) {
    add(ProductBuilder(u"p").record(u"f", RefEntityType::Function, u"f.html"));
    EXPECT_THAT(
        search(ReferenceRequest(u"f"), static_cast<ReferenceCacheManager::SearchMethod>(77)),
        ElementsAre(u"p:f.html"));
}

TEST_F(EntitySearchTest, NameAndPurposeSearchFindsPartsAndNothingForAnEmptyText) {
    add(ProductBuilder(u"p")
            .record(u"stats.Kde", RefEntityType::Class, u"kde.html", u"Density estimate")
            .record(u"plot", RefEntityType::Function, u"plot.html", u"Draw a KDE"));
    EXPECT_THAT(search(ReferenceRequest(u"Kd"), NameAndPurposeSearch), ElementsAre(u"p:kde.html"));
    EXPECT_THAT(search(insensitive(ReferenceRequest(u"KDE")), NameAndPurposeSearch),
                ElementsAre(u"p:kde.html", u"p:plot.html"));
    EXPECT_THAT(search(ReferenceRequest(u""), NameAndPurposeSearch), IsEmpty());
    EXPECT_THAT(search(insensitive(ReferenceRequest(u"")), NameAndPurposeSearch), IsEmpty());
}

TEST_F(EntitySearchTest, NameAndPurposeSearchForOneWordFindsWhereItIsPartOfAnother) {
    add(ProductBuilder(u"p")
            .record(u"fit", RefEntityType::Function, u"fit.html")
            .record(u"refitted", RefEntityType::Function, u"refitted.html")
            .record(u"plot", RefEntityType::Function, u"plot.html", u"A better FIT")
            .record(u"draw", RefEntityType::Function, u"draw.html", u"Fi t"));
    for (const std::vector<std::u16string>& products : {Hrefs{}, Hrefs{u"p"}})
        EXPECT_THAT(
            search(insensitive(ReferenceRequest(u"fit", {}, products)), NameAndPurposeSearch),
            ElementsAre(u"p:fit.html", u"p:plot.html", u"p:refitted.html"));
}

TEST_F(EntitySearchTest, NameAndPurposeSearchFindsATextWithoutWords) {
    add(ProductBuilder(u"p")
            .record(u"a", RefEntityType::Function, u"a.html", u"x -> y")
            .record(u"b", RefEntityType::Function, u"b.html", u"x - > y"));
    add(ProductBuilder(u"q").record(u"->", RefEntityType::Function, u"c.html"));
    EXPECT_THAT(search(ReferenceRequest(u"->"), NameAndPurposeSearch),
                ElementsAre(u"p:a.html", u"q:c.html"));
    EXPECT_THAT(search(ReferenceRequest(u"->", {}, {u"p"}), NameAndPurposeSearch),
                ElementsAre(u"p:a.html"));
    EXPECT_THAT(search(ReferenceRequest(u"=>"), NameAndPurposeSearch), IsEmpty());
}

TEST_F(EntitySearchTest, AllTextSearchNominatesEveryRecordOfTheTypes) {
    add(ProductBuilder(u"p")
            .record(u"f", RefEntityType::Function, u"f.html")
            .record(u"C", RefEntityType::Class, u"c.html"));
    EXPECT_THAT(search(ReferenceRequest(u"no such text"), AllTextSearch),
                ElementsAre(u"p:c.html", u"p:f.html"));
    EXPECT_THAT(search(ReferenceRequest(u"no such text", {RefEntityType::Class}), AllTextSearch),
                ElementsAre(u"p:c.html"));
}

TEST_F(EntitySearchTest, PageNameSearchComparesHrefs) {
    add(ProductBuilder(u"p").record(u"Plotting", RefEntityType::Function, u"ref/Plot.html"));
    EXPECT_THAT(search(ReferenceRequest(u"ref/Plot.html"), PageNameSearch),
                ElementsAre(u"p:ref/Plot.html"));
    EXPECT_THAT(search(ReferenceRequest(u"Plot.html"), PageNameSearch), IsEmpty());
    EXPECT_THAT(search(withoutPackage(ReferenceRequest(u"Plot.html")), PageNameSearch),
                ElementsAre(u"p:ref/Plot.html"));
    EXPECT_THAT(search(withoutPackage(ReferenceRequest(u"plot.html")), PageNameSearch), IsEmpty());
    EXPECT_THAT(search(insensitive(withoutPackage(ReferenceRequest(u"PLOT.html"))), PageNameSearch),
                ElementsAre(u"p:ref/Plot.html"));
    EXPECT_THAT(search(ReferenceRequest(u"Plotting"), PageNameSearch), IsEmpty());
}

TEST_F(EntitySearchTest, ClassSearchFindsClassesByNameAndMembersByTheirClass) {
    add(ProductBuilder(u"p")
            .record(u"a.b", RefEntityType::Class, u"class.html")
            .record(u"a.b.c", RefEntityType::Method, u"method.html")
            .record(u"a.b.c.d", RefEntityType::Method, u"deeper.html")
            .record(u"x.a.b.c", RefEntityType::Method, u"elsewhere.html")
            .record(u"ab", RefEntityType::Function, u"flat.html"));
    EXPECT_THAT(search(ReferenceRequest(u"a.b"), ClassEntitySearch),
                ElementsAre(u"p:class.html", u"p:method.html"));
    EXPECT_THAT(search(withoutPackage(ReferenceRequest(u"b")), ClassEntitySearch),
                ElementsAre(u"p:class.html", u"p:elsewhere.html", u"p:method.html"));
    EXPECT_THAT(search(ReferenceRequest(u"a.b", {RefEntityType::Method}), ClassEntitySearch),
                ElementsAre(u"p:method.html"));
}

TEST_F(EntitySearchTest, ClassSearchNeverFindsAKeyWithoutADotByItsParent) {
    add(ProductBuilder(u"p").record(u"plain", RefEntityType::Function, u"plain.html"));
    EXPECT_THAT(search(ReferenceRequest(u"plain"), ClassEntitySearch), IsEmpty());
    EXPECT_THAT(search(ReferenceRequest(u""), ClassEntitySearch), IsEmpty());
}

TEST_F(EntitySearchTest, ClassSearchForNothingFindsMembersOfAClassWithoutAName) {
    add(ProductBuilder(u"p")
            .record(u".x", RefEntityType::Method, u"nameless.html")
            .record(u"a.x", RefEntityType::Method, u"named.html"));
    EXPECT_THAT(search(ReferenceRequest(u""), ClassEntitySearch), ElementsAre(u"p:nameless.html"));
}

TEST_F(EntitySearchTest, ClassSearchReusesAKeysAnswerForItsOtherMembers) {
    // The class-like record is found by its own name and asks nothing of the memo; the method's
    // parent is "a", so that "a.b" finds it only if another record of the key was found before.
    add(ProductBuilder(u"p")
            .record(u"a.b", RefEntityType::Class, u"class.html")
            .record(u"a.b", RefEntityType::Method, u"method.html"));
    EXPECT_THAT(search(ReferenceRequest(u"a.b"), ClassEntitySearch), ElementsAre(u"p:class.html"));
    EXPECT_THAT(search(ReferenceRequest(u"a"), ClassEntitySearch),
                ElementsAre(u"p:class.html", u"p:method.html"));
}

TEST_F(EntitySearchTest, TextThatCannotBeFoldedIsComparedAsItIs) {
    const std::u16string odd = u"Odd" + std::u16string(1, char16_t{0xDC00});
    add(ProductBuilder(u"p").record(odd, RefEntityType::Function, u"odd.html"));
    EXPECT_THAT(search(insensitive(ReferenceRequest(odd))), ElementsAre(u"p:odd.html"));
    EXPECT_THAT(search(insensitive(ReferenceRequest(u"odd" + odd.substr(3)))), IsEmpty());
}

TEST_F(EntitySearchTest, ClassSearchFindsTheClassAndItsMembersOnceInEachProduct) {
    for (const char16_t* name : {u"p", u"q", u"r"})
        add(ProductBuilder(name)
                .record(u"a.Shape.draw", RefEntityType::Method, u"draw.html")
                .record(u"a.Shape", RefEntityType::Class, u"Shape.html")
                .record(u"a.Shape.Shape", RefEntityType::Method, u"Shape.html")
                .record(u"a.Shapes", RefEntityType::Class, u"Shapes.html"));
    const auto expected = ElementsAre(u"p:Shape.html", u"p:draw.html", u"q:Shape.html",
                                      u"q:draw.html", u"r:Shape.html", u"r:draw.html");
    // Often enough that a table of all products' names is made in between.
    for (int round = 0; round < 50; ++round)
        ASSERT_THAT(search(ReferenceRequest(u"a.Shape"), ClassEntitySearch), expected) << round;
    EXPECT_THAT(search(ReferenceRequest(u"a.Shape", {}, {u"r", u"q"}), ClassEntitySearch),
                ElementsAre(u"q:Shape.html", u"q:draw.html", u"r:Shape.html", u"r:draw.html"));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
