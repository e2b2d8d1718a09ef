// What is asked while some of the documentation, or all of it, is not there.
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "docparser/DocParserException.hpp"
#include "fl/i18n/utf.hpp"
#include "reference/api/AllTextDataRetriever.hpp"
#include "reference/api/ReferenceDataRetriever.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "reference/ask/ask.hpp"
#include "reference/ask/complete.hpp"
#include "support/Items.hpp"
#include "support/LibraryTest.hpp"
#include "support/Print.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using api::AllTextDataRetriever;
using api::ReferenceDataRetriever;
using api::ReferenceRequest;
using cache_manager::ReferenceCacheManager;
using property::FunctionType;
using property::RefEntityType;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class MissingDocumentationTest : public LibraryTest {
  protected:
    MissingDocumentationTest() {
        for (const std::u16string name : {u"a", u"b", u"c"})
            add(ProductBuilder(name)
                    .entity(name + u".sort_rows", RefEntityType::Function, u"sort.html",
                            u"Orders the lines of a table by their keys.")
                    .entity(name + u".Table", RefEntityType::Class, u"Table.html",
                            u"Holds lines with keys."));
    }

    // The names that a question finds, in their order.
    static std::vector<std::string> asked(const std::u16string& question) {
        std::vector<std::string> names;
        for (const auto& hit : ask::ask(question).hits)
            names.push_back(fl::i18n::toUtf8(hit.name));
        return names;
    }

    // That nothing of product "b" is found, and all of the others.
    static void expectAllButB() {
        EXPECT_THAT(
            dump(AllTextDataRetriever(ReferenceRequest(u"keys")).getReferenceData()),
            ElementsAre("a:a.Table[class]@Table.html", "a:a.sort_rows[function]@sort.html",
                        "c:c.Table[class]@Table.html", "c:c.sort_rows[function]@sort.html"));
        const char16_t* const questions[] = {u"sort_rows",
                                             u"sort rows",
                                             u"sort_ro",
                                             u"sort_rosw",
                                             u"order lines of tables",
                                             u"lines holding tables by keys"};
        for (const auto* const question : questions) {
            const auto names = asked(question);
            EXPECT_THAT(names, testing::Not(testing::Contains(testing::StartsWith("b."))))
                << fl::i18n::toUtf8(question);
            EXPECT_THAT(names, testing::IsSupersetOf({"a.sort_rows", "c.sort_rows"}))
                << fl::i18n::toUtf8(question);
        }
    }
};

TEST_F(MissingDocumentationTest, AProductWhosePagesCannotBeReadIsLeftOut) {
    source().onResourceFile([](const std::u16string& file) {
        if (file == u"b.ref")
            throw docparser::DocParserException("broken");
    });
    expectAllButB();
}

TEST_F(MissingDocumentationTest, AProductThatItsFileDoesNotHoldIsLeftOut) {
    ReferenceCacheManager::PopulateLookupCaches();
    source().shareFile(u"b", u"elsewhere");
    source().shareFile(u"c", u"b.ref");
    // Now "b.ref" holds "c" alone, and "c.ref" nothing; what came along with "b" serves "c".
    static_cast<void>(ReferenceDataRetriever(ReferenceRequest(u"b.Table")).getReferenceData());
    expectAllButB();
}

TEST_F(MissingDocumentationTest, NothingIsFoundWhileTheLookupsOfInstalledProductsAreClearedAlone) {
    ReferenceCacheManager::PopulateLookupCaches();
    ReferenceCacheManager::ClearLookupCache();
    const ReferenceRequest request(u"a.Table");
    EXPECT_THAT(ReferenceDataRetriever(request).getReferenceData(), IsEmpty());
    EXPECT_THAT(AllTextDataRetriever(request).getReferenceData(), IsEmpty());
    EXPECT_THAT(ReferenceCacheManager::GetProductsWithEntity(
                    request, ReferenceCacheManager::ReferenceSearch),
                IsEmpty());
    EXPECT_THAT(asked(u"a.Table"), IsEmpty());
    EXPECT_THAT(ask::complete(u"a.T"), IsEmpty());
    EXPECT_EQ(source().lookupCalls(), 1);
}

TEST_F(MissingDocumentationTest, AnItemThatNoNameLeadsToIsNoHit) {
    ProductBuilder product(u"d");
    for (const std::u16string name : {u"shown", u"hidden"})
        product.item(
            makeItem({.href = name + u".html",
                      .entities = {{RefEntityType::Function, u"d." + name, FunctionType::Function}},
                      .description = u"Gathers quarks, gluons and leptons."}));
    product.item(makeItem(
        {.href = u"nameless.html", .description = u"Gathers quarks, gluons and leptons."}));
    add(product.record(u"d.shown", RefEntityType::Function, u"shown.html"));
    EXPECT_THAT(asked(u"gather quarks gluons leptons"), ElementsAre("d.shown"));
}

TEST_F(MissingDocumentationTest, ProductsWithoutTheWantedTypesAreNotOpenedForTheirTexts) {
    add(ProductBuilder(u"d").entity(u"t", RefEntityType::Tool, u"t.html", u"Turns keys."));
    EXPECT_THAT(dump(AllTextDataRetriever(ReferenceRequest(u"keys", {RefEntityType::Tool}))
                         .getReferenceData()),
                ElementsAre("d:t[tool]@t.html"));
    EXPECT_EQ(source().resourceCalls(), 1);
    EXPECT_THAT(
        AllTextDataRetriever(ReferenceRequest(u"keys", {RefEntityType::Macro})).getReferenceData(),
        IsEmpty());
    EXPECT_EQ(source().resourceCalls(), 1);
}

TEST_F(MissingDocumentationTest, OfTheWantedProductsThoseWithTheWordsAnswer) {
    add(ProductBuilder(u"d").entity(u"t", RefEntityType::Tool, u"t.html", u"Turns screws."));
    const auto found = [](const std::u16string& text) {
        return dump(
            AllTextDataRetriever(ReferenceRequest(text, {}, {u"d", u"a"})).getReferenceData());
    };
    EXPECT_THAT(found(u"screws"), ElementsAre("d:t[tool]@t.html"));
    EXPECT_THAT(found(u"Holds"), ElementsAre("a:a.Table[class]@Table.html"));
    EXPECT_THAT(found(u"."), testing::SizeIs(3));
    EXPECT_THAT(found(u"nothing"), IsEmpty());
}

TEST_F(MissingDocumentationTest, ANameWithoutAPageIsNoHit) {
    add(ProductBuilder(u"d")
            .record(u"d.sort_cells", RefEntityType::Function, u"gone.html")
            .record(u"d.sort_cells", RefEntityType::Method, u"there.html")
            .entity(u"d.sort_columns", RefEntityType::Function, u"there.html"));
    EXPECT_THAT(asked(u"d.sort_cells"), ElementsAre("d.sort_cells"));
    add(ProductBuilder(u"e").record(u"e.sort_cells", RefEntityType::Function, u"gone.html"));
    ReferenceCacheManager::ClearAllCaches();
    EXPECT_THAT(asked(u"e.sort_cells product:e"), IsEmpty());
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
