// What holds for every question and every documentation.
#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "docparser/DocResourceParser.hpp"
#include "docparser/FileDocSource.hpp"
#include "docset/publish.hpp"
#include "fl/i18n/utf.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "reference/ask/Question.hpp"
#include "reference/ask/QuestionError.hpp"
#include "reference/ask/ask.hpp"
#include "support/Generator.hpp"
#include "support/LibraryTest.hpp"
#include "support/TempFolder.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using ask::AskOptions;
using cache_manager::ReferenceCacheManager;
using docparser::DocResourceParser;
using docparser::FileDocSource;

constexpr AskOptions everything{.limit = 1'000'000};

// "product:name [rung] change" of each hit.
std::vector<std::string> hitsFor(const std::u16string& question,
                                 const AskOptions& options = everything) {
    std::vector<std::string> hits;
    try {
        for (const auto& hit : ask::ask(question, options).hits)
            hits.push_back(fl::i18n::toUtf8(hit.data.getHeaderInfo().getShortName()) + ":" +
                           fl::i18n::toUtf8(hit.name) + " [" + std::string(toString(hit.rung)) +
                           "] " + fl::i18n::toUtf8(hit.change));
    } catch (const ask::QuestionError& error) {
        hits.emplace_back(error.what());
    }
    return hits;
}

// The very name of every entity of a documentation finds it first.
void expectNamesToBeFirst() {
    ReferenceCacheManager::PopulateLookupCaches();
    std::set<std::u16string> names;
    for (const auto& [product, resource] : *ReferenceCacheManager::GetLookupCache())
        for (const auto& entity : resource.getItems())
            names.insert(entity.first);
    ASSERT_FALSE(names.empty());
    for (const auto& name : names) {
        if (name.empty() || name.size() > ask::Question::maxLength)
            continue;
        const auto answer = ask::ask(name, {.limit = 1});
        ASSERT_FALSE(answer.hits.empty()) << fl::i18n::toUtf8(name);
        EXPECT_EQ(answer.hits.front().name, name) << fl::i18n::toUtf8(name);
        EXPECT_EQ(answer.hits.front().rung, ask::Rung::Name) << fl::i18n::toUtf8(name);
    }
}

class AskPropertiesTest : public LibraryTest {
  protected:
    static void readSet(const std::filesystem::path& root) {
        DocResourceParser::setSource(std::make_shared<FileDocSource>(
            [root] { return docparser::DocumentationLocation{.docRoot = root}; }));
        ReferenceCacheManager::ClearAllCaches();
    }

    // Questions over the generator's vocabulary, as people put them.
    static std::vector<std::u16string> questions(Generator& generator, std::size_t count) {
        std::vector<std::u16string> all;
        while (all.size() < count) {
            std::u16string question = generator.name();
            switch (generator.below(5)) {
                case 0:
                    question += u" " + generator.text();
                    break;
                case 1:
                    question = u"x." + question + u"(";
                    break;
                case 2:
                    if (question.size() > 2)
                        std::swap(question[0], question[1]);
                    break;
                case 3:
                    question = generator.text() + u" type:function";
                    break;
                default:
                    break;
            }
            all.push_back(std::move(question));
        }
        return all;
    }
};

TEST_F(AskPropertiesTest, EveryNameOfTheShippedSetIsFirst) {
    readSet(VELTRA_SHIPPED_SET);
    expectNamesToBeFirst();
}

TEST_F(AskPropertiesTest, EveryNameOfAGeneratedDocumentationIsFirst) {
    Generator generator(11);
    for (const auto& name : productNames)
        source().add(generator.publishableProduct(name));
    expectNamesToBeFirst();
}

TEST_F(AskPropertiesTest, TheOrderIsTheSameOnEachRun) {
    Generator generator(12);
    for (const auto& name : productNames)
        source().add(generator.publishableProduct(name));
    for (const auto& question : questions(generator, 200)) {
        const auto hits = hitsFor(question);
        ReferenceCacheManager::ClearAllCaches();
        EXPECT_EQ(hitsFor(question), hits) << fl::i18n::toUtf8(question);
        // A limit shows the beginning of the same order.
        auto some = hitsFor(question, {.limit = 3});
        EXPECT_TRUE(some.size() <= hits.size() &&
                    std::equal(some.begin(), some.end(), hits.begin()))
            << fl::i18n::toUtf8(question);
    }
}

TEST_F(AskPropertiesTest, ACompiledSetAnswersAsMemoryDoes) {
    Generator generator(13);
    const TempFolder folder;
    for (const auto& name : productNames) {
        const auto product = generator.publishableProduct(name);
        docset::publishProduct(folder.path(), "en_US", product);
        source().add(product);
    }
    const auto asked = questions(generator, 300);
    std::vector<std::vector<std::string>> expected;
    for (const auto& question : asked)
        expected.push_back(hitsFor(question));
    readSet(folder.path());
    for (std::size_t at = 0; at < asked.size(); ++at)
        EXPECT_EQ(hitsFor(asked[at]), expected[at]) << fl::i18n::toUtf8(asked[at]);
}

// Hits of the products that stay, in their order.
std::vector<std::string> without(std::vector<std::string> hits, const std::string& product) {
    std::erase_if(hits, [&](const std::string& hit) { return hit.starts_with(product + ":"); });
    return hits;
}

TEST_F(AskPropertiesTest, AnUnrelatedProductReordersNothing) {
    Generator generator(14);
    for (const auto& name : productNames)
        source().add(generator.publishableProduct(name));
    const auto asked = questions(generator, 200);
    std::vector<std::vector<std::string>> before;
    for (const auto& question : asked)
        before.push_back(hitsFor(question));
    ProductBuilder beside(u"beside");
    for (int number = 0; number < 500; ++number)
        beside.entity(u"unlike.Qwertz" + std::u16string(1, static_cast<char16_t>(0x4E00 + number)),
                      property::RefEntityType::Class,
                      u"q.html#" + std::u16string(1, static_cast<char16_t>(0x4E00 + number)),
                      u"Zwölf Boxkämpfer jagen Viktor.");
    beside.alias(u"Qwertz", u"a.ab", 1000);
    source().add(beside.build());
    ReferenceCacheManager::ClearAllCaches();
    for (std::size_t at = 0; at < asked.size(); ++at)
        EXPECT_EQ(without(hitsFor(asked[at]), "beside"), before[at]) << fl::i18n::toUtf8(asked[at]);
}

TEST_F(AskPropertiesTest, HostileQuestionsAreAnsweredOrRefused) {
    readSet(VELTRA_SHIPPED_SET);
    std::u16string words;
    std::u16string many;
    for (int word = 0; word < 10'000; ++word)
        words += u"word" + std::u16string(1, static_cast<char16_t>(u'a' + word % 26)) + u" ";
    for (int word = 0; word < 60; ++word)
        many += u"abcdefghij" + std::u16string(1, static_cast<char16_t>(u'a' + word % 26)) + u" ";
    const std::u16string hostile[] = {
        std::u16string(1'000'000, u'a'),
        words,
        many,
        std::u16string(4000, u'a'),
        std::u16string(2000, u'('),
        u"f" + std::u16string(4000, u'('),
        std::u16string(4000, u'.'),
        std::u16string(4000, u'"'),
        std::u16string(4000, u'<'),
        u"a" + std::u16string(3000, u'<') + u"b",
        std::u16string(10, u'\0'),
        std::u16string(u"read\0csv", 8),
        u"\xD800 \xDC00 x\xD800",
        u"\u202E\u0007\u001B[31m",
        u"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaab",
        u"* ** *** ? [a-z]+ .* (a|b)*",
        u"-a -b -c -d",
    };
    for (const auto& question : hostile)
        EXPECT_NO_FATAL_FAILURE(static_cast<void>(hitsFor(question, {})));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
