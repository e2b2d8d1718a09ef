// A documentation set with compiled images answers as it does without them, whatever happens to the
// images.
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "docparser/DocResourceParser.hpp"
#include "docparser/FileDocSource.hpp"
#include "docset/compile.hpp"
#include "docset/publish.hpp"
#include "reference/api/AllTextDataRetriever.hpp"
#include "reference/api/ClassEntityDataRetriever.hpp"
#include "reference/api/EntityPurposeDataRetriever.hpp"
#include "reference/api/PageNameDataRetriever.hpp"
#include "reference/api/ReferenceDataRetriever.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "support/Capture.hpp"
#include "support/Generator.hpp"
#include "support/Items.hpp"
#include "support/LibraryTest.hpp"
#include "support/Print.hpp"
#include "support/TempFolder.hpp"
#include "support/WholeFiles.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

namespace fs = std::filesystem;
using api::EntityCaseSensitivity;
using api::EntityPrecision;
using api::ReferenceData;
using api::ReferenceRequest;
using cache_manager::ReferenceCacheManager;
using property::RefEntityType;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

docset::ProductDocumentation sampleProduct(const std::u16string& shortName) {
    ProductBuilder product(shortName);
    product
        .classWith(u"geo.Shape", u"geo", u"ref/Shape.html",
                   {{u"Size", {u"Width", u"Height"}}, {u"Look", {u"Colour"}}})
        .entity(u"geo.Shape.draw", RefEntityType::Method, u"ref/Shape.draw.html", u"Draws a shape")
        .entity(u"stats.fit", RefEntityType::Function, u"ref/fit.html", u"Fits a curve \u00C4rger")
        .entity(u"stats.fit", RefEntityType::Topic, u"ref/fitting.html", u"All about fitting");
    product.record(u"full", RefEntityType::Function, u"ref/full.html", u"says everything");
    product.item(makeFullItem(u"ref/full.html"));
    // Where a record has no page, pages and hrefs do not have the same numbers.
    if (shortName == u"alpha")
        product.record(u"absent", RefEntityType::Function, u"ref/absent.html");
    for (char16_t letter = u'a'; letter <= u'z'; ++letter)
        product.entity(std::u16string(u"letters.") + letter, RefEntityType::Constant,
                       std::u16string(u"letters.html#") + letter,
                       std::u16string(u"The letter ") + letter);
    return product.build();
}

class CompiledSetTest : public LibraryTest {
  protected:
    CompiledSetTest() {
        docset::publishProduct(root(), "en_US", sampleProduct(u"alpha"));
        docset::publishProduct(root(), "en_US", sampleProduct(u"beta"));
        expectNoDamage([this] { expected = answers(); });
    }

    [[nodiscard]] const fs::path& root() const { return m_folder.path(); }

    // A source that has read nothing yet, and empty caches.
    void beginAnew() const {
        docparser::DocResourceParser::setSource(std::make_shared<docparser::FileDocSource>(
            [path = root()] { return docparser::DocumentationLocation{.docRoot = path}; }));
        ReferenceCacheManager::ClearAllCaches();
    }

    // What a process that begins now answers to requests of all kinds.
    [[nodiscard]] std::vector<ReferenceData> answers() const {
        beginAnew();
        std::vector<ReferenceData> all;
        const auto add = [&](const api::ReferenceDataRetriever& retriever) {
            std::ranges::move(retriever.getReferenceData(), std::back_inserter(all));
        };
        for (const auto* text :
             {u"geo.Shape", u"fit", u"Shape.draw", u"full", u"Width", u"\u00E4rger", u"letter",
              u"all about", u"c", u"ref/fit.html", u"absent", u"nothing"})
            for (const bool folds : {false, true}) {
                ReferenceRequest request(text);
                request.setEntityCaseSensitivity(folds ? EntityCaseSensitivity::Insensitive
                                                       : EntityCaseSensitivity::Sensitive);
                request.setEntityPrecision(folds ? EntityPrecision::Ignore_Package
                                                 : EntityPrecision::Exact_Match);
                add(api::ReferenceDataRetriever(request));
                add(api::ClassEntityDataRetriever(request));
                add(api::EntityPurposeDataRetriever(request));
                add(api::AllTextDataRetriever(request));
                add(api::PageNameDataRetriever(request));
            }
        add(api::ReferenceDataRetriever(ReferenceRequest::createMatchAllTextRequest({}, {})));
        return all;
    }

    // The answers of files could hide what is wrong with those of images.
    static void expectNoDamage(const std::function<void()>& work) {
        const LogCapture log("docparser=8");
        work();
        EXPECT_THAT(log.texts(), Not(Contains(HasSubstr("No image is used"))));
    }

    void expectSameAnswers(const std::string& when) const {
        const auto actual = answers();
        ASSERT_EQ(dump(actual), dump(expected)) << when;
        for (std::size_t at = 0; at < actual.size(); ++at)
            ASSERT_TRUE(actual[at].getRefItem() == expected[at].getRefItem())
                << when << ": " << dump(actual[at]);
    }

    // Whether the records, or the pages, of "alpha" come from an image.
    [[nodiscard]] bool areRecordsCompiled() const {
        beginAnew();
        ReferenceCacheManager::PopulateLookupCache();
        return ReferenceCacheManager::GetLookupCache()->at(u"alpha").getImage() != nullptr;
    }
    [[nodiscard]] bool arePagesCompiled() const {
        beginAnew();
        return ReferenceCacheManager::GetResourceCacheForProduct(u"alpha", u"alpha")->getImage() !=
               nullptr;
    }

    [[nodiscard]] std::vector<fs::path> filesEndingWith(const std::string& ending) const {
        std::vector<fs::path> found;
        for (const auto& entry : fs::recursive_directory_iterator(root()))
            if (entry.path().string().ends_with(ending))
                found.push_back(entry.path());
        std::ranges::sort(found);
        return found;
    }

    void removeImages() const {
        for (const auto& image : filesEndingWith(".image"))
            fs::remove(image);
    }

    std::vector<ReferenceData> expected;

  private:
    TempFolder m_folder;
};

TEST_F(CompiledSetTest, PublishingWritesAnImageOfEachFile) {
    EXPECT_THAT(filesEndingWith("p.image"), SizeIs(2));
    EXPECT_THAT(filesEndingWith("e.image"), SizeIs(2));
    EXPECT_THAT(filesEndingWith("documentation-set.en_US.image"), SizeIs(1));
    EXPECT_TRUE(areRecordsCompiled());
    EXPECT_TRUE(arePagesCompiled());
    EXPECT_GT(expected.size(), 100U);
}

TEST_F(CompiledSetTest, ImagesOfFormerEditionsGoWithTheirFiles) {
    for (int edition = 0; edition < 4; ++edition)
        docset::publishProduct(root(), "en_US", sampleProduct(u"alpha"));
    EXPECT_EQ(filesEndingWith("e.image").size(), filesEndingWith("e.json").size());
    EXPECT_EQ(filesEndingWith("p.image").size(), filesEndingWith("p.json").size());
    expectSameAnswers("published again");
}

TEST_F(CompiledSetTest, WithoutImagesTheAnswersAreTheSame) {
    removeImages();
    EXPECT_FALSE(areRecordsCompiled());
    EXPECT_FALSE(arePagesCompiled());
    expectSameAnswers("no images");
}

// A text without a word is looked for in all that is stored, which only an image has in one piece.
TEST_F(CompiledSetTest, ATextWithoutWordsIsFoundInEachItemThatHasIt) {
    ProductBuilder arrows(u"gamma");
    arrows.entity(u"a", RefEntityType::Function, u"a.html", u"x -> y -> z")
        .entity(u"b", RefEntityType::Function, u"b.html", u"x - > y")
        .entity(u"c", RefEntityType::Class, u"c.html", u"->")
        .entity(u"d", RefEntityType::Function, u"d.html", u"ends with ->");
    docset::publishProduct(root(), "en_US", arrows.build());
    const auto found = [&](const std::u16string& text,
                           std::vector<RefEntityType::Value> types = {}) {
        beginAnew();
        return dump(api::AllTextDataRetriever(ReferenceRequest(text, std::move(types), {u"gamma"}))
                        .getReferenceData());
    };
    const auto check = [&] {
        EXPECT_THAT(found(u"->"),
                    testing::ElementsAre("gamma:a[function]@a.html", "gamma:c[class]@c.html",
                                         "gamma:d[function]@d.html"));
        EXPECT_THAT(found(u"->", {RefEntityType::Class}),
                    testing::ElementsAre("gamma:c[class]@c.html"));
        EXPECT_THAT(found(u"-> "), testing::ElementsAre("gamma:a[function]@a.html"));
        EXPECT_THAT(found(u"=>"), IsEmpty());
        EXPECT_THAT(found(u""), SizeIs(4));
        EXPECT_THAT(found(u"", {RefEntityType::Class}), SizeIs(1));
    };
    expectNoDamage(check);
    removeImages();
    check();
}

TEST_F(CompiledSetTest, CompilingWritesWhatIsMissingAndKeepsTheRest) {
    auto report = docset::compile(root());
    EXPECT_EQ(report.written, 0U);
    EXPECT_EQ(report.kept, 4U);
    removeImages();
    report = docset::compile(root());
    EXPECT_EQ(report.written, 4U);
    EXPECT_EQ(report.kept, 0U);
    EXPECT_THAT(report.faults, IsEmpty());
    EXPECT_TRUE(areRecordsCompiled());
    EXPECT_TRUE(arePagesCompiled());
    expectSameAnswers("compiled");
}

TEST_F(CompiledSetTest, AFaultyFileIsReportedAndGetsNoImage) {
    removeImages();
    const auto file = filesEndingWith(".lookup.json").front();
    std::string content = contentOf(file);
    content.replace(content.find("\"method\""), 8, "\"methud\"");
    replaceFile(file, content);
    const auto report = docset::compile(root());
    EXPECT_EQ(report.written, 3U);
    ASSERT_THAT(report.faults, SizeIs(1));
    EXPECT_THAT(report.faults.front().problem, HasSubstr("methud"));
    EXPECT_THAT(filesEndingWith("alpha-1.lookup.image"), IsEmpty());
}

TEST_F(CompiledSetTest, AnImageOfAnotherContentIsPassedOver) {
    const LogCapture log("docparser=8");
    const auto file = filesEndingWith(".lookup.json").front();
    std::string content = contentOf(file);
    content.replace(content.find("Draws a shape"), 13, "Draws a Shape");
    replaceFile(file, content);
    EXPECT_FALSE(areRecordsCompiled());
    EXPECT_THAT(log.texts(), Contains(HasSubstr("passed over: ")));
    EXPECT_THAT(log.texts(), Contains(HasSubstr("not of the JSON file as it is now")));
    EXPECT_EQ(docset::compile(root()).written, 1U);
    EXPECT_TRUE(areRecordsCompiled());
}

TEST_F(CompiledSetTest, AnImageOutlivesACopyOfItsFileWithAnotherTime) {
    const LogCapture log("docparser=8");
    for (const auto& file : filesEndingWith(".json"))
        fs::last_write_time(file, fs::file_time_type::clock::now() - std::chrono::hours(5));
    EXPECT_TRUE(areRecordsCompiled());
    EXPECT_TRUE(arePagesCompiled());
    EXPECT_THAT(log.texts(), IsEmpty());
}

TEST_F(CompiledSetTest, AnImageThatIsNotWholeIsPassedOver) {
    for (const auto& image : filesEndingWith(".image")) {
        const std::string content = contentOf(image);
        for (const std::size_t size :
             {std::size_t{0}, std::size_t{1}, std::size_t{79}, std::size_t{80}, std::size_t{200},
              std::size_t{4096}, content.size() / 2, content.size() - 1}) {
            const LogCapture log("docparser=8");
            replaceFile(image, content.substr(0, size));
            expectSameAnswers(image.string() + " of " + std::to_string(size) + " bytes");
            EXPECT_THAT(log.texts(), Contains(HasSubstr("passed over: " + image.string()))) << size;
        }
        replaceFile(image, content + "and more");
        expectSameAnswers(image.string() + " with more at its end");
        replaceFile(image, content);
    }
}

TEST_F(CompiledSetTest, AnImageThatIsDamagedAnywhereIsPassedOver) {
    Generator generator(1);
    int noticed = 0;
    for (const auto& image : filesEndingWith("1.lookup.image")) {
        const auto pages =
            fs::path(image.string().replace(image.string().find("lookup"), 6, "reference"));
        for (const auto& file : {image, pages}) {
            const std::string content = contentOf(file);
            for (int round = 0; round < 100; ++round) {
                const LogCapture log("docparser=8");
                std::string damaged = content;
                // The header, which is short, as often as the rest.
                const std::size_t at =
                    generator.chance(30) ? generator.below(400) : generator.below(content.size());
                damaged[at] = static_cast<char>(damaged[at] ^ (1 << generator.below(8)));
                replaceFile(file, damaged);
                expectSameAnswers(file.string() + " damaged at " + std::to_string(at));
                noticed += log.texts().empty() ? 0 : 1;
            }
            replaceFile(file, content);
        }
    }
    // What is not looked at, such as the room between two sections, may be damaged unnoticed.
    EXPECT_GT(noticed, 100);
}

TEST_F(CompiledSetTest, MapsOfDamagedImagesAreThoseOfTheFiles) {
    const LogCapture log("docparser=8");
    for (const auto& image : filesEndingWith(".image"))
        damageFrom(4096, image);
    for (const bool isIndexed : {true, false}) {
        if (!isIndexed)
            fs::remove(root() / "documentation-set.en_US.image");
        beginAnew();
        const auto sample = sampleProduct(u"alpha");
        ReferenceCacheManager::PopulateAllCaches();
        EXPECT_EQ(ReferenceCacheManager::GetLookupCache()->at(u"alpha").getItems(),
                  sample.entities);
        EXPECT_EQ(ReferenceCacheManager::GetResourceCache()->at(u"alpha")->getItems(),
                  sample.pages);
    }
    EXPECT_THAT(log.texts(), Contains(HasSubstr("image is damaged in its block")));
}

TEST_F(CompiledSetTest, ResultsOutliveTheirImages) {
    auto kept = answers();
    removeImages();
    docparser::DocResourceParser::setSource(nullptr);
    ReferenceCacheManager::ClearAllCaches();
    ASSERT_EQ(kept.size(), expected.size());
    for (std::size_t at = 0; at < kept.size(); ++at)
        EXPECT_TRUE(kept[at].getRefItem() == expected[at].getRefItem());
}

TEST_F(CompiledSetTest, MapsAreMadeWhenSomebodyAsksForThem) {
    beginAnew();
    ReferenceCacheManager::PopulateAllCaches();
    const auto lookup = ReferenceCacheManager::GetLookupCache();
    const auto pages = ReferenceCacheManager::GetResourceCache();
    const auto sample = sampleProduct(u"alpha");
    EXPECT_EQ(lookup->at(u"alpha").getItems(), sample.entities);
    EXPECT_EQ(pages->at(u"alpha")->getItems(), sample.pages);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
