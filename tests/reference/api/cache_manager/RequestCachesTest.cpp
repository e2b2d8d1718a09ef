// What requests make of the caches: which readings and parses they cause, and what they leave.
#include <memory>
#include <stdexcept>
#include <string>

#include <gmock/gmock.h>

#include "docparser/DocParserException.hpp"
#include "docparser/DocResourceParser.hpp"
#include "reference/api/ReferenceDataRetriever.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "support/LibraryTest.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using api::ReferenceRequest;
using cache_manager::ReferenceCacheManager;
using property::HeaderInfo;
using property::RefEntityType;
using testing::IsEmpty;
using testing::SizeIs;

// A source whose parsed resources do not bear the name of the file that the lookup resources name.
class RenamingSource : public MemorySource {
  public:
    docparser::ReferenceResources getResourceFile(const std::u16string& resourceFile) override {
        docparser::ReferenceResources renamed;
        for (auto& [name, resource] : MemorySource::getResourceFile(resourceFile)) {
            if (name == m_withheld)
                continue;
            const HeaderInfo& header = resource.getHeaderInfo();
            const HeaderInfo other(u"parsed from " + header.getReferenceFileName(),
                                   header.getHelpFolder(), header.getShortName(),
                                   header.getDisplayName(), header.getVersion());
            renamed.emplace(name, Resource(other, resource.takeItems()));
        }
        return renamed;
    }

    // From now on files do not hold this product.
    void withhold(std::u16string product) { m_withheld = std::move(product); }

  private:
    using Resource = docparser::DocResource<property::RefItem>;

    std::u16string m_withheld;
};

class RequestCachesTest : public LibraryTest {
  protected:
    RequestCachesTest() {
        m_source->add(
            ProductBuilder(u"alpha").entity(u"f", RefEntityType::Function, u"f.html").build());
        docparser::DocResourceParser::setSource(m_source);
    }

    static std::size_t search() {
        return api::ReferenceDataRetriever(ReferenceRequest(u"f")).getReferenceData().size();
    }

    const std::shared_ptr<RenamingSource> m_source = std::make_shared<RenamingSource>();
};

TEST_F(RequestCachesTest, ProductsAreParsedOnceWhateverNameTheirFilesHave) {
    for (int round = 0; round < 5; ++round)
        EXPECT_EQ(search(), 1U);
    EXPECT_EQ(m_source->resourceCalls(), 1);
}

TEST_F(RequestCachesTest, WhatCameAlongInAnotherProductsFileIsNotReadAgain) {
    m_source->add(ProductBuilder(u"beta").entity(u"f", RefEntityType::Function, u"f.html").build());
    m_source->shareFile(u"alpha", u"both.ref");
    m_source->shareFile(u"beta", u"both.ref");
    EXPECT_EQ(search(), 2U);
    EXPECT_EQ(m_source->resourceCalls(), 1);
}

TEST_F(RequestCachesTest, AProductThatWasReadByItsNameIsReadOnceMoreForOneReadingOfTheLookups) {
    static_cast<void>(ReferenceCacheManager::GetResourceCacheForProduct(u"alpha", u"alpha"));
    const auto handedOut = ReferenceCacheManager::GetResourceCache();
    const auto entry = handedOut->at(u"alpha");
    for (int reading = 1; reading <= 3; ++reading) {
        for (int round = 0; round < 5; ++round)
            EXPECT_EQ(search(), 1U);
        EXPECT_EQ(m_source->resourceCalls(), 1 + reading);
        ReferenceCacheManager::ClearLookupCaches();
    }
    EXPECT_EQ(handedOut->at(u"alpha"), entry) << "what was handed out is never replaced";
    EXPECT_EQ(ReferenceCacheManager::GetResourceCache(), handedOut);
}

TEST_F(RequestCachesTest, WhenTheSecondReadingFailsTheCachedProductAnswers) {
    static_cast<void>(ReferenceCacheManager::GetResourceCacheForProduct(u"alpha", u"alpha"));
    for (const bool isParserException : {true, false}) {
        ReferenceCacheManager::ClearLookupCaches();
        const int before = m_source->resourceCalls();
        m_source->onResourceFile([&](const std::u16string&) {
            if (isParserException)
                throw docparser::DocParserException("the disk is gone");
            throw std::runtime_error("the network is gone");
        });
        for (int round = 0; round < 5; ++round)
            EXPECT_EQ(search(), 1U);
        EXPECT_EQ(m_source->resourceCalls(), before + 1) << "a failure is not repeated";
    }
}

TEST_F(RequestCachesTest, WhenTheFileHasLostTheProductTheCachedOneAnswers) {
    static_cast<void>(ReferenceCacheManager::GetResourceCacheForProduct(u"alpha", u"alpha"));
    m_source->withhold(u"alpha");
    for (int round = 0; round < 5; ++round)
        EXPECT_EQ(search(), 1U);
    EXPECT_EQ(m_source->resourceCalls(), 2);
}

TEST_F(RequestCachesTest, AFailureToReadAProductThatIsNotCachedIsNotRemembered) {
    m_source->onResourceFile(
        [](const std::u16string&) { throw docparser::DocParserException("not now"); });
    EXPECT_EQ(search(), 0U);
    m_source->onResourceFile({});
    EXPECT_EQ(search(), 1U);
}

// The reading of lookup files is over when the parser has returned, whoever clears meanwhile.
TEST_F(RequestCachesTest, LookupFilesAreReadOnceForARequestHoweverOftenTheCachesAreCleared) {
    m_source->onLookupFiles([] { ReferenceCacheManager::ClearUninstalledLookupCache(); });
    EXPECT_EQ(search(), 1U);
    EXPECT_EQ(m_source->lookupCalls(), 1);
    EXPECT_THAT(*ReferenceCacheManager::GetLookupCache(), IsEmpty())
        << "what was read while the caches were cleared may be out of date";
    ReferenceCacheManager::PopulateLookupCache();
    EXPECT_EQ(m_source->lookupCalls(), 2);
}

TEST_F(RequestCachesTest, ARequestWhoseLookupsWereClearedLeavesNothingInTheCache) {
    m_source->onLookupFiles([] { ReferenceCacheManager::ClearUninstalledLookupCache(); });
    EXPECT_EQ(search(), 1U);
    EXPECT_THAT(*ReferenceCacheManager::GetResourceCache(), IsEmpty());
    m_source->onLookupFiles({});
    EXPECT_EQ(search(), 1U);
    EXPECT_THAT(*ReferenceCacheManager::GetResourceCache(), SizeIs(1));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
