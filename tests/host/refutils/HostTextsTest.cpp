#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "property/hostNames.hpp"
#include "refutils/hostTexts.hpp"
#include "support/HostValues.hpp"

namespace reference::utils {
namespace VELTRA_TEST_FILE {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using tests::members;
using tests::outcomeOf;

TEST(SetStringPropertyTest, AssignsAndIgnoresNull) {
    std::u16string text = u"before";
    setStringProperty(text, nullptr);
    EXPECT_EQ(text, u"before");
    const std::u16string after = u"after";
    setStringProperty(text, &after);
    EXPECT_EQ(text, u"after");
    setStringProperty(text, &text);
    EXPECT_EQ(text, u"after");
}

TEST(SetStringVectorAndCacheTest, TakesAnArrayOfTextsOfAnyShape) {
    std::vector<std::u16string> texts = {u"before"};
    vqArrayPtr cache;
    const auto column = tests::asColumn(matrix::createStringRow({u"a", u"b"}));
    setStringVectorAndCache(column.get(), cache, texts);
    EXPECT_THAT(texts, ElementsAre(u"a", u"b"));
    ASSERT_TRUE(cache);
    EXPECT_EQ(*cache, *column);

    setStringVectorAndCache(matrix::createStringRow({}).get(), cache, texts);
    EXPECT_THAT(texts, IsEmpty());
    EXPECT_EQ(cache->getNumberOfElements(), 0U);
}

TEST(SetStringVectorAndCacheTest, IgnoresNull) {
    std::vector<std::u16string> texts = {u"before"};
    vqArrayPtr cache = matrix::createStringRow({u"cached"});
    const vqArrayPtr before = cache;
    setStringVectorAndCache(nullptr, cache, texts);
    EXPECT_THAT(texts, ElementsAre(u"before"));
    EXPECT_EQ(cache, before);
}

TEST(SetStringVectorAndCacheTest, RefusesAnythingButTextsAndChangesNothing) {
    std::vector<std::u16string> texts = {u"before"};
    vqArrayPtr cache = matrix::createStringRow({u"cached"});
    const vqArrayPtr before = cache;
    const std::vector<vqArrayPtr> wrong = {
        matrix::createNumber(1),         matrix::createDouble(1),
        matrix::createNumberRow({}),     matrix::createCellRow({matrix::createString(u"a")}),
        matrix::createObjectRow({}),     members<property::RefEntityType>({1}),
        zorb::wrap(property::SeeAlso()),
    };
    for (const auto& value : wrong) {
        EXPECT_EQ(outcomeOf([&] { setStringVectorAndCache(value.get(), cache, texts); }),
                  "VELTRA:class:RequireStringArray")
            << omGetCOSClassID(value.get()).str();
        EXPECT_THAT(texts, ElementsAre(u"before"));
        EXPECT_EQ(cache, before);
    }
}

TEST(AccessStringVectorCacheTest, FillsAnEmptyCacheOnceAndThenLeavesItAlone) {
    std::vector<std::u16string> texts = {u"a"};
    vqArrayPtr cache;
    const vqArray* first = accessStringVectorCache(cache, texts);
    EXPECT_EQ(*first, *matrix::createStringRow({u"a"}));
    EXPECT_EQ(cache.get(), first);
    texts.emplace_back(u"b");
    EXPECT_EQ(accessStringVectorCache(cache, texts), first);
    EXPECT_EQ(*first, *matrix::createStringRow({u"a"}));
}

TEST(CopyVqArrayToSharedVqArrayPtrTest, EqualsTheGivenOneAndSharesItsElements) {
    EXPECT_FALSE(copyVqArrayToSharedVqArrayPtr(nullptr));
    const auto texts = matrix::createStringRow({u"a", u"b"});
    const auto copy = copyVqArrayToSharedVqArrayPtr(texts.get());
    EXPECT_NE(copy, texts);
    EXPECT_EQ(*copy, *texts);
    EXPECT_EQ(copy->getIf<vqArray::Strings>(), texts->getIf<vqArray::Strings>());
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::utils
