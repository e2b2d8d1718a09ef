// In which language documentation is read where nobody names one.
#include <string>
#include <vector>

#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "RunningTool.hpp"
#include "docset/publish.hpp"
#include "support/LibraryTest.hpp"
#include "support/TempFolder.hpp"
#include "vref/LanguageChoice.hpp"

namespace reference::tools {
namespace VELTRA_TEST_FILE {

using ::testing::HasSubstr;
using tests::ProductBuilder;
using tests::runTool;
using tests::TempFolder;
using tests::ToolRun;
using Texts = std::vector<std::string>;

TEST(LanguageChoiceTest, ALocaleIsMeantByItsNameOrItsLanguage) {
    const Texts locales{"en_US", "pt_PT", "pt_BR", "ja"};
    EXPECT_EQ(localeMeant("en_US", locales), "en_US");
    EXPECT_EQ(localeMeant("EN-us", locales), "en_US");
    EXPECT_EQ(localeMeant("pt", locales), "pt_PT");
    EXPECT_EQ(localeMeant("pt_BR", locales), "pt_BR");
    EXPECT_EQ(localeMeant("ja", locales), "ja");
    EXPECT_EQ(localeMeant("ja_JP", locales), std::nullopt);
    EXPECT_EQ(localeMeant("en_GB", locales), std::nullopt);
    EXPECT_EQ(localeMeant("", locales), std::nullopt);
}

class LocaleTest : public ::testing::Test {
  protected:
    [[nodiscard]] std::string root(const Texts& locales) const {
        const std::string path = m_folder.path() / ("set" + std::to_string(locales.size()));
        for (const auto& locale : locales)
            docset::publishProduct(path, locale,
                                   ProductBuilder(u"p")
                                       .entity(u"f", property::RefEntityType::Function, u"f.html")
                                       .build());
        return path;
    }

    // "ja_JP LANG": the language in force, and the variable or kind that it comes from.
    static std::string language(const std::string& root, const Texts& environment) {
        const ToolRun run = runTool({"config", "--json", "--doc-root", root}, environment);
        const auto told = boost::json::parse(run.output).at("language");
        const auto& from = told.at("from").as_object();
        return std::string(told.at("value").as_string()) + " " +
               std::string(from.contains("name") ? from.at("name").as_string()
                                                 : from.at("kind").as_string());
    }

    TempFolder m_folder;
};

TEST_F(LocaleTest, DecidesWhereNobodyNamesALanguage) {
    const std::string set = root({"ja_JP", "de_DE", "en_US", "pt_BR"});
    struct Case {
        Texts environment;
        const char* language;
    };
    const Case cases[] = {
        {{}, "en_US default"},
        {{"LANG=de_DE.UTF-8"}, "de_DE LANG"},
        {{"LANG=de_DE@euro"}, "de_DE LANG"},
        {{"LANG=de"}, "de_DE LANG"},
        {{"LANG=de_AT.UTF-8"}, "de_DE LANG"},
        {{"LANG=pt-br"}, "pt_BR LANG"},
        {{"LANG=fr_FR.UTF-8"}, "en_US default"},
        {{"LANG=C"}, "en_US default"},
        {{"LANG=C.UTF-8"}, "en_US default"},
        {{"LANG=POSIX"}, "en_US default"},
        {{"LANG=de_DE", "LC_MESSAGES=ja_JP"}, "ja_JP LC_MESSAGES"},
        {{"LANG=de_DE", "LC_MESSAGES=ja_JP", "LC_ALL=pt_BR"}, "pt_BR LC_ALL"},
        {{"LANG=de_DE", "LC_MESSAGES=", "LC_ALL="}, "de_DE LANG"},
        {{"LANG=de_DE", "LC_ALL=C"}, "en_US default"},
        {{"LANG=de_DE", "LANGUAGE=ja"}, "ja_JP LANGUAGE"},
        {{"LANG=de_DE", "LANGUAGE=xx:fr_FR::ja_JP.UTF-8:de"}, "ja_JP LANGUAGE"},
        {{"LANG=de_DE", "LANGUAGE=xx:fr"}, "de_DE LANG"},
        {{"LANG=de_DE", "LANGUAGE=C:ja"}, "en_US default"},
        {{"LANG=C", "LANGUAGE=ja"}, "en_US default"},
        {{"LC_ALL=C.UTF-8", "LANGUAGE=ja"}, "en_US default"},
        {{"LANGUAGE=ja"}, "en_US default"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(language(set, c.environment), c.language)
            << ::testing::PrintToString(c.environment);
}

TEST_F(LocaleTest, ThatTheSetLacksLeavesTheSetsFirst) {
    EXPECT_EQ(language(root({"ja_JP", "pt_BR"}), {"LANG=de_DE"}), "ja_JP default");
}

TEST_F(LocaleTest, DecidesWhatIsRead) {
    const std::string set = root({"en_US", "ja_JP"});
    const std::string product = "\"locale\": \"";
    EXPECT_THAT(runTool({"products", "--json", "--doc-root", set}, {"LANG=ja_JP.UTF-8"}).output,
                HasSubstr(product + "ja_JP"));
    EXPECT_THAT(runTool({"products", "--json", "--doc-root", set}, {"LANG=de_DE.UTF-8"}).output,
                HasSubstr(product + "en_US"));
}

// A language that somebody names is never replaced by another.
TEST_F(LocaleTest, IsNoWayOutForALanguageThatIsNamed) {
    const std::string set = root({"en_US", "ja_JP"});
    for (const char* language : {"de", "de_DE", "ja_XX"}) {
        const ToolRun run =
            runTool({"find", "f", "--doc-root", set, "--language", language}, {"LANG=ja_JP.UTF-8"});
        EXPECT_EQ(run.status, 2);
        EXPECT_THAT(run.messages, HasSubstr("there is: en_US, ja_JP."));
    }
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tools
