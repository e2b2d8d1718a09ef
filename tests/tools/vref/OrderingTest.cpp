#include <algorithm>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "reference/api/comparator/preferredOrder.hpp"
#include "support/Generator.hpp"
#include "support/OrderingLaws.hpp"
#include "vref/ExitStatus.hpp"
#include "vref/Ordering.hpp"

namespace reference::tools {
namespace VELTRA_TEST_FILE {

using api::EntityCaseSensitivity;

TEST(OrderingTest, KnowsEveryKeyAndRefusesOthers) {
    for (const char* text :
         {"index", "preferred", "deprecated", "depth", "type", "function-type", "name=a.b",
          "entity=class:A", "entity=1:A", "type=method", "type=40", "page=plot", "product=veltra",
          "depth,type,name=x", "entity=class:ns::A"})
        EXPECT_NO_THROW(
            static_cast<void>(Ordering::parse({text}, EntityCaseSensitivity::Sensitive)))
            << text;
    for (const char* text : {"", "bogus", "depth,", "depth=1", "type=bogus", "entity=A",
                             "entity=bogus:A", "name", "DEPTH"})
        EXPECT_THROW(static_cast<void>(Ordering::parse({text}, EntityCaseSensitivity::Sensitive)),
                     UnusableError)
            << text;
}

TEST(OrderingTest, IsAStrictWeakOrderingAndExplainsEveryDecision) {
    for (std::uint32_t seed = 1; seed <= 20; ++seed) {
        tests::Generator generator(seed);
        auto results = generator.results(20);
        const auto ordering =
            Ordering::forPerson(generator.name(), EntityCaseSensitivity::Insensitive);
        const auto comparator = ordering.comparator();
        ASSERT_EQ(tests::brokenOrderingLaw(comparator, results), "") << "seed " << seed;
        std::stable_sort(results.begin(), results.end(), comparator);
        for (std::size_t at = 0; at + 1 < results.size(); ++at) {
            const bool decided = comparator(results[at], results[at + 1]);
            const std::string text = ordering.explain(results[at], results[at + 1]);
            EXPECT_EQ(text.starts_with("before the next by "), decided) << text;
            EXPECT_EQ(text.starts_with("tied with the next"), !decided) << text;
        }
    }
}

TEST(OrderingTest, NamesTheKeysOfThePreferredOrderAsTheLibraryHasThem) {
    const auto results = tests::Generator(1).results(60);
    const auto preferred = Ordering::parse({"preferred"}, EntityCaseSensitivity::Sensitive);
    std::set<std::string> named;
    for (const auto& key : api::comparator::preferredOrder) {
        const std::string name(key.name);
        const auto ordering = Ordering::parse({name}, EntityCaseSensitivity::Sensitive);
        const auto comparator = ordering.comparator();
        for (const auto& a : results)
            for (const auto& b : results) {
                ASSERT_EQ(key.goesBefore(a, b), comparator(a, b)) << name;
                const std::string start = "before the next by preferred, by " + name + ": ";
                if (preferred.explain(a, b).starts_with(start)) {
                    named.insert(name);
                    ASSERT_TRUE(key.goesBefore(a, b)) << name;
                }
            }
    }
    EXPECT_EQ(named.size(), std::size(api::comparator::preferredOrder));
}

TEST(OrderingTest, ExplainsAChainWhoseKeysDoNotTellAllThatItDecides) {
    const auto always = [](const api::ReferenceData&, const api::ReferenceData&) { return true; };
    const auto never = [](const api::ReferenceData&, const api::ReferenceData&) { return false; };
    const auto results = tests::Generator(1).results(2);
    const auto explain = [&](const api::RefRequestComparator& inChain) {
        return Ordering({{"chain", always, {}, {{"part", inChain, {}}}}})
            .explain(results[0], results[1]);
    };
    EXPECT_EQ(explain(never), "before the next by chain");
    EXPECT_EQ(explain(always), "before the next by part");
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tools
