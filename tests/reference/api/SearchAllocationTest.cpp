// How often a search allocates, once what it needs is in memory.
#include <string>

#include <gtest/gtest.h>

#include "reference/api/ClassEntityDataRetriever.hpp"
#include "reference/api/ReferenceDataRetriever.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "support/Items.hpp"
#include "support/LibraryTest.hpp"
#include "support/LiveAllocations.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using api::ReferenceRequest;
using cache_manager::ReferenceCacheManager;
using property::RefEntityType;

class SearchAllocationTest : public LibraryTest {
  protected:
    SearchAllocationTest() {
        ProductBuilder product(u"a product with a long name");
        product.record(u"package.of.a.function", RefEntityType::Function,
                       u"reference/package.of.a.function.html");
        product.item(makeFullItem(u"reference/package.of.a.function.html"));
        product.classWith(u"package.of.a.Class", u"package.of.a", u"reference/Class.html",
                          {{u"Size", {u"Width", u"Height", u"Depth"}}});
        add(product);
    }

    template <typename Search>
    static long allocationsOf(Search search) {
        static_cast<void>(search());
        const long before = LiveAllocations::made();
        static_cast<void>(search());
        return LiveAllocations::made() - before;
    }
};

TEST_F(SearchAllocationTest, AnExactQueryForOneRecordAllocatesWhatItHandsOut) {
    const ReferenceRequest request(u"package.of.a.function");
    const api::ReferenceDataRetriever retriever(request);
    ASSERT_EQ(retriever.getReferenceData().size(), 1U);
    EXPECT_LE(allocationsOf([&] { return retriever.getReferenceData(); }), 2);
    // With the retriever, and the text of its copy of the request.
    EXPECT_LE(
        allocationsOf([&] { return api::ReferenceDataRetriever(request).getReferenceData(); }), 4);
    // Two nodes and three texts.
    EXPECT_LE(allocationsOf([&] {
                  return ReferenceCacheManager::GetProductsWithEntity(
                      request, ReferenceCacheManager::ReferenceSearch);
              }),
              5);
}

TEST_F(SearchAllocationTest, AResultAllocatesNothingOfItsOwn) {
    const api::ClassEntityDataRetriever retriever(ReferenceRequest(u"package.of.a.Class"));
    ASSERT_EQ(retriever.getReferenceData().size(), 4U);
    // Three of these are the growth of the list of results.
    EXPECT_LE(allocationsOf([&] { return retriever.getReferenceData(); }), 8);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
