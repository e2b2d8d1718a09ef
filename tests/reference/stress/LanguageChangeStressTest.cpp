// What the index finds is what a walk over all keys finds, in the one language or in the other,
// while the language is changed.
#include <algorithm>
#include <atomic>
#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "docparser/DocResourceParser.hpp"
#include "docparser/FileDocSource.hpp"
#include "docset/publish.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "reference/ask/ask.hpp"
#include "reference/ask/complete.hpp"
#include "support/Generator.hpp"
#include "support/LibraryTest.hpp"
#include "support/LookupWalk.hpp"
#include "support/TempFolder.hpp"
#include "support/Threads.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using cache_manager::ProductMatchData;
using cache_manager::ReferenceCacheManager;

using Matches = std::map<std::u16string, ProductMatchData>;

const std::vector<std::string> languages = {"en_US", "ja_JP"};
constexpr std::size_t questionCount = 300;

class LanguageChangeConcurrencyTest : public LibraryTest {
  protected:
    struct Question {
        api::ReferenceRequest request;
        ReferenceCacheManager::SearchMethod method;
        // By language.
        std::vector<Matches> answers;
    };

    LanguageChangeConcurrencyTest() {
        for (const auto& language : languages)
            for (const auto& name : productNames)
                docset::publishProduct(m_root.path(), language,
                                       m_generator.publishableProduct(name));
        for (std::size_t number = 0; number < questionCount; ++number)
            m_questions.push_back(
                {.request = m_generator.request(),
                 .method = m_generator.pick({ReferenceCacheManager::ReferenceSearch,
                                             ReferenceCacheManager::ClassEntitySearch,
                                             ReferenceCacheManager::NameAndPurposeSearch,
                                             ReferenceCacheManager::AllTextSearch,
                                             ReferenceCacheManager::PageNameSearch}),
                 .answers = {}});
        for (const auto& language : languages) {
            docparser::FileDocSource source([this, language] { return locationIn(language); });
            const auto lookups = source.getResourceLookupFiles().installed;
            for (Question& question : m_questions)
                question.answers.push_back(
                    walkProductsWithEntity(question.request, question.method, lookups));
        }
        docparser::DocResourceParser::setSource(std::make_shared<docparser::FileDocSource>(
            [this] { return locationIn(languages[m_language]); }));
        ReferenceCacheManager::ClearAllCaches();
    }

    [[nodiscard]] docparser::DocumentationLocation locationIn(const std::string& language) const {
        return {.docRoot = m_root.path(), .supportPackageRoots = {}, .language = language};
    }

    void changeLanguage() {
        m_language = 1 - m_language;
        ReferenceCacheManager::ClearAllCaches();
    }

    // Every question once.
    void askAll() {
        for (const Question& question : m_questions) {
            const Matches found =
                ReferenceCacheManager::GetProductsWithEntity(question.request, question.method);
            if (found != question.answers[0] && found != question.answers[1])
                ++m_wrong;
        }
    }

    [[nodiscard]] const std::vector<Question>& questions() const { return m_questions; }
    [[nodiscard]] int wrongAnswers() const { return m_wrong; }

  private:
    TempFolder m_root;
    Generator m_generator{11};
    std::vector<Question> m_questions;
    std::atomic<std::size_t> m_language{0};
    std::atomic<int> m_wrong{0};
};

TEST_F(LanguageChangeConcurrencyTest, TheLanguagesDiffer) {
    const auto isDifferent = [](const Question& question) {
        return question.answers[0] != question.answers[1];
    };
    EXPECT_GT(std::ranges::count_if(questions(), isDifferent), 100);
}

using Names = std::vector<std::u16string>;

// The names that a text finds as a question.
Names found(const std::u16string& text) {
    Names names;
    for (const auto& hit : ask::ask(text, {.limit = 20}).hits)
        names.push_back(hit.name);
    return names;
}

// Those that it is completed to.
Names completed(const std::u16string& text) {
    Names names;
    for (const auto& completion : ask::complete(text))
        names.push_back(completion.text);
    return names;
}

TEST_F(LanguageChangeConcurrencyTest, EveryLooseQuestionIsAnsweredInOneOfThem) {
    // Words for each rung: names, parts of them, slips, words of purposes and texts.
    const std::vector<std::u16string> texts = {u"a",    u"ab",         u"Ab.aB",    u"a b", u"abab",
                                               u"x.ab", u"ba in:text", u"how to b", u"a.",  u"b"};
    std::map<std::u16string, std::vector<std::pair<Names, Names>>> expected;
    for (std::size_t language = 0; language < languages.size(); ++language) {
        for (const auto& text : texts)
            expected[text].emplace_back(found(text), completed(text));
        changeLanguage();
    }
    EXPECT_TRUE(std::ranges::any_of(
        expected, [](const auto& text) { return text.second[0] != text.second[1]; }));
    std::atomic<int> asking{2};
    std::atomic<int> wrong{0};
    const auto ask = [&] {
        for (int round = 0; round < 50; ++round)
            for (const auto& [text, answers] : expected) {
                const Names hits = found(text);
                const Names completions = completed(text);
                if (hits != answers[0].first && hits != answers[1].first)
                    ++wrong;
                if (completions != answers[0].second && completions != answers[1].second)
                    ++wrong;
            }
        --asking;
    };
    const auto change = [&] {
        while (asking > 0)
            changeLanguage();
    };
    runTogether({ask, ask, change});
    EXPECT_EQ(wrong, 0);
}

TEST_F(LanguageChangeConcurrencyTest, EveryAnswerIsTheWalksInOneOfThem) {
    std::atomic<bool> isAsking{true};
    constexpr int rounds = 20;
    std::atomic<int> asking{3};
    const auto ask = [&] {
        for (int round = 0; round < rounds; ++round)
            askAll();
        if (--asking == 0)
            isAsking = false;
    };
    const auto change = [&] {
        while (isAsking)
            changeLanguage();
    };
    runTogether({ask, ask, ask, change});
    EXPECT_EQ(wrongAnswers(), 0);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
