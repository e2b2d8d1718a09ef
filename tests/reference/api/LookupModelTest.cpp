// The retrievers against the plain model of the lookup, over documentation and requests at random.

#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "fl/i18n/utf.hpp"
#include "reference/api/ReferenceRequest.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "support/Comparators.hpp"
#include "support/Generator.hpp"
#include "support/LibraryTest.hpp"
#include "support/LookupModel.hpp"
#include "support/Print.hpp"
#include "support/retrieveBy.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using api::ReferenceData;
using api::ReferenceRequest;
using cache_manager::ReferenceCacheManager;

constexpr std::uint32_t documentations = 400;
constexpr int requestsEach = 25;

// The model's answer in the order of the model's ranks; ties stay as they were found.
std::vector<ReferenceData> orderedBy(
    const ComparatorPair& comparator,
    const std::vector<std::pair<std::u16string, property::RefItem>>& answer) {
    std::vector<std::pair<std::vector<std::int64_t>, ReferenceData>> ranked;
    for (const auto& [product, item] : answer) {
        // A generated product is its own help folder.
        ReferenceData result(property::HeaderInfo({}, product, product, {}, {}), item.copy());
        auto rank = modelRank(comparator, result);
        ranked.emplace_back(std::move(rank), std::move(result));
    }
    std::ranges::stable_sort(ranked, {}, [](const auto& one) { return one.first; });
    std::vector<ReferenceData> results;
    for (auto& one : ranked)
        results.push_back(std::move(one.second));
    return results;
}

std::string told(std::uint32_t seed, Search search, const ReferenceRequest& request) {
    std::string text = "seed " + std::to_string(seed) + ", search " +
                       std::to_string(static_cast<int>(search)) + ", text \"" +
                       fl::i18n::toUtf8(request.getEntityText()) + "\"" +
                       (request.isAllTextMatch() ? ", all" : "") +
                       (request.isCaseSensitive() ? "" : ", ignoring case") +
                       (request.isExactMatch() ? "" : ", ignoring packages") + ", types";
    for (const auto type : request.getTypes())
        text += " " + std::to_string(static_cast<std::uint32_t>(type));
    return text;
}

class LookupModelTest : public LibraryTest {};

TEST_F(LookupModelTest, RetrieversAgreeWithTheModelOnDocumentationAtRandom) {
    std::size_t found = 0;
    for (std::uint32_t seed = 1; seed <= documentations; ++seed) {
        Generator generator(seed);
        std::vector<docset::ProductDocumentation> products;
        for (const auto& name : productNames) {
            products.push_back(generator.product(name));
            source().add(products.back());
        }
        ReferenceCacheManager::ClearAllCaches();
        for (int round = 0; round < requestsEach; ++round) {
            const ReferenceRequest request = generator.request();
            for (const auto search :
                 {Search::Entity, Search::Class, Search::Purpose, Search::AllText, Search::Page}) {
                const auto expected = modelAnswer(search, request, products);
                const auto actual = retrieveBy(search, request);
                found += actual.size();
                ASSERT_EQ(actual.size(), expected.size()) << told(seed, search, request);
                for (std::size_t at = 0; at < actual.size(); ++at) {
                    ASSERT_EQ(actual[at].getHeaderInfo().getShortName(), expected[at].first)
                        << told(seed, search, request);
                    ASSERT_TRUE(actual[at].getRefItem() == expected[at].second)
                        << told(seed, search, request) << ": " << dump(actual[at]);
                }
            }
        }
    }
    // Agreeing on nothing would prove nothing.
    EXPECT_GT(found, std::size_t{documentations} * requestsEach);
}

TEST_F(LookupModelTest, RetrieversOrderAsTheModelDoesByAnyComparator) {
    std::map<std::string, int> reordered;
    for (std::uint32_t seed = 1; seed <= documentations / 4; ++seed) {
        Generator generator(seed);
        std::vector<docset::ProductDocumentation> products;
        for (const auto& name : productNames) {
            products.push_back(generator.product(name));
            source().add(products.back());
        }
        ReferenceCacheManager::ClearAllCaches();
        for (const auto& comparator : comparatorsAtRandom(generator)) {
            ReferenceRequest request = generator.request();
            request.setEntityText(generator.pick<std::u16string>({u"", u"a", u"A", u"fit"}));
            if (generator.chance(50))
                request.setComparatorProperty(comparator.object.get());
            else
                request.setRefRequestComparator(comparator.native);
            for (const auto search :
                 {Search::Entity, Search::Class, Search::Purpose, Search::AllText, Search::Page}) {
                const auto found = modelAnswer(search, request, products);
                const auto expected = orderedBy(comparator, found);
                const auto actual = retrieveBy(search, request);
                const auto what = comparator.className + ", " + told(seed, search, request);
                ASSERT_EQ(actual.size(), expected.size()) << what;
                for (std::size_t at = 0; at < actual.size(); ++at) {
                    ASSERT_EQ(actual[at].getHeaderInfo().getShortName(),
                              expected[at].getHeaderInfo().getShortName())
                        << what;
                    ASSERT_TRUE(actual[at].getRefItem() == expected[at].getRefItem())
                        << what << ": " << dump(actual[at]);
                    reordered[comparator.className] +=
                        expected[at].getRefItem() != found[at].second ? 1 : 0;
                }
            }
        }
    }
    for (const auto& name : comparatorClassNames())
        EXPECT_TRUE(reordered[name] > 0 || name == "IndexOrderComparator") << name;
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
