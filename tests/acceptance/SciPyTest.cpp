// The whole path over the documentation of SciPy, as Debian installs it: built HTML pages in, found
// entries out.

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <ios>
#include <iterator>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zlib.h>

#include "docparser/DocResourceParser.hpp"
#include "docparser/FileDocSource.hpp"
#include "docset/publish.hpp"
#include "docset/validate.hpp"
#include "fl/i18n/utf.hpp"
#include "reference/api/AllTextDataRetriever.hpp"
#include "reference/api/ClassEntityDataRetriever.hpp"
#include "reference/api/EntityPurposeDataRetriever.hpp"
#include "reference/api/PageNameDataRetriever.hpp"
#include "reference/api/ReferenceDataRetriever.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "reference/ask/ask.hpp"
#include "sphinx/ImportTree.hpp"
#include "support/LookupModel.hpp"
#include "support/LookupWalk.hpp"
#include "support/Print.hpp"
#include "support/TempFolder.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using api::EntityPrecision;
using api::ReferenceData;
using api::ReferenceDataRetriever;
using api::ReferenceRequest;
using cache_manager::ReferenceCacheManager;
using property::RefEntityType;
using ::testing::ElementsAre;

constexpr const char* scipyPages = "/usr/share/doc/python-scipy-doc/html";

// The inventory's text, unpacked by zlib alone, so that the importer's own reading of it is tested.
std::string inventoryText() {
    std::ifstream stream(std::filesystem::path(scipyPages) / "objects.inv", std::ios::binary);
    if (!stream)
        throw std::runtime_error(
            "The package python-scipy-doc is missing; scripts/test installs it.");
    const std::string file{std::istreambuf_iterator<char>(stream), {}};
    std::size_t start = 0;
    for (int line = 0; line < 4; ++line)
        start = file.find('\n', start) + 1;
    std::string text(std::size_t{16} * 1024 * 1024, '\0');
    uLongf length = text.size();
    if (uncompress(reinterpret_cast<Bytef*>(text.data()), &length,
                   reinterpret_cast<const Bytef*>(file.data() + start),
                   file.size() - start) != Z_OK)
        throw std::runtime_error("objects.inv cannot be unpacked");
    text.resize(length);
    return text;
}

// The names of the inventory's Python objects of priority 0 or more: none of them has a space.
std::vector<std::u16string> objectNames() {
    std::vector<std::u16string> names;
    std::istringstream lines(inventoryText());
    for (std::string line; std::getline(lines, line);) {
        std::istringstream fields(line);
        std::string name;
        std::string role;
        int priority = -1;
        if (fields >> name >> role >> priority && role.starts_with("py:") && priority >= 0)
            names.push_back(fl::i18n::toUtf16(name));
    }
    return names;
}

bool bearsName(const ReferenceData& result, const std::u16string& name) {
    return std::ranges::any_of(result.getRefItem().getRefEntities(),
                               [&](const auto& entity) { return entity.getName() == name; });
}

bool saysSomething(const ReferenceData& result) {
    const auto& item = result.getRefItem();
    // Of a property type and value are known, in place of a syntax.
    const bool hasValues =
        std::ranges::any_of(item.getClassPropertyGroups(), [](const auto& group) {
            return std::ranges::any_of(group.getClassProperties(), [](const auto& property) {
                return !property.getValues().empty();
            });
        });
    return !item.getPurpose().empty() || hasValues ||
           std::ranges::any_of(item.getSyntaxGroups(),
                               [](const auto& group) { return !group.getSyntaxes().empty(); });
}

// Imports into the folder; yields the number of faults that the import reports.
std::size_t importInto(const std::filesystem::path& folder) {
    auto result = importers::sphinx::importTree({.source = scipyPages, .shortName = u"scipy"});
    docset::publishProduct(folder, "en_US", result.documentation);
    return result.report.faults.size();
}

// Makes the set that the other tests read where VELTRA_SCIPY_SET says.
TEST(SciPyImportTest, ImportIsWholeAndMakesASoundSet) {
    const TempFolder temporary;
    const char* const shared = std::getenv("VELTRA_SCIPY_SET");
    const std::filesystem::path folder = shared ? shared : temporary.path();
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    EXPECT_EQ(importInto(folder), 0u);
    const auto report = docset::validate(folder);
    for (const auto& fault : report.faults)
        ADD_FAILURE() << fault.toString();
}

// Reads the set that was imported into VELTRA_SCIPY_SET, or imports once for all tests of the
// suite.
class SciPyTest : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        s_folder = std::make_unique<TempFolder>();
        std::filesystem::path folder = s_folder->path();
        if (const char* const shared = std::getenv("VELTRA_SCIPY_SET"))
            folder = shared;
        else
            importInto(folder);
        docparser::DocResourceParser::setSource(std::make_shared<docparser::FileDocSource>(
            [folder] { return docparser::DocumentationLocation{.docRoot = folder}; }));
        ReferenceCacheManager::ClearAllCaches();
    }

    static void TearDownTestSuite() {
        docparser::DocResourceParser::setSource(nullptr);
        ReferenceCacheManager::ClearAllCaches();
        s_folder.reset();
    }

    static inline std::unique_ptr<TempFolder> s_folder;
};

TEST_F(SciPyTest, EveryObjectOfTheInventoryIsFoundByItsExactNameAndNearlyAllSaySomething) {
    const auto names = objectNames();
    ASSERT_GT(names.size(), 4000u);
    std::vector<std::string> missing;
    std::size_t silent = 0;
    for (const auto& name : names) {
        const auto results = ReferenceDataRetriever(ReferenceRequest(name)).getReferenceData();
        const auto found = std::ranges::find_if(
            results, [&](const ReferenceData& result) { return bearsName(result, name); });
        if (found == results.end())
            missing.push_back(fl::i18n::toUtf8(name));
        else if (!saysSomething(*found))
            ++silent;
    }
    EXPECT_THAT(missing, ::testing::IsEmpty());
    EXPECT_LE(silent * 100, names.size() * 2) << silent << " of " << names.size();
}

// What people may type of a name: all of it, ends and parts of it, in any case.
std::vector<std::u16string> textsLike(const std::u16string& name) {
    const auto last = name.rfind(u'.') + 1;
    const auto lastTwo = last < 2 ? 0 : name.rfind(u'.', last - 2) + 1;
    std::u16string upper = name.substr(last);
    for (char16_t& unit : upper)
        if (unit >= u'a' && unit <= u'z')
            unit = static_cast<char16_t>(unit - u'a' + u'A');
    return {name,
            name.substr(last),
            name.substr(lastTwo),
            upper,
            name.substr(last, 2),
            name.substr(name.size() / 3, 4),
            u"the " + name.substr(last, 1),
            u"reference/generated/" + name + u".html"};
}

TEST_F(SciPyTest, AskingForTheNameOfAnyObjectFindsItFirst) {
    for (const auto& name : objectNames()) {
        const auto answer = ask::ask(name, {.limit = 1});
        ASSERT_EQ(answer.hits.size(), 1u) << fl::i18n::toUtf8(name);
        EXPECT_EQ(answer.hits.front().name, name);
        EXPECT_EQ(answer.hits.front().rung, ask::Rung::Name) << fl::i18n::toUtf8(name);
    }
}

TEST_F(SciPyTest, TheIndexAnswersAsAWalkOverAllKeysDoes) {
    ReferenceCacheManager::PopulateLookupCache();
    const auto lookup = ReferenceCacheManager::GetLookupCache();
    const auto names = objectNames();
    std::size_t found = 0;
    for (std::size_t number = 0; number < names.size(); number += 601)
        for (const auto& text : textsLike(names[number]))
            for (const auto sensitivity :
                 {api::EntityCaseSensitivity::Sensitive, api::EntityCaseSensitivity::Insensitive})
                for (const auto precision :
                     {EntityPrecision::Exact_Match, EntityPrecision::Ignore_Package})
                    for (const auto method : {ReferenceCacheManager::ReferenceSearch,
                                              ReferenceCacheManager::ClassEntitySearch,
                                              ReferenceCacheManager::NameAndPurposeSearch,
                                              ReferenceCacheManager::PageNameSearch}) {
                        ReferenceRequest request(text);
                        request.setEntityCaseSensitivity(sensitivity);
                        request.setEntityPrecision(precision);
                        const auto expected = walkProductsWithEntity(request, method, *lookup);
                        found += expected.size();
                        ASSERT_EQ(ReferenceCacheManager::GetProductsWithEntity(request, method),
                                  expected)
                            << fl::i18n::toUtf8(text) << ", method " << method << ", case "
                            << sensitivity << ", precision " << precision;
                    }
    EXPECT_GT(found, 100U);
}

TEST_F(SciPyTest, TheLexiconOfTextsAnswersAsAReadingOfAllOfThemDoes) {
    ReferenceCacheManager::PopulateAllCaches();
    const auto pages = ReferenceCacheManager::GetResourceCache()->at(u"scipy");
    const auto lookup = ReferenceCacheManager::GetLookupCache();
    const docset::ProductDocumentation documentation{
        .header = {.shortName = u"scipy", .displayName = {}, .helpFolder = {}, .version = {}},
        .entities = lookup->at(u"scipy").getItems(),
        .pages = pages->getItems()};
    for (const auto* text : {u"Kernel", u"kernel density", u"the", u"e", u"nel den", u"->", u", ",
                             u"\u00E9", u"Poisson", u"no such words", u"x_0"})
        for (const auto sensitivity :
             {api::EntityCaseSensitivity::Sensitive, api::EntityCaseSensitivity::Insensitive}) {
            ReferenceRequest request(text);
            request.setEntityCaseSensitivity(sensitivity);
            const auto expected = modelAnswer(Search::AllText, request, {documentation});
            const auto actual = api::AllTextDataRetriever(request).getReferenceData();
            ASSERT_EQ(actual.size(), expected.size()) << fl::i18n::toUtf8(std::u16string(text));
            for (std::size_t at = 0; at < actual.size(); ++at)
                ASSERT_TRUE(actual[at].getRefItem() == expected[at].second) << dump(actual[at]);
        }
}

TEST_F(SciPyTest, PropertyWithAPageOfItsOwnIsOneSyntheticRecordThatLeadsBackToItsClass) {
    for (const bool withType : {true, false}) {
        ReferenceRequest request(u"gaussian_kde.neff");
        request.setEntityPrecision(EntityPrecision::Ignore_Package);
        if (withType)
            request.addReferenceTypes({RefEntityType::Property});
        const auto results = ReferenceDataRetriever(request).getReferenceData();
        ASSERT_THAT(dump(results),
                    ElementsAre("scipy:scipy.stats.gaussian_kde.neff[property]@reference/generated/"
                                "scipy.stats.gaussian_kde.neff.html"));
        const auto& item = results[0].getRefItem();
        EXPECT_TRUE(item.getPurpose().starts_with(u"Effective number of datapoints."));
        ASSERT_EQ(item.getClassPropertyGroups().size(), 1u);
        ASSERT_EQ(item.getClassPropertyGroups()[0].getClassProperties().size(), 1u);
        EXPECT_EQ(item.getClassPropertyGroups()[0].getClassProperties()[0].getName(), u"neff");
        EXPECT_THAT(item.getSeeAlsoInfo(),
                    ElementsAre(property::SeeAlso(u"scipy.stats.gaussian_kde.html",
                                                  u"scipy.stats.gaussian_kde")));
    }
}

TEST_F(SciPyTest, ClassIsDescribedAsItsPageDoes) {
    const auto results =
        ReferenceDataRetriever(ReferenceRequest(u"scipy.stats.gaussian_kde")).getReferenceData();
    ASSERT_EQ(results.size(), 1u);
    const auto& item = results[0].getRefItem();
    EXPECT_EQ(item.getPurpose(),
              u"Representation of a kernel-density estimate using Gaussian kernels.");
    EXPECT_EQ(item.getPackageName(), u"scipy.stats");
    EXPECT_EQ(item.getDeprecationStatus(), property::DeprecationStatus::Current);
    ASSERT_EQ(item.getSyntaxGroups().size(), 1u);
    EXPECT_THAT(item.getSyntaxGroups()[0].getSyntaxes(),
                ElementsAre(u"class scipy.stats.gaussian_kde(dataset, bw_method=None, "
                            u"weights=None)"));
    std::vector<std::u16string> inputs;
    for (const auto& input : item.getInputs())
        inputs.push_back(input.getName());
    EXPECT_THAT(inputs, ElementsAre(u"dataset", u"bw_method", u"weights"));
    EXPECT_FALSE(item.getExamples().empty());
}

TEST_F(SciPyTest, ClassSearchYieldsTheClassAndEveryOneOfItsProperties) {
    const auto results = api::ClassEntityDataRetriever(
                             ReferenceRequest(u"scipy.stats.gaussian_kde",
                                              {RefEntityType::Class, RefEntityType::Property}))
                             .getReferenceData();
    ASSERT_FALSE(results.empty());
    EXPECT_EQ(dump(results.front()),
              "scipy:scipy.stats.gaussian_kde[class]@reference/generated/"
              "scipy.stats.gaussian_kde.html");
    std::size_t properties = 0;
    for (const auto& group : results.front().getRefItem().getClassPropertyGroups())
        properties += group.getClassProperties().size();
    EXPECT_GE(properties, 8u);
    EXPECT_EQ(results.size(), properties + 1);
}

TEST_F(SciPyTest, PurposeAndPageSearchesFindTheClass) {
    const auto isClass = [](const ReferenceData& result) {
        return bearsName(result, u"scipy.stats.gaussian_kde");
    };
    EXPECT_TRUE(std::ranges::any_of(
        api::EntityPurposeDataRetriever(ReferenceRequest(u"kernel-density")).getReferenceData(),
        isClass));
    ReferenceRequest page(u"scipy.stats.gaussian_kde.html");
    page.setEntityPrecision(EntityPrecision::Ignore_Package);
    const auto found = api::PageNameDataRetriever(page).getReferenceData();
    ASSERT_EQ(found.size(), 1u);
    EXPECT_TRUE(isClass(found.front()));
}

TEST_F(SciPyTest, TextSearchFindsWordsThatStandOnlyInAParametersDescription) {
    const std::u16string words = u"the samples are assumed to be equally weighted";
    const auto results = api::AllTextDataRetriever(ReferenceRequest(words)).getReferenceData();
    ASSERT_THAT(dump(results),
                ::testing::Contains("scipy:scipy.stats.gaussian_kde[class]@reference/generated/"
                                    "scipy.stats.gaussian_kde.html"));
    const auto found = std::ranges::find_if(results, [](const ReferenceData& result) {
        return bearsName(result, u"scipy.stats.gaussian_kde");
    });
    const auto& item = found->getRefItem();
    EXPECT_EQ(item.getPurpose().find(words), std::u16string::npos);
    EXPECT_EQ(item.getDescription().find(words), std::u16string::npos);
    EXPECT_TRUE(std::ranges::any_of(item.getInputs(), [&](const auto& input) {
        return input.getPurpose().find(words) != std::u16string::npos;
    }));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
