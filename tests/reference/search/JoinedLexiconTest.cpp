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
namespace {

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

}  // namespace
}  // namespace reference::tests
