// A lexicon that was joined of many answers as they do one by one.
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "docimage/Image.hpp"
#include "docimage/Lexicon.hpp"
#include "reference/search/JoinedLexicon.hpp"
#include "support/Generator.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using docimage::Lexicon;
using search::JoinedLexicon;
using search::ReferenceRequestExt;
using search::TextQuery;

struct Lexicons {
    std::vector<std::shared_ptr<const docimage::Image>> images;
    std::vector<Lexicon> lexicons;
};

Lexicons lexiconsAtRandom(Generator& generator, std::size_t count) {
    Lexicons made;
    for (std::size_t number = 0; number < count; ++number) {
        docimage::LexiconBuilder builder;
        for (std::uint32_t text = 0; text < generator.below(8); ++text)
            builder.addText(generator.text(), text);
        docimage::ImageWriter writer;
        builder.writeTo(writer, 0);
        made.images.push_back(writer.finish());
        made.lexicons.emplace_back(*made.images.back(), 0);
    }
    return made;
}

std::string told(const std::vector<JoinedLexicon::Found>& found) {
    std::string text;
    for (const auto& [lexicon, parts] : found) {
        text += std::to_string(lexicon) + ":";
        for (const auto& part : parts) {
            for (const auto word : part.words)
                text += " " + std::to_string(word);
            text += " of " + std::to_string(part.weight) + ";";
        }
    }
    return text;
}

TEST(JoinedLexiconTest, AnswersAsItsLexiconsDoHoweverOftenItIsAsked) {
    Generator generator(1);
    std::size_t answers = 0;
    for (int round = 0; round < 100; ++round) {
        const auto made = lexiconsAtRandom(generator, 1 + generator.below(6));
        const auto lexiconOf = [&](std::uint32_t number) -> const Lexicon& {
            return made.lexicons[number];
        };
        const JoinedLexicon joined;
        // Far more often than it takes to have one lexicon made.
        for (int question = 0; question < 60; ++question) {
            const std::u16string text = generator.chance(50) ? generator.name() : generator.text();
            const ReferenceRequestExt ext(
                ReferenceRequestExt::Request{.text = text,
                                             .types = {},
                                             .products = {},
                                             .isCaseSensitive = generator.chance(50)});
            const TextQuery query(ext);
            if (!query.hasParts())
                continue;
            std::vector<JoinedLexicon::Found> expected;
            for (std::uint32_t number = 0; number < made.lexicons.size(); ++number)
                if (auto words = query.wordsOf(made.lexicons[number]); !words.empty())
                    expected.push_back({.lexicon = number, .words = std::move(words)});
            answers += expected.size();
            ASSERT_EQ(told(joined.wordsOf(query, made.lexicons.size(), lexiconOf)), told(expected))
                << "round " << round << ", question " << question;
        }
    }
    EXPECT_GT(answers, 1000U);
}

// The same before and after the lexicon of all words is made.
TEST(JoinedLexiconTest, TellsWhichLexiconsHaveWordsForAllPartsAndHowManyTextsHaveThem) {
    Lexicons made;
    for (const std::vector<std::u16string>& texts :
         std::vector<std::vector<std::u16string>>{{u"sort rows", u"sort", u"resort it"},
                                                  {u"rows and columns"},
                                                  {},
                                                  {u"columns", u"sorted by rows", u"assort"}}) {
        docimage::LexiconBuilder builder;
        for (std::uint32_t text = 0; text < texts.size(); ++text)
            builder.addText(texts[text], text);
        docimage::ImageWriter writer;
        builder.writeTo(writer, 0);
        made.images.push_back(writer.finish());
        made.lexicons.emplace_back(*made.images.back(), 0);
    }
    const auto lexiconOf = [&](std::uint32_t number) -> const Lexicon& {
        return made.lexicons[number];
    };
    // "lexicon: words of the first part (texts), words of the second (texts)".
    const auto answer = [&](const JoinedLexicon& joined, const std::u16string& text) {
        const ReferenceRequestExt ext(ReferenceRequestExt::Request{
            .text = text, .types = {}, .products = {}, .isCaseSensitive = false});
        std::string told;
        for (const auto& [number, parts] :
             joined.wordsOf(TextQuery(ext), made.lexicons.size(), lexiconOf)) {
            told += (told.empty() ? "" : "; ") + std::to_string(number) + ":";
            for (const auto& part : parts) {
                for (const auto word : part.words)
                    told += " " + std::string(lexiconOf(number).word(word));
                told += " (" + std::to_string(part.weight) + ")";
            }
        }
        return told;
    };
    const struct {
        const char16_t* text;
        const char* expected;
    } cases[] = {{u"sort", "0: resort sort (3); 3: assort sorted (2)"},
                 {u"rows", "0: rows (1); 1: rows (1); 3: rows (1)"},
                 // What ends like the one word and begins like the other.
                 {u"sort rows", "0: resort sort (3) rows (1); 3: assort (1) rows (1)"},
                 {u"d columns", "1: and (1) columns (1); 3: sorted (1) columns (1)"},
                 {u"columns sort", "3: columns (1) sorted (1)"},
                 // The last word of one lexicon and the first of the next that has any.
                 {u"a", "1: and (1); 3: assort (1)"},
                 {u"nothing", ""},
                 {u"rows nothing", ""}};
    const JoinedLexicon joined;
    for (int round = 0; round < 20; ++round)
        for (const auto& c : cases)
            ASSERT_EQ(answer(joined, c.text), c.expected) << "round " << round;
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
