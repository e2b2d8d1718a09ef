// Finding words by their slips agrees with comparing each of them.
#include <algorithm>
#include <cstddef>
#include <random>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "docimage/Image.hpp"
#include "reference/ask/nearWords.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using ask::nearWords;
using ask::slipsBetween;

// The whole table, as a textbook has it.
std::size_t slipsByTable(const std::string& a, const std::string& b) {
    std::vector<std::vector<std::size_t>> slips(a.size() + 1,
                                                std::vector<std::size_t>(b.size() + 1));
    for (std::size_t i = 0; i <= a.size(); ++i)
        for (std::size_t j = 0; j <= b.size(); ++j) {
            if (i == 0 || j == 0) {
                slips[i][j] = i + j;
                continue;
            }
            slips[i][j] =
                std::min({slips[i - 1][j] + 1, slips[i][j - 1] + 1,
                          slips[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? std::size_t{0} : 1)});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                slips[i][j] = std::min(slips[i][j], slips[i - 2][j - 2] + 1);
        }
    return slips[a.size()][b.size()];
}

class Words {
  public:
    explicit Words(const std::set<std::string>& words) {
        docimage::LexiconBuilder builder;
        std::uint32_t number = 0;
        for (const auto& word : words)
            builder.addWord(word, number++);
        docimage::ImageWriter writer;
        builder.writeTo(writer, 0, docimage::FoundBy::Ends);
        m_image = writer.finish();
        m_lexicon = docimage::Lexicon(*m_image, 0);
    }

    [[nodiscard]] const docimage::Lexicon& lexicon() const { return m_lexicon; }

  private:
    std::shared_ptr<const docimage::Image> m_image;
    docimage::Lexicon m_lexicon;
};

TEST(NearWordsTest, AgreesWithComparingEachWord) {
    std::mt19937 random(7);
    const auto word = [&random] {
        std::string text;
        for (std::size_t length = 1 + random() % 11; length > 0; --length)
            text += static_cast<char>('a' + random() % 3);
        return text;
    };
    for (int round = 0; round < 40; ++round) {
        std::set<std::string> all;
        while (all.size() < 150)
            all.insert(word());
        const Words words(all);
        for (int question = 0; question < 20; ++question) {
            const std::string wanted = word();
            for (const std::uint32_t most : {1U, 2U}) {
                std::vector<std::pair<std::string, std::size_t>> expected;
                for (const auto& one : all)
                    if (const std::size_t slips = slipsByTable(wanted, one);
                        slips > 0 && slips <= most)
                        expected.emplace_back(one, slips);
                std::vector<std::pair<std::string, std::size_t>> found;
                for (const auto& near : nearWords(words.lexicon(), wanted, most))
                    found.emplace_back(words.lexicon().word(near.word), near.slips);
                EXPECT_EQ(found, expected) << wanted << " " << most;
            }
            const std::string other = word();
            const std::size_t slips = slipsByTable(wanted, other);
            EXPECT_EQ(slipsBetween(wanted, other, 2), std::min<std::size_t>(slips, 3))
                << wanted << " " << other;
        }
    }
}

TEST(NearWordsTest, EachKindOfSlipIsFound) {
    const Words words({"gaussian", "groupby", "sort"});
    for (const char* typed : {"guassian", "gausian", "gausssian", "gaussiam", "haussian"}) {
        const auto near = nearWords(words.lexicon(), typed, 1);
        ASSERT_EQ(near.size(), 1U) << typed;
        EXPECT_EQ(words.lexicon().word(near.front().word), "gaussian") << typed;
    }
    EXPECT_TRUE(nearWords(words.lexicon(), "sort", 2).empty());
    EXPECT_TRUE(nearWords(words.lexicon(), "", 2).empty());
    EXPECT_TRUE(nearWords(words.lexicon(), std::string(1000, 's'), 2).empty());
}

TEST(NearWordsTest, ShortWordsHaveNoSlips) {
    EXPECT_EQ(ask::admittedSlips(3), 0U);
    EXPECT_EQ(ask::admittedSlips(4), 1U);
    EXPECT_EQ(ask::admittedSlips(8), 2U);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
