// What every source of documentation must do for its callers, checked on each source.
#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>

#include "docparser/DocParserException.hpp"
#include "docparser/FileDocSource.hpp"
#include "docset/publish.hpp"
#include "host/docset/Sets.hpp"
#include "support/MemorySource.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using docparser::DocParserException;
using docparser::DocSource;
using docset::ProductDocumentation;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Key;
using testing::UnorderedElementsAre;

// The documentation that each source is filled with: two products that are installed and share a
// reference file, one with a file of its own, and one that is known but not installed.
struct Content {
    ProductDocumentation one = makeProduct(u"one");
    ProductDocumentation two = makeProduct(u"two", u"first", 4);
    ProductDocumentation alone = makeProduct(u"alone", u"third");
    ProductDocumentation absent = makeProduct(u"absent");
};

// The text of a JSON list without its brackets, or of anything else from `from` to `to`.
std::string between(const std::string& text, std::string_view from, std::string_view to) {
    const auto start = text.find(from) + from.size();
    return text.substr(start, text.rfind(to) - start);
}

std::shared_ptr<DocSource> makeFileSource(const Content& content, const TempFolder& root) {
    for (const auto* product : {&content.one, &content.two, &content.alone, &content.absent})
        docset::publishProduct(root.path(), "en_US", *product);
    // Joins two products' files: the list of the second is put behind that of the first.
    const std::string first = root.read("en_US/one-1.reference.json");
    const std::string second =
        between(root.read("en_US/two-1.reference.json"), "\"products\": [", "]");
    root.write("en_US/shared.json", first.substr(0, first.rfind(']')) + "," + second + "]}");
    std::string manifest = root.read(manifestPath);
    manifest = replaced(manifest, "en_US/one-1.reference.json", "en_US/shared.json");
    manifest = replaced(manifest, "en_US/two-1.reference.json", "en_US/shared.json");
    manifest = replaced(manifest, "\"shortName\": \"absent\",\n      \"installed\": true",
                        "\"shortName\": \"absent\",\n      \"installed\": false");
    root.write(manifestPath, manifest);
    return std::make_shared<docparser::FileDocSource>(
        [path = root.path()] { return docparser::DocumentationLocation{.docRoot = path}; });
}

std::shared_ptr<DocSource> makeMemorySource(const Content& content, const TempFolder&) {
    auto source = std::make_shared<MemorySource>();
    source->add(content.one);
    source->add(content.two);
    source->add(content.alone);
    source->add(content.absent, false);
    source->shareFile(u"one", u"shared");
    source->shareFile(u"two", u"shared");
    return source;
}

struct Kind {
    const char* name;
    std::shared_ptr<DocSource> (*make)(const Content& content, const TempFolder& folder);
};

void PrintTo(const Kind& kind, std::ostream* out) {
    *out << kind.name;
}

class DocSourceTest : public testing::TestWithParam<Kind> {
  protected:
    Content content;
    TempFolder folder;
    std::shared_ptr<DocSource> source = GetParam().make(content, folder);
};

// The same, under a name that selects these tests for the thread sanitizer.
class DocSourceConcurrencyTest : public DocSourceTest {};

const auto kinds =
    testing::Values(Kind{"FileDocSource", makeFileSource}, Kind{"MemorySource", makeMemorySource});
const auto nameOf = [](const auto& info) { return std::string(info.param.name); };
INSTANTIATE_TEST_SUITE_P(Each, DocSourceTest, kinds, nameOf);
INSTANTIATE_TEST_SUITE_P(Each, DocSourceConcurrencyTest, kinds, nameOf);

TEST_P(DocSourceTest, LookupsAreThoseOfAllProductsPartedByWhetherTheyAreInstalled) {
    const auto results = source->getResourceLookupFiles();
    EXPECT_THAT(results.installed, UnorderedElementsAre(Key(u"one"), Key(u"two"), Key(u"alone")));
    EXPECT_THAT(results.uninstalled, ElementsAre(Key(u"absent")));
    for (const auto* product : {&content.one, &content.two, &content.alone}) {
        const auto& resource = results.installed.at(product->header.shortName);
        EXPECT_EQ(resource.getItems(), product->entities);
        const auto& header = resource.getHeaderInfo();
        EXPECT_EQ(header.getShortName(), product->header.shortName);
        EXPECT_EQ(header.getDisplayName(), product->header.displayName);
        EXPECT_EQ(header.getHelpFolder(), product->header.helpFolder);
        EXPECT_EQ(header.getVersion(), product->header.version);
        EXPECT_FALSE(header.getReferenceFileName().empty());
    }
    EXPECT_EQ(results.uninstalled.at(u"absent").getItems(), content.absent.entities);
}

TEST_P(DocSourceTest, TheFileThatALookupNamesHoldsTheProduct) {
    const auto results = source->getResourceLookupFiles();
    for (const auto* product : {&content.one, &content.two, &content.alone}) {
        const auto& lookup = results.installed.at(product->header.shortName);
        const auto resources =
            source->getResourceFile(lookup.getHeaderInfo().getReferenceFileName());
        ASSERT_THAT(resources, Contains(Key(product->header.shortName)));
        const auto& resource = resources.at(product->header.shortName);
        EXPECT_EQ(resource.getHeaderInfo(), lookup.getHeaderInfo());
        EXPECT_EQ(resource.getItems(), product->pages);
        for (const auto& [name, records] : lookup.getItems())
            for (const auto& record : records)
                EXPECT_THAT(resource.getItems(), Contains(Key(record.getHref())));
    }
}

TEST_P(DocSourceTest, AProductsShortNameNamesItsFileToo) {
    const auto results = source->getResourceLookupFiles();
    for (const char16_t* name : {u"one", u"alone"})
        EXPECT_EQ(source->getResourceFile(name),
                  source->getResourceFile(
                      results.installed.at(name).getHeaderInfo().getReferenceFileName()));
}

TEST_P(DocSourceTest, AFileGivesAllProductsThatItHolds) {
    EXPECT_THAT(source->getResourceFile(u"one"), ElementsAre(Key(u"one"), Key(u"two")));
    EXPECT_THAT(source->getResourceFile(u"alone"), ElementsAre(Key(u"alone")));
}

TEST_P(DocSourceTest, ResourcesMayBeAskedForBeforeLookups) {
    EXPECT_EQ(source->getResourceFile(u"alone").at(u"alone").getItems(), content.alone.pages);
}

TEST_P(DocSourceTest, ANameThatNothingHasRaises) {
    for (const char16_t* name : {u"", u"nothing", u"one.nothing", u"ONE", u"../one", u"/one"})
        EXPECT_THROW(static_cast<void>(source->getResourceFile(name)), DocParserException);
}

TEST_P(DocSourceTest, ProductsAreListedOnceInstalledOrNot) {
    const auto roots = source->getReferenceRoots();
    EXPECT_FALSE(roots.docRoot.empty());
    const auto lists = source->getAllProducts(roots.docRoot, {}, u"en_US");
    std::vector<std::u16string> names;
    for (const auto& product : lists.products) {
        names.push_back(product.getName());
        EXPECT_EQ(product.getRoot(), roots.docRoot);
    }
    EXPECT_THAT(names, UnorderedElementsAre(u"one", u"two", u"alone", u"absent"));
    EXPECT_THAT(lists.supportPackageProducts, IsEmpty());
}

TEST_P(DocSourceTest, TellsWhichProductsAreInstalled) {
    EXPECT_TRUE(source->isProductInstalled(u"one"));
    EXPECT_TRUE(source->isProductInstalled(u"alone"));
    EXPECT_FALSE(source->isProductInstalled(u"absent"));
    EXPECT_FALSE(source->isProductInstalled(u"unknown"));
    EXPECT_FALSE(source->isProductInstalled(u""));
}

TEST_P(DocSourceTest, NamesTheLocalesThatThereAre) {
    EXPECT_THAT(source->getSupportedDocLocales(), ElementsAre(u"en_US"));
}

TEST_P(DocSourceTest, ClearingTheSupportPackagesChangesNoDocumentation) {
    const auto before = source->getResourceFile(u"one");
    source->clearSupportPackageCaches();
    EXPECT_EQ(source->getResourceFile(u"one"), before);
    EXPECT_EQ(source->getResourceLookupFiles().installed.size(), 3U);
}

TEST_P(DocSourceConcurrencyTest, EveryOperationMayBeCalledFromAnyThread) {
    std::atomic<int> wrong{0};
    const auto require = [&](bool claim) { wrong += claim ? 0 : 1; };
    const std::vector<std::function<void()>> operations = {
        [&] { require(source->getResourceLookupFiles().installed.size() == 3); },
        [&] { require(source->getResourceFile(u"one").size() == 2); },
        [&] { require(source->getResourceFile(u"alone").at(u"alone").getItems().size() == 3); },
        [&] { require(source->isProductInstalled(u"two")); },
        [&] { require(source->getSupportedDocLocales().size() == 1); },
        [&] { require(!source->getReferenceRoots().docRoot.empty()); },
        [&] { source->clearSupportPackageCaches(); },
    };
    std::vector<std::thread> threads;
    for (std::size_t number = 0; number < 4; ++number)
        threads.emplace_back([&, number] {
            for (std::size_t round = 0; round < 5 * operations.size(); ++round)
                operations[(round + 2 * number) % operations.size()]();
        });
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
