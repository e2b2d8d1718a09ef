// A search for text that repeats takes time that grows as the texts do.
#include <cstddef>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "reference/api/AllTextDataRetriever.hpp"
#include "reference/api/EntityPurposeDataRetriever.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "support/Growth.hpp"
#include "support/Items.hpp"
#include "support/LibraryTest.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using property::RefEntityType;

class TextGrowthTest : public LibraryTest {
  protected:
    // Whether `Retriever` finds "aaa…b" in texts "aaaa…" in such a time; finding none is right.
    template <typename Retriever>
    testing::AssertionResult searchesInLinearTime(const std::u16string& unit) {
        return growsLinearly(
            [&](std::size_t size) {
                std::u16string text;
                for (std::size_t each = 0; each < size; ++each)
                    text += unit;
                cache_manager::ReferenceCacheManager::ClearAllCaches();
                add(ProductBuilder(u"p")
                        .record(u"f", RefEntityType::Function, u"f.html", text)
                        .item(makeItem({.href = u"f.html", .purpose = text})));
                api::ReferenceRequest request(text.substr(0, text.size() / 2) + u"b");
                request.setEntityCaseSensitivity(api::EntityCaseSensitivity::Insensitive);
                EXPECT_EQ(Retriever(request).getReferenceData().size(), 0U);
            },
            {.smallest = 2000, .largest = 500'000});
    }
};

TEST_F(TextGrowthTest, InNamesAndPurposesItIsLinear) {
    EXPECT_TRUE(searchesInLinearTime<api::EntityPurposeDataRetriever>(u"a"));
    EXPECT_TRUE(searchesInLinearTime<api::EntityPurposeDataRetriever>(u"\u00E9-"));
}

TEST_F(TextGrowthTest, InAllTextsItIsLinear) {
    EXPECT_TRUE(searchesInLinearTime<api::AllTextDataRetriever>(u"a"));
    EXPECT_TRUE(searchesInLinearTime<api::AllTextDataRetriever>(u"\u00E9-"));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
