// The store as an ordinary object: each has its own source, caches and locks.
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "docimage/unitBytes.hpp"
#include "docparser/DocParserException.hpp"
#include "docparser/FileDocSource.hpp"
#include "docset/publish.hpp"
#include "reference/search/EntitySearch.hpp"
#include "reference/search/ReferenceStore.hpp"
#include "support/Items.hpp"
#include "support/LibraryTest.hpp"
#include "support/MemorySource.hpp"
#include "support/TempFolder.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using namespace search;
using property::RefEntityType;
using testing::ElementsAre;
using testing::IsEmpty;

std::shared_ptr<MemorySource> sourceOf(const std::vector<std::u16string>& names) {
    auto source = std::make_shared<MemorySource>();
    ProductBuilder product(u"p");
    for (const auto& name : names)
        product.entity(name, RefEntityType::Function, name + u".html");
    source->add(product.build());
    return source;
}

// The hrefs that a search for the name finds, in any case and package.
std::vector<std::string> find(ReferenceStore& store, const std::u16string& name) {
    return store.answer([&](const Snapshot& snapshot) {
        std::vector<std::string> found;
        const LookupIndex* const index = snapshot.index();
        if (index == nullptr)
            return found;
        const ReferenceRequestExt ext(ReferenceRequestExt::Request{.text = name,
                                                                   .types = {},
                                                                   .products = {},
                                                                   .isCaseSensitive = false,
                                                                   .isExactMatch = false});
        EntitySearch(*index, ext, ReferenceSearch).run([&](std::uint32_t product, auto hrefs) {
            for (const auto href : hrefs)
                found.emplace_back(index->lookup(product).hrefs()[href]);
        });
        return found;
    });
}

TEST(ReferenceStoreTest, StoresHaveNothingInCommon) {
    ReferenceStore first(sourceOf({u"a.Fit"}));
    ReferenceStore second(sourceOf({u"b.fit", u"c.fit"}));
    EXPECT_THAT(find(first, u"FIT"), ElementsAre("a.Fit.html"));
    EXPECT_THAT(find(second, u"FIT"), ElementsAre("b.fit.html", "c.fit.html"));
    first.clearLookupCaches();
    EXPECT_THAT(*first.lookupCache(), IsEmpty());
    EXPECT_EQ(second.lookupCache()->size(), 1U);
}

TEST(ReferenceStoreTest, WhatASnapshotHoldsOutlivesAClearing) {
    const auto source = sourceOf({u"fit"});
    ReferenceStore store(source);
    const Snapshot snapshot = store.snapshot();
    const JoinedPages* const pages = snapshot.pagesOf(0);
    ASSERT_NE(pages, nullptr);
    store.clearLookupCaches();
    store.clearResourceCache();
    EXPECT_EQ(snapshot.pagesOf(0), pages);
    EXPECT_EQ(pages->pages().item(0).getHref(), u"fit.html");
    EXPECT_EQ(source->resourceCalls(), 1);
    static_cast<void>(store.snapshot().pagesOf(0));
    EXPECT_EQ(source->resourceCalls(), 2);
}

// A source whose image turns out to be damaged.
class DamagedSource final : public MemorySource {
  public:
    docparser::ParsingResults getResourceLookupFiles() override {
        if (problem.empty())
            throw docimage::DamagedImage("a.image: damaged");
        return MemorySource::getResourceLookupFiles();
    }
    void passOverImages(const std::string& text) override { problem = text; }
    std::string problem;
};

TEST(ReferenceStoreTest, ADamagedImageIsPassedOverAndTheQuestionAskedAgain) {
    const auto source = std::make_shared<DamagedSource>();
    source->add(ProductBuilder(u"p").entity(u"fit", RefEntityType::Function, u"fit.html").build());
    ReferenceStore store(source);
    EXPECT_THAT(find(store, u"fit"), ElementsAre("fit.html"));
    EXPECT_EQ(source->problem, "a.image: damaged");
}

// A source that throws as often as it is told to when it is asked for the lookup files.
class FailingSource final : public MemorySource {
  public:
    docparser::ParsingResults getResourceLookupFiles() override {
        if (failures > 0) {
            --failures;
            if (isReplaced)
                throw docimage::ReplacedImage("a.image: replaced");
            throw docimage::DamagedImage("a.image: damaged");
        }
        return MemorySource::getResourceLookupFiles();
    }
    void passOverImages(const std::string& /*text*/) override { ++passedOver; }
    int failures = 0;
    bool isReplaced = false;
    int passedOver = 0;
};

TEST(ReferenceStoreTest, AnImageThatWasReplacedIsNoReasonToDoWithoutImages) {
    const auto source = std::make_shared<FailingSource>();
    source->add(ProductBuilder(u"p").entity(u"fit", RefEntityType::Function, u"fit.html").build());
    source->failures = 1;
    source->isReplaced = true;
    ReferenceStore store(source);
    EXPECT_THAT(find(store, u"fit"), ElementsAre("fit.html"));
    EXPECT_EQ(source->passedOver, 0);
}

TEST(ReferenceStoreTest, WhatIsDamagedTwiceIsAskedAThirdTimeAndNoMore) {
    const auto source = std::make_shared<FailingSource>();
    source->add(ProductBuilder(u"p").entity(u"fit", RefEntityType::Function, u"fit.html").build());
    source->failures = 2;
    ReferenceStore store(source);
    EXPECT_THAT(find(store, u"fit"), ElementsAre("fit.html"));
    EXPECT_EQ(source->passedOver, 2);
    source->failures = 3;
    ReferenceStore other(source);
    EXPECT_THROW(find(other, u"fit"), docimage::DamagedImage);
    EXPECT_EQ(source->failures, 0);
}

TEST(ReferenceStoreTest, ASnapshotReadsWhatItsClearedLookupsNameAndKeepsItToItself) {
    const auto source = sourceOf({u"fit"});
    ReferenceStore store(source);
    const Snapshot snapshot = store.snapshot();
    store.clearLookupCaches();
    source->onResourceFile(
        [](const std::u16string&) { throw docparser::DocParserException("broken"); });
    EXPECT_THROW(static_cast<void>(snapshot.pagesOf(0)), docparser::DocParserException);
    source->onResourceFile([](const std::u16string&) {});
    const JoinedPages* const pages = snapshot.pagesOf(0);
    ASSERT_NE(pages, nullptr);
    EXPECT_EQ(snapshot.pagesOf(0), pages);
    EXPECT_EQ(source->resourceCalls(), 2);
    EXPECT_THAT(*store.resourceCache(), IsEmpty());
}

TEST(ReferenceStoreTest, AFileThatNoLongerHoldsAProductOfClearedLookupsHasNoPagesOfIt) {
    const auto source = sourceOf({u"fit"});
    ReferenceStore store(source);
    const Snapshot snapshot = store.snapshot();
    store.clearLookupCaches();
    source->add(ProductBuilder(u"q").build());
    source->shareFile(u"p", u"elsewhere");
    source->shareFile(u"q", u"p.ref");
    EXPECT_EQ(snapshot.pagesOf(0), nullptr);
}

TEST(ProductPagesTest, PagesAndHrefsLeadToEachOtherAndWhatIsNotThereToNothing) {
    const auto source = std::make_shared<MemorySource>();
    source->add(ProductBuilder(u"p")
                    .record(u"a", RefEntityType::Function, u"a.html")
                    .entity(u"b", RefEntityType::Function, u"b.html")
                    .item(makeItem({.href = u"c.html"}))
                    .build());
    ReferenceStore store(source);
    const Snapshot snapshot = store.snapshot();
    const JoinedPages* const joined = snapshot.pagesOf(0);
    ASSERT_NE(joined, nullptr);
    EXPECT_EQ(joined->pageOfHref(0), JoinedPages::none);
    EXPECT_EQ(joined->pageOfHref(1), 0U);
    EXPECT_EQ(joined->hrefOfPage(0), 1U);
    EXPECT_EQ(joined->hrefOfPage(1), JoinedPages::none);
    for (const std::uint32_t beyond : {2U, 3U, 100U}) {
        EXPECT_EQ(joined->pageOfHref(beyond), JoinedPages::none) << beyond;
        EXPECT_EQ(joined->hrefOfPage(beyond), JoinedPages::none) << beyond;
    }
}

TEST(ProductPagesTest, AProductMayHaveNoPages) {
    const auto source = std::make_shared<MemorySource>();
    source->add(ProductBuilder(u"p").record(u"a", RefEntityType::Function, u"").build());
    ReferenceStore store(source);
    const Snapshot snapshot = store.snapshot();
    const JoinedPages* const joined = snapshot.pagesOf(0);
    ASSERT_NE(joined, nullptr);
    EXPECT_EQ(joined->pageOfHref(0), JoinedPages::none);
    EXPECT_EQ(joined->hrefOfPage(0), JoinedPages::none);
}

// Numbers of items come from images.
TEST(ProductPagesTest, AnItemThatIsNotThereIsDamage) {
    ReferenceStore store(sourceOf({u"fit"}));
    const Snapshot snapshot = store.snapshot();
    const ProductPages& pages = snapshot.pagesOf(0)->pages();
    ASSERT_EQ(pages.itemCount(), 1U);
    EXPECT_GT(pages.sizeOfItem(0), 0U);
    EXPECT_TRUE(pages.expansion(0).properties.empty());
    EXPECT_THROW(static_cast<void>(pages.sizeOfItem(1)), docimage::DamagedImage);
    EXPECT_THROW(static_cast<void>(pages.expansion(1)), docimage::DamagedImage);
}

TEST(ProductPagesTest, AnItemThatIsNotInItsImageIsDamage) {
    const TempFolder folder;
    docset::publishProduct(
        folder.path(), "en_US",
        ProductBuilder(u"p").entity(u"fit", RefEntityType::Function, u"fit.html").build());
    ReferenceStore store(std::make_shared<docparser::FileDocSource>(
        [&] { return docparser::DocumentationLocation{.docRoot = folder.path()}; }));
    const Snapshot snapshot = store.snapshot();
    const ProductPages& pages = snapshot.pagesOf(0)->pages();
    ASSERT_NE(pages.image(), nullptr);
    ASSERT_EQ(pages.itemCount(), 1U);
    EXPECT_EQ(pages.item(0).getHref(), u"fit.html");
    EXPECT_THROW(static_cast<void>(pages.item(1)), docimage::DamagedImage);
    EXPECT_THROW(static_cast<void>(pages.expansion(1)), docimage::DamagedImage);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
