// What the thesaurus leads to, and that each of its lines can be understood.
#include <algorithm>
#include <cstdint>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>

#include "docimage/Stemmer.hpp"
#include "reference/ask/thesaurus.hpp"
#include "reference/ask/thesaurusTexts.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using ask::meaningsOf;
using ::testing::Contains;
using ::testing::IsEmpty;
using ::testing::Not;

// Of the words at these positions together, each word once.
std::set<std::string> saidFor(const std::vector<std::string>& words, std::uint64_t meant) {
    docimage::Stemmer stemmer;
    std::vector<std::string> stems;
    for (const auto& word : words)
        stems.emplace_back(stemmer.stem(word));
    std::set<std::string> said;
    for (const auto& meaning : meaningsOf(stems, stemmer)) {
        if (meaning.stems != meant)
            continue;
        std::istringstream stream{std::string(meaning.said)};
        for (std::string word; stream >> word;)
            said.insert(word);
    }
    return said;
}

TEST(ThesaurusTest, AWordLeadsToWhatIsSaidInItsPlace) {
    EXPECT_THAT(saidFor({"tally"}, 1), Contains("count"));
    EXPECT_THAT(saidFor({"tallying"}, 1), Contains("count"));
    EXPECT_THAT(saidFor({"count"}, 1), Not(Contains("scramble")));
    EXPECT_THAT(saidFor({"qwertz"}, 1), IsEmpty());
    EXPECT_THAT(saidFor({""}, 1), IsEmpty());
}

TEST(ThesaurusTest, OneDirectionIsNotTheOther) {
    EXPECT_THAT(saidFor({"scramble"}, 1), Contains("shuffle"));
    EXPECT_THAT(saidFor({"shuffle"}, 1), Not(Contains("scramble")));
}

TEST(ThesaurusTest, ExchangedWordsLeadToEachOther) {
    EXPECT_THAT(saidFor({"unpivot"}, 1), Contains("melt"));
    EXPECT_THAT(saidFor({"melt"}, 1), Contains("unpivot"));
}

TEST(ThesaurusTest, APhraseNeedsAllOfItsWordsInAnyOrder) {
    EXPECT_THAT(saidFor({"standard", "deviation"}, 0b11), Contains("std"));
    EXPECT_THAT(saidFor({"deviations", "of", "standards"}, 0b101), Contains("std"));
    EXPECT_THAT(saidFor({"standard"}, 1), Not(Contains("std")));
    EXPECT_THAT(saidFor({"greatest", "common", "divisor"}, 0b111), Contains("gcd"));
    EXPECT_THAT(saidFor({"greatest", "common", "number"}, 0b111), IsEmpty());
}

// Stems of words with a "y" at their end differ from them in their third letter.
TEST(ThesaurusTest, ShortWordsAreFound) {
    docimage::Stemmer stemmer;
    ASSERT_EQ(stemmer.stem("try"), "tri");
    EXPECT_THAT(saidFor({"try"}, 1), Contains("tune"));
    EXPECT_THAT(saidFor({"ip"}, 1), Not(IsEmpty()));
}

TEST(ThesaurusTest, LinesAreWords) {
    std::set<std::string> asked;
    std::size_t lines = 0;
    for (const std::string_view text : ask::thesaurusTexts()) {
        std::istringstream stream{std::string(text)};
        for (std::string line; std::getline(stream, line);) {
            if (line.empty())
                continue;
            ++lines;
            EXPECT_EQ(line.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789_: "),
                      std::string::npos)
                << line;
            EXPECT_LE(std::ranges::count(line, ':'), 1) << line;
            const std::size_t colon = line.find(':');
            std::istringstream words(line.substr(colon == std::string::npos ? 0 : colon + 1));
            std::set<std::string> said;
            for (std::string word; words >> word;)
                EXPECT_TRUE(said.insert(word).second) << line;
            EXPECT_GE(said.size(), colon == std::string::npos ? 2 : 1) << line;
            if (colon != std::string::npos) {
                EXPECT_TRUE(asked.insert(line.substr(0, colon)).second) << line;
            }
        }
    }
    EXPECT_GT(lines, 1000);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
