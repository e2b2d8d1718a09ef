// What the index proposes and the request confirms is what a walk over all keys finds.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "fl/i18n/utf.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "support/Generator.hpp"
#include "support/LibraryTest.hpp"
#include "support/LookupModel.hpp"
#include "support/LookupWalk.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using api::EntityCaseSensitivity;
using api::EntityPrecision;
using api::ReferenceRequest;
using cache_manager::ReferenceCacheManager;
using property::RefEntityType;
using Method = ReferenceCacheManager::SearchMethod;

constexpr Method methods[] = {
    ReferenceCacheManager::ReferenceSearch, ReferenceCacheManager::ClassEntitySearch,
    ReferenceCacheManager::NameAndPurposeSearch, ReferenceCacheManager::AllTextSearch,
    ReferenceCacheManager::PageNameSearch};

std::string told(const ReferenceRequest& request, Method method) {
    return "method " + std::to_string(method) + ", text \"" +
           fl::i18n::toUtf8(request.getEntityText()) + "\"" +
           (request.isAllTextMatch() ? ", all" : "") +
           (request.isCaseSensitive() ? "" : ", ignoring case") +
           (request.isExactMatch() ? "" : ", ignoring packages");
}

class IndexAgreesWithWalkTest : public LibraryTest {};

TEST_F(IndexAgreesWithWalkTest, OverDocumentationAndRequestsAtRandom) {
    constexpr std::uint32_t documentations = 1000;
    constexpr int requestsEach = 40;
    std::size_t found = 0;
    for (std::uint32_t seed = 1; seed <= documentations; ++seed) {
        Generator generator(seed);
        for (const auto& name : productNames)
            source().add(generator.product(name));
        ReferenceCacheManager::ClearAllCaches();
        ReferenceCacheManager::PopulateLookupCache();
        const auto lookup = ReferenceCacheManager::GetLookupCache();
        for (int round = 0; round < requestsEach; ++round) {
            const ReferenceRequest request = generator.request();
            for (const auto method : methods) {
                const auto expected = walkProductsWithEntity(request, method, *lookup);
                found += expected.size();
                ASSERT_EQ(ReferenceCacheManager::GetProductsWithEntity(request, method), expected)
                    << "seed " << seed << ", " << told(request, method);
            }
        }
    }
    // Agreeing on nothing would prove nothing.
    EXPECT_GT(found, std::size_t{documentations} * requestsEach);
}

// All names of up to `longest` of these letters: two cases, both boundaries, a letter that has no
// single capital and one whose lower case is two letters.
std::vector<std::u16string> allNames(std::size_t longest) {
    const std::u16string letters = u"aB./\u00DF\u0130";
    std::vector<std::u16string> names = {u""};
    for (std::size_t from = 0, length = 1; length <= longest; ++length) {
        const std::size_t end = names.size();
        for (; from < end; ++from)
            for (const char16_t letter : letters)
                names.push_back(names[from] + letter);
    }
    return names;
}

// Every text that can be part of another.
std::vector<std::u16string> partsOf(const std::u16string& text) {
    std::vector<std::u16string> parts = {u""};
    for (std::size_t at = 0; at < text.size(); ++at)
        for (std::size_t length = 1; length <= text.size() - at; ++length)
            parts.push_back(text.substr(at, length));
    std::ranges::sort(parts);
    parts.erase(std::unique(parts.begin(), parts.end()), parts.end());
    return parts;
}

// How long names are at most: five letters take seconds, and half a minute with sanitizers, where
// the environment variable asks for four; six letters take minutes.
std::size_t longestName() {
    const char* const wanted = std::getenv("VELTRA_TEST_LONGEST_NAME");
    return wanted == nullptr ? 5 : std::stoul(wanted);
}

// Names of up to so many letters, asked for by every text of up to as many, with every option. A
// walk over all names for each text would take hours, so each name is walked alone, for all texts
// that it could possibly match: its parts.
TEST_F(IndexAgreesWithWalkTest, OverAllNamesOfAFewLettersAndEveryOption) {
    const auto names = allNames(longestName());
    ProductBuilder product(u"p");
    for (std::size_t number = 0; number < names.size(); ++number) {
        constexpr RefEntityType::Value types[] = {RefEntityType::Function, RefEntityType::Class,
                                                  RefEntityType::Topic};
        product.record(names[number], types[number % std::size(types)], names[number]);
    }
    const docset::ProductDocumentation built = product.build();
    source().add(built);

    for (const auto method :
         {ReferenceCacheManager::ReferenceSearch, ReferenceCacheManager::ClassEntitySearch,
          ReferenceCacheManager::NameAndPurposeSearch, ReferenceCacheManager::PageNameSearch})
        for (const auto sensitivity :
             {EntityCaseSensitivity::Sensitive, EntityCaseSensitivity::Insensitive})
            for (const auto precision :
                 {EntityPrecision::Exact_Match, EntityPrecision::Ignore_Package}) {
                // Where parts are looked for, precision plays no part.
                if (method == ReferenceCacheManager::NameAndPurposeSearch &&
                    precision == EntityPrecision::Ignore_Package)
                    continue;
                const auto requestFor = [&](const std::u16string& text) {
                    ReferenceRequest request(text);
                    request.setEntityCaseSensitivity(sensitivity);
                    request.setEntityPrecision(precision);
                    return request;
                };
                const auto fold = [&](const std::u16string& text) {
                    return sensitivity == EntityCaseSensitivity::Sensitive ? text
                                                                           : modelLowerCase(text);
                };
                // By folded text.
                std::unordered_map<std::u16string, std::vector<std::u16string>> expected;
                for (const auto& [name, records] : built.entities)
                    for (const auto& text : partsOf(fold(name)))
                        if (walkFinds(requestFor(text), method, name, records))
                            expected[text].push_back(name);
                for (const auto& text : names) {
                    const auto request = requestFor(text);
                    const auto answer =
                        ReferenceCacheManager::GetProductsWithEntity(request, method);
                    const auto found = expected.find(fold(text));
                    if (found == expected.end()) {
                        ASSERT_TRUE(answer.empty()) << told(request, method);
                        continue;
                    }
                    ASSERT_EQ(answer.size(), 1U) << told(request, method);
                    ASSERT_TRUE(std::ranges::equal(answer.begin()->second.hrefs, found->second))
                        << told(request, method);
                }
            }
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
