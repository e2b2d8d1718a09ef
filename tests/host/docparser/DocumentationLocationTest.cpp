// Which documentation a process reads, and what decides it.
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "docparser/DocResourceParser.hpp"
#include "host/docparser/Roots.hpp"
#include "settings/in_veltra/settingsRoot.hpp"
#include "support/MemorySource.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

namespace fs = std::filesystem;
using docparser::DocResourceParser;
using docparser::DocumentationLocation;
using testing::ElementsAre;
using testing::Key;
using testing::SizeIs;
namespace in_veltra = settings::in_veltra;

constexpr const char* rootVariable = "VELTRA_DOC_ROOT";

TEST(DocumentationLocationTest, TheSettingWinsOverTheEnvironmentAndThatOverWhatIsInstalled) {
    const ScopedContext context;
    {
        const ScopedEnvironment environment(rootVariable, std::nullopt);
        const fs::path installed = DocumentationLocation::current().docRoot;
        EXPECT_TRUE(installed.is_absolute());
        EXPECT_EQ(fs::canonical(installed), fs::canonical(VELTRA_SHIPPED_SET));
    }
    const ScopedEnvironment environment(rootVariable, "/from/environment");
    EXPECT_EQ(DocumentationLocation::current().docRoot, "/from/environment");
    context.set(in_veltra::docRootSetting, std::string("/from/setting"));
    EXPECT_EQ(DocumentationLocation::current().docRoot, "/from/setting");
    context.set(in_veltra::docRootSetting, std::string());
    EXPECT_EQ(DocumentationLocation::current().docRoot, "/from/environment");
}

TEST(DocumentationLocationTest, AnEmptyVariableIsNone) {
    const ScopedContext context;
    const ScopedEnvironment environment(rootVariable, "");
    EXPECT_EQ(fs::canonical(DocumentationLocation::current().docRoot),
              fs::canonical(VELTRA_SHIPPED_SET));
}

TEST(DocumentationLocationTest, LanguageAndSupportPackagesAreThoseOfTheSettings) {
    const ScopedContext context;
    EXPECT_EQ(DocumentationLocation::current().language, "");
    EXPECT_TRUE(DocumentationLocation::current().supportPackageRoots.empty());
    context.set(in_veltra::docLanguageSetting, std::string("ja_JP"));
    context.set(in_veltra::supportPackageRootsSetting, std::vector<std::string>{"/one", "/two"});
    const auto location = DocumentationLocation::current();
    EXPECT_EQ(location.language, "ja_JP");
    EXPECT_THAT(location.supportPackageRoots, ElementsAre("/one", "/two"));
}

TEST(DocumentationLocationTest, TheSettingsAreThoseOfTheCurrentContext) {
    const ScopedContext context;
    context.set(in_veltra::docRootSetting, std::string("/from/setting"));
    {
        const ScopedContext other;
        other.set(in_veltra::docRootSetting, std::string("/from/other"));
        EXPECT_EQ(DocumentationLocation::current().docRoot, "/from/other");
    }
    EXPECT_EQ(DocumentationLocation::current().docRoot, "/from/setting");
}

// Puts the default source back when a test ends.
class DocResourceParserTest : public testing::Test {
  protected:
    ~DocResourceParserTest() override { DocResourceParser::setSource(nullptr); }

    ScopedContext context;
};

TEST_F(DocResourceParserTest, ReadsTheInstalledSetByDefaultInTheLanguageThatIsSet) {
    const ScopedEnvironment environment(rootVariable, std::nullopt);
    const auto lookups = DocResourceParser::getResourceLookupFiles();
    EXPECT_THAT(lookups.installed, SizeIs(10));
    EXPECT_THAT(lookups.uninstalled, SizeIs(1));
    EXPECT_TRUE(DocResourceParser::isProductInstalled(u"veltra"));
    EXPECT_THAT(DocResourceParser::ParsingTools::getSupportedDocLocales(),
                ElementsAre(u"en_US", u"ja_JP"));
    const auto english = DocResourceParser::getResourceFile(u"veltra");
    context.set(in_veltra::docLanguageSetting, std::string("ja_JP"));
    const auto japanese = DocResourceParser::getResourceFile(u"veltra");
    const auto& pages = english.at(u"veltra").getItems();
    ASSERT_FALSE(pages.empty());
    for (const auto& [href, items] : pages) {
        ASSERT_TRUE(japanese.at(u"veltra").getItems().contains(href));
        EXPECT_NE(japanese.at(u"veltra").getItems().at(href), items);
    }
}

TEST_F(DocResourceParserTest, ReadsTheRootAndTheSupportPackagesThatAreSet) {
    const TempFolder root;
    const TempFolder package;
    publish(root, makeProduct(u"demo"));
    publish(package, makeProduct(u"extra"));
    context.set(in_veltra::docRootSetting, root.path().string());
    context.set(in_veltra::supportPackageRootsSetting,
                std::vector<std::string>{package.path().string()});
    EXPECT_THAT(DocResourceParser::getResourceLookupFiles().installed,
                ElementsAre(Key(u"demo"), Key(u"extra")));
    const auto roots = DocResourceParser::getReferenceRoots();
    EXPECT_EQ(roots.docRoot, root.path().u16string());
    EXPECT_THAT(roots.supportPackageRoots, ElementsAre(package.path().u16string()));
    EXPECT_THAT(DocResourceParser::getAllProducts(roots.docRoot, {}, u"").products, SizeIs(2));
}

TEST_F(DocResourceParserTest, AsksTheSourceThatWasSetUntilTheDefaultIsPutBack) {
    const TempFolder root;
    publish(root, makeProduct(u"disk"));
    context.set(in_veltra::docRootSetting, root.path().string());
    auto memory = std::make_shared<MemorySource>();
    memory->add(makeProduct(u"memory"));
    const std::weak_ptr<MemorySource> watched = memory;

    DocResourceParser::setSource(memory);
    EXPECT_THAT(DocResourceParser::getResourceLookupFiles().installed, ElementsAre(Key(u"memory")));
    EXPECT_TRUE(DocResourceParser::isProductInstalled(u"memory"));
    DocResourceParser::clearSupportPackageCaches();
    EXPECT_EQ(memory->clearCalls(), 1);
    static_cast<void>(DocResourceParser::getAllProducts(u"memory:", {}, u"en_US"));
    EXPECT_EQ(memory->lastLocale(), u"en_US");

    memory.reset();
    DocResourceParser::setSource(nullptr);
    EXPECT_TRUE(watched.expired());
    EXPECT_THAT(DocResourceParser::getResourceLookupFiles().installed, ElementsAre(Key(u"disk")));
}

TEST_F(DocResourceParserTest, ACallThatHasBegunFinishesWithTheSourceThatItBeganWith) {
    auto memory = std::make_shared<MemorySource>();
    memory->add(makeProduct(u"memory"));
    memory->onLookupFiles([] { DocResourceParser::setSource(std::make_shared<MemorySource>()); });
    DocResourceParser::setSource(std::move(memory));
    EXPECT_THAT(DocResourceParser::getResourceLookupFiles().installed, ElementsAre(Key(u"memory")));
    EXPECT_THAT(DocResourceParser::getResourceLookupFiles().installed, SizeIs(0));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
