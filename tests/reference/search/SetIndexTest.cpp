// The index of a documentation set changes no answer: with it, without it, when it is of other
// files than there are, and when it is damaged.
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "docparser/DocResourceParser.hpp"
#include "docparser/FileDocSource.hpp"
#include "docset/compile.hpp"
#include "docset/publish.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "support/Capture.hpp"
#include "support/Generator.hpp"
#include "support/LibraryTest.hpp"
#include "support/TempFolder.hpp"
#include "support/WholeFiles.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

namespace fs = std::filesystem;
using api::ReferenceRequest;
using cache_manager::ProductMatchData;
using cache_manager::ReferenceCacheManager;
using docparser::DocumentationLocation;
using property::RefEntityType;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

using Matches = std::map<std::u16string, ProductMatchData>;

docset::ProductDocumentation productOf(const std::u16string& shortName,
                                       const std::vector<std::u16string>& names,
                                       const std::u16string& purpose = u"") {
    ProductBuilder product(shortName);
    for (const auto& name : names)
        product.entity(name, RefEntityType::Function, name + u".html", purpose);
    return product.build();
}

class SetIndexTest : public LibraryTest {
  protected:
    SetIndexTest() { m_location.docRoot = root(); }

    [[nodiscard]] const fs::path& root() const { return m_folder.path(); }
    [[nodiscard]] fs::path index(const std::string& locale = "en_US") const {
        return root() / ("documentation-set." + locale + ".image");
    }
    [[nodiscard]] fs::path manifest() const { return root() / "documentation-set.json"; }
    [[nodiscard]] fs::path file(const std::string& name) const { return root() / "en_US" / name; }

    void publish(const docset::ProductDocumentation& product,
                 const std::string& locale = "en_US") const {
        docset::publishProduct(root(), locale, product);
    }

    // From now on, products are read in this language, and those of the support package, too.
    void read(const std::string& language, std::vector<fs::path> supportPackages = {}) {
        m_location.language = language;
        m_location.supportPackageRoots = std::move(supportPackages);
    }

    // A source that has read nothing yet, and empty caches.
    void beginAnew() const {
        docparser::DocResourceParser::setSource(std::make_shared<docparser::FileDocSource>(
            [location = m_location] { return location; }));
        ReferenceCacheManager::ClearAllCaches();
    }

    static Matches find(const std::u16string& name) {
        return ReferenceCacheManager::GetProductsWithEntity(ReferenceRequest(name),
                                                            ReferenceCacheManager::ReferenceSearch);
    }
    static std::vector<std::u16string> productsWith(const std::u16string& name) {
        std::vector<std::u16string> products;
        for (const auto& match : find(name))
            products.push_back(match.first);
        return products;
    }

    // What a process that begins now answers to all methods, for requests at random.
    [[nodiscard]] std::vector<Matches> answers(std::uint32_t seed) const {
        beginAnew();
        Generator generator(seed);
        std::vector<Matches> all;
        for (int round = 0; round < 60; ++round) {
            const auto request = generator.request();
            for (const auto method :
                 {ReferenceCacheManager::ReferenceSearch, ReferenceCacheManager::ClassEntitySearch,
                  ReferenceCacheManager::NameAndPurposeSearch, ReferenceCacheManager::AllTextSearch,
                  ReferenceCacheManager::PageNameSearch})
                all.push_back(ReferenceCacheManager::GetProductsWithEntity(request, method));
        }
        return all;
    }

    // Publishes some of the products that generated requests ask for.
    void publishAtRandom(Generator& generator, const std::string& locale) const {
        for (const auto& shortName : productNames)
            if (generator.chance(70))
                publish(generator.publishableProduct(shortName), locale);
    }

  private:
    TempFolder m_folder;
    DocumentationLocation m_location;
};

TEST_F(SetIndexTest, ChangesNoAnswerOfSetsAtRandom) {
    Generator generator(7);
    std::size_t found = 0;
    for (std::uint32_t round = 0; round < 12; ++round) {
        publish(productOf(u"a", {u"fit"}), "en_US");
        publishAtRandom(generator, "en_US");
        publishAtRandom(generator, "ja_JP");
        for (const std::string language : {"", "en_US", "ja_JP", "xx"}) {
            read(language);
            const auto with = answers(round);
            const std::string english = contentOf(index());
            const std::string japanese = contentOf(index("ja_JP"));
            ASSERT_THAT(english, Not(IsEmpty()));
            ASSERT_THAT(japanese, Not(IsEmpty()));
            fs::remove(index());
            fs::remove(index("ja_JP"));
            ASSERT_EQ(with, answers(round)) << round << " in \"" << language << '"';
            replaceFile(index(), english);
            replaceFile(index("ja_JP"), japanese);
            for (const auto& matches : with)
                found += matches.size();
        }
    }
    EXPECT_GT(found, 1000U);
}

TEST_F(SetIndexTest, OpensAProductWhenItHasAMatch) {
    publish(productOf(u"a", {u"fit", u"plot"}));
    publish(productOf(u"b", {u"fit", u"draw", u"Shape.size"}));
    beginAnew();
    ReferenceCacheManager::PopulateLookupCache();
    // Nobody has looked into these until now.
    fs::remove(file("a-1.lookup.image"));
    fs::remove(file("a-1.lookup.json"));
    EXPECT_THAT(productsWith(u"draw"), ElementsAre(u"b"));
    EXPECT_THAT(productsWith(u"nothing"), IsEmpty());
    // Other names than whole keys: of pages and classes, and ends of names.
    const std::pair<std::u16string, ReferenceCacheManager::SearchMethod> others[] = {
        {u"draw", ReferenceCacheManager::ReferenceSearch},
        {u"draw.html", ReferenceCacheManager::PageNameSearch},
        {u"Shape", ReferenceCacheManager::ClassEntitySearch},
    };
    for (const auto& [name, method] : others)
        for (const auto precision :
             {api::EntityPrecision::Exact_Match, api::EntityPrecision::Ignore_Package}) {
            ReferenceRequest request(name);
            request.setEntityPrecision(precision);
            EXPECT_THAT(ReferenceCacheManager::GetProductsWithEntity(request, method),
                        ElementsAre(testing::Key(u"b")));
        }
    EXPECT_EQ(ReferenceCacheManager::GetLookupCache()->at(u"a").getHeaderInfo().getShortName(),
              u"a");
}

TEST_F(SetIndexTest, AProductThatWasReplacedMeanwhileIsReadAnew) {
    const LogCapture log("docparser=8");
    publish(productOf(u"a", {u"fit"}));
    publish(productOf(u"b", {u"draw"}));
    beginAnew();
    ReferenceCacheManager::PopulateLookupCache();
    // The second of these removes the files that were listed.
    publish(productOf(u"a", {u"fit", u"fit.more"}));
    publish(productOf(u"a", {u"fit", u"fit.most"}));
    ASSERT_FALSE(fs::exists(file("a-1.lookup.json")));
    EXPECT_THAT(productsWith(u"fit"), ElementsAre(u"a"));
    EXPECT_THAT(productsWith(u"fit.most"), ElementsAre(u"a"));
    EXPECT_NE(ReferenceCacheManager::GetLookupCache()->at(u"a").getImage(), nullptr);
    EXPECT_THAT(log.texts(), Not(Contains(HasSubstr("No image is used"))));
}

TEST_F(SetIndexTest, KnowsWhichFilesItIsOf) {
    publish(productOf(u"a", {u"fit"}));
    publish(productOf(u"b", {u"draw"}));
    const auto json = file("a-1.lookup.json");
    std::string content = contentOf(json);
    content.replace(content.find("\"fit\""), 5, "\"fat\"");
    replaceFile(json, content);
    beginAnew();
    EXPECT_THAT(productsWith(u"fat"), ElementsAre(u"a"));
    EXPECT_THAT(productsWith(u"fit"), IsEmpty());
    EXPECT_THAT(productsWith(u"draw"), ElementsAre(u"b"));
    // With an image of the new file, but still the old index.
    const std::string before = contentOf(index());
    static_cast<void>(docset::compile(root()));
    EXPECT_NE(contentOf(index()), before);
    replaceFile(index(), before);
    beginAnew();
    EXPECT_THAT(productsWith(u"fat"), ElementsAre(u"a"));
    EXPECT_THAT(productsWith(u"fit"), IsEmpty());
}

TEST_F(SetIndexTest, OfASetWithAnotherProductIsNotUsed) {
    publish(productOf(u"a", {u"fit"}));
    const std::string before = contentOf(index());
    publish(productOf(u"b", {u"draw"}));
    replaceFile(index(), before);
    beginAnew();
    EXPECT_THAT(productsWith(u"draw"), ElementsAre(u"b"));
    EXPECT_THAT(productsWith(u"fit"), ElementsAre(u"a"));
}

TEST_F(SetIndexTest, OfASetWithMoreProductsIsNotUsed) {
    publish(productOf(u"b", {u"fit", u"draw"}));
    const std::string before = contentOf(manifest());
    publish(productOf(u"a", {u"fit", u"plot"}));
    replaceFile(manifest(), before);
    beginAnew();
    EXPECT_THAT(productsWith(u"fit"), ElementsAre(u"b"));
    EXPECT_THAT(productsWith(u"draw"), ElementsAre(u"b"));
    EXPECT_THAT(productsWith(u"plot"), IsEmpty());
}

TEST_F(SetIndexTest, OfAnotherEditionIsNotUsed) {
    publish(productOf(u"a", {u"fit"}));
    const std::string before = contentOf(manifest());
    publish(productOf(u"a", {u"plot"}));
    replaceFile(manifest(), before);
    beginAnew();
    EXPECT_THAT(productsWith(u"fit"), ElementsAre(u"a"));
    EXPECT_THAT(productsWith(u"plot"), IsEmpty());
}

TEST_F(SetIndexTest, HoldsWhatIsInstalledAlone) {
    publish(productOf(u"a", {u"fit"}));
    publish(productOf(u"b", {u"fit", u"draw"}));
    std::string content = contentOf(manifest());
    const auto product = content.find("\"b\"");
    content.replace(content.find("true", product), 4, "false");
    replaceFile(manifest(), content);
    static_cast<void>(docset::compile(root()));
    beginAnew();
    ReferenceCacheManager::PopulateLookupCache();
    fs::remove(file("a-1.lookup.image"));
    fs::remove(file("a-1.lookup.json"));
    EXPECT_THAT(productsWith(u"draw"), IsEmpty());
    EXPECT_THAT(*ReferenceCacheManager::GetUninstalledLookupCache(), SizeIs(1));
    // Not read anew, and so not missed.
    EXPECT_TRUE(ReferenceCacheManager::GetLookupCache()->contains(u"a"));
}

TEST_F(SetIndexTest, ProductsOfSupportPackagesAreFoundBesideIt) {
    const TempFolder package;
    publish(productOf(u"a", {u"fit"}));
    docset::publishProduct(package.path(), "en_US", productOf(u"a", {u"hidden"}));
    docset::publishProduct(package.path(), "en_US", productOf(u"b", {u"draw", u"fit"}));
    read("", {package.path()});
    beginAnew();
    EXPECT_THAT(productsWith(u"fit"), ElementsAre(u"a", u"b"));
    EXPECT_THAT(productsWith(u"draw"), ElementsAre(u"b"));
    EXPECT_THAT(productsWith(u"hidden"), IsEmpty());
}

TEST_F(SetIndexTest, CompilingMakesOneThatIsMissing) {
    publish(productOf(u"a", {u"fit"}));
    const std::string before = contentOf(index());
    fs::remove(index());
    EXPECT_EQ(docset::compile(root()).written, 0U);
    EXPECT_EQ(contentOf(index()), before);
    const auto time = fs::last_write_time(index());
    static_cast<void>(docset::compile(root()));
    EXPECT_EQ(fs::last_write_time(index()), time);
}

TEST_F(SetIndexTest, ACopyThatKeptWholeSecondsIsUnchanged) {
    const LogCapture log("docparser=8");
    publish(productOf(u"a", {u"fit"}));
    for (const auto& entry : fs::recursive_directory_iterator(root()))
        fs::last_write_time(entry.path(), std::chrono::floor<std::chrono::seconds>(
                                              fs::last_write_time(entry.path())));
    beginAnew();
    ReferenceCacheManager::PopulateLookupCache();
    fs::remove(file("a-1.lookup.image"));
    fs::remove(file("a-1.lookup.json"));
    EXPECT_THAT(productsWith(u"nothing"), IsEmpty());
    EXPECT_THAT(log.texts(), IsEmpty());
}

TEST_F(SetIndexTest, WhateverIsDamagedTheAnswersAreTheSame) {
    Generator generator(3);
    publishAtRandom(generator, "en_US");
    publish(productOf(u"a", {u"fit", u"a.fit", u"A.Fit"}));
    const auto expected = answers(1);
    ASSERT_THAT(expected, Contains(Not(IsEmpty())));
    std::vector<fs::path> files{index()};
    for (const auto& entry : fs::directory_iterator(root() / "en_US"))
        if (entry.path().string().ends_with(".lookup.image"))
            files.push_back(entry.path());
    std::ranges::sort(files);
    int noticed = 0;
    for (const auto& path : files) {
        const std::string content = contentOf(path);
        for (int round = 0; round < 40; ++round) {
            const LogCapture log("docparser=8");
            std::string damaged = content;
            const std::size_t at =
                generator.chance(30) ? generator.below(400) : generator.below(content.size());
            damaged[at] = static_cast<char>(damaged[at] ^ (1 << generator.below(8)));
            replaceFileUnseen(path, damaged);
            ASSERT_EQ(answers(1), expected) << path << " damaged at " << at;
            noticed += log.texts().empty() ? 0 : 1;
        }
        for (const std::size_t size : {std::size_t{0}, std::size_t{100}, content.size() - 1}) {
            replaceFileUnseen(path, content.substr(0, size));
            ASSERT_EQ(answers(1), expected) << path << " of " << size << " bytes";
        }
        replaceFileUnseen(path, content);
    }
    EXPECT_GT(noticed, 40);
}

TEST_F(SetIndexTest, HasTheNameOfNoLocale) {
    EXPECT_THROW(publish(productOf(u"a", {u"fit"}), "documentation-set.en_US.image"),
                 docset::PublishError);
    publish(productOf(u"a", {u"fit"}), "documentation-set");
    EXPECT_TRUE(fs::exists(index("documentation-set")));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
