// The store as an ordinary object: each has its own source, caches and locks.
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "docimage/unitBytes.hpp"
#include "docparser/DocParserException.hpp"
#include "reference/search/EntitySearch.hpp"
#include "reference/search/ReferenceStore.hpp"
#include "support/LibraryTest.hpp"
#include "support/MemorySource.hpp"

namespace reference::tests {
namespace {

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

}  // namespace
}  // namespace reference::tests
