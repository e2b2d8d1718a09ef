// How FileDocSource joins support packages to the documentation root.
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "docparser/DocParserException.hpp"
#include "host/docparser/Roots.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using docparser::DocParserException;
using docparser::ProductPathData;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Key;
using testing::SizeIs;

class SupportPackageTest : public testing::Test {
  protected:
    SupportPackageTest() {
        publish(root, makeProduct(u"core", u"root"));
        publish(first, makeProduct(u"radar", u"first"));
        publish(first, makeProduct(u"core", u"first"));
        publish(second, makeProduct(u"radar", u"second"));
        publish(second, makeProduct(u"lidar", u"second"), "ja_JP");
    }

    TempFolder root;
    TempFolder first;
    TempFolder second;
    docparser::FileDocSource source =
        sourceOf({.docRoot = root.path(), .supportPackageRoots = {first.path(), second.path()}});
};

TEST_F(SupportPackageTest, ProductsAreAddedUnlessAnEarlierRootHasThem) {
    const auto lookups = source.getResourceLookupFiles();
    EXPECT_THAT(lookups.installed, ElementsAre(Key(u"core"), Key(u"lidar"), Key(u"radar")));
    EXPECT_EQ(lookupEdition(source, u"core"), u"root");
    EXPECT_EQ(lookupEdition(source, u"radar"), u"first");
    EXPECT_EQ(lookupEdition(source, u"lidar"), u"second");
    EXPECT_TRUE(source.isProductInstalled(u"lidar"));
}

TEST_F(SupportPackageTest, PagesAreThoseOfTheRootThatTheLookupIsOf) {
    for (const auto& [product, edition] : std::vector<std::pair<std::u16string, std::u16string>>{
             {u"core", u"root"}, {u"radar", u"first"}, {u"lidar", u"second"}}) {
        EXPECT_EQ(pageEdition(source, product), edition);
        // Files of the same name lie below several roots.
        const auto lookups = source.getResourceLookupFiles();
        const auto& header = lookups.installed.at(product).getHeaderInfo();
        const auto resources = source.getResourceFile(header.getReferenceFileName());
        ASSERT_THAT(resources, ElementsAre(Key(product)));
        EXPECT_EQ(resources.at(product).getHeaderInfo(), header);
    }
}

TEST_F(SupportPackageTest, AFileOfAnEarlierRootHidesItsProductInALaterOne) {
    const std::u16string hidden = (second.path() / "en_US/radar-1.reference.json").u16string();
    EXPECT_THAT(source.getResourceFile(hidden), IsEmpty());
}

TEST_F(SupportPackageTest, AreListedAmongAllProductsAndApart) {
    const auto lists = source.getAllProducts(root.path().u16string(), {}, u"");
    const ProductPathData core(u"core", root.path().u16string());
    const ProductPathData radar(u"radar", first.path().u16string());
    const ProductPathData lidar(u"lidar", second.path().u16string());
    EXPECT_THAT(lists.products, ElementsAre(core, radar, lidar));
    EXPECT_THAT(lists.supportPackageProducts, ElementsAre(radar, lidar));
}

TEST_F(SupportPackageTest, TheirLocalesAreAddedBehindTheRoots) {
    EXPECT_THAT(source.getSupportedDocLocales(), ElementsAre(u"en_US", u"ja_JP"));
}

TEST_F(SupportPackageTest, RootsAreNamedInTheOrderInWhichTheyAreSearched) {
    const auto roots = source.getReferenceRoots();
    EXPECT_EQ(roots.docRoot, root.path().u16string());
    EXPECT_THAT(roots.supportPackageRoots,
                ElementsAre(first.path().u16string(), second.path().u16string()));
}

TEST_F(SupportPackageTest, TheirManifestsAreKeptUntilTheCachesAreCleared) {
    EXPECT_THAT(source.getResourceLookupFiles().installed, SizeIs(3));
    publish(first, makeProduct(u"sonar", u"late"));
    publish(root, makeProduct(u"added", u"late"));
    EXPECT_THAT(source.getResourceLookupFiles().installed,
                ElementsAre(Key(u"added"), Key(u"core"), Key(u"lidar"), Key(u"radar")));
    source.clearSupportPackageCaches();
    EXPECT_THAT(
        source.getResourceLookupFiles().installed,
        ElementsAre(Key(u"added"), Key(u"core"), Key(u"lidar"), Key(u"radar"), Key(u"sonar")));
}

TEST_F(SupportPackageTest, OneThatCannotBeReadIsLeftOutAndLoggedOnce) {
    const LogCapture log("docparser=4");
    const std::string sound = first.read(manifestPath);
    first.write(manifestPath, "{");
    EXPECT_THAT(source.getResourceLookupFiles().installed,
                ElementsAre(Key(u"core"), Key(u"lidar"), Key(u"radar")));
    EXPECT_EQ(lookupEdition(source, u"radar"), u"second");
    EXPECT_THAT(log.texts(), ElementsAre(AllOf(HasSubstr((first.path() / manifestPath).string()),
                                               HasSubstr(":1:2: "))));
    first.write(manifestPath, sound);
    source.clearSupportPackageCaches();
    EXPECT_EQ(lookupEdition(source, u"radar"), u"first");
}

TEST_F(SupportPackageTest, OneThatIsMissingIsLeftOutAndLogged) {
    const LogCapture log("docparser=4");
    auto reader = sourceOf(
        {.docRoot = root.path(), .supportPackageRoots = {root.path() / "missing", second.path()}});
    EXPECT_THAT(reader.getResourceLookupFiles().installed,
                ElementsAre(Key(u"core"), Key(u"lidar"), Key(u"radar")));
    EXPECT_THAT(log.texts(), ElementsAre(HasSubstr((root.path() / "missing").string())));
}

TEST_F(SupportPackageTest, AProductThatCannotBeReadStillHidesThoseOfLaterRoots) {
    const LogCapture log("docparser=4");
    first.write("en_US/radar-1.lookup.json", "{}");
    EXPECT_THAT(source.getResourceLookupFiles().installed,
                ElementsAre(Key(u"core"), Key(u"lidar")));
    EXPECT_THAT(log.texts(), ElementsAre(HasSubstr("radar-1.lookup.json")));
}

TEST_F(SupportPackageTest, DoNotStandInForTheDocumentationRoot) {
    auto reader =
        sourceOf({.docRoot = root.path() / "missing", .supportPackageRoots = {first.path()}});
    EXPECT_THROW(static_cast<void>(reader.getResourceLookupFiles()), DocParserException);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
