// What is configured, what goes before it, and how "vref config" tells.
#include <filesystem>
#include <string>
#include <vector>

#include <boost/json/object.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "RunningSession.hpp"
#include "RunningTool.hpp"
#include "docset/publish.hpp"
#include "rpcResults.hpp"
#include "support/LibraryTest.hpp"
#include "support/TempFolder.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

namespace json = boost::json;
using property::RefEntityType;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

using Texts = std::vector<std::string>;

class ConfigurationTest : public ::testing::Test {
  protected:
    ConfigurationTest() {
        for (const char16_t* name : {u"one", u"two", u"three"})
            docset::publishProduct(
                set(), "en_US",
                ProductBuilder(name).entity(u"f", RefEntityType::Function, u"f.html").build());
        docset::publishProduct(
            set(), "ja_JP",
            ProductBuilder(u"one").entity(u"f", RefEntityType::Function, u"f.html").build());
    }

    [[nodiscard]] std::string set() const { return m_folder.path() / "vref/set"; }
    [[nodiscard]] std::string file() const { return m_folder.path() / "vref/config.toml"; }
    void configure(std::string_view text) const { m_folder.write("vref/config.toml", text); }

    [[nodiscard]] ToolRun run(const Texts& arguments, Texts environment = {}) const {
        environment.push_back("XDG_CONFIG_HOME=" + m_folder.path().string());
        return runTool(arguments, environment);
    }
    [[nodiscard]] json::object config(Texts arguments = {}, Texts environment = {}) const {
        arguments.insert(arguments.begin(), {"config", "--json"});
        return json::parse(run(arguments, std::move(environment)).output).as_object();
    }

    // "value < where it comes from".
    static std::string told(const json::value& setting) {
        const auto& from = setting.at("from").as_object();
        std::string origin(from.at("kind").as_string());
        if (const auto* const name = from.if_contains("name"))
            origin = name->as_string();
        if (const auto* const line = from.if_contains("line"))
            origin += " " + json::serialize(*line);
        return json::serialize(setting.at("value")) + " < " + origin;
    }
    static Texts toldAll(const json::value& settings) {
        Texts all;
        for (const auto& setting : settings.as_array())
            all.push_back(told(setting));
        return all;
    }

    // The products of the entries that a search finds, in order.
    static Texts products(const ToolRun& run) {
        Texts names;
        for (const auto& element : run.json())
            names.emplace_back(element.at("product").as_string());
        return names;
    }

    TempFolder m_folder;
};

TEST_F(ConfigurationTest, AnOptionBeatsTheEnvironmentWhichBeatsTheFile) {
    const json::object defaults = config();
    EXPECT_EQ(told(defaults.at("pager")), "\"less\" < default");
    EXPECT_EQ(told(defaults.at("colours")), "\"auto\" < default");
    EXPECT_EQ(told(defaults.at("language")), "\"en_US\" < default");
    EXPECT_THAT(told(defaults.at("documentation-set")), HasSubstr("< default"));
    EXPECT_FALSE(defaults.at("file").at("exists").as_bool());

    configure(
        "documentation-set = \"set\"\npager = false\ncolours = \"always\"\n\n"
        "language = \"ja\"\n");
    const json::object file = config();
    EXPECT_EQ(file.at("file").at("path").as_string(), this->file());
    EXPECT_TRUE(file.at("file").at("exists").as_bool());
    EXPECT_EQ(told(file.at("documentation-set")), "\"" + set() + "\" < file 1");
    EXPECT_EQ(told(file.at("pager")), "false < file 2");
    EXPECT_EQ(told(file.at("colours")), "\"always\" < file 3");
    EXPECT_EQ(told(file.at("language")), "\"ja_JP\" < file 5");

    const Texts environment{"VELTRA_DOC_ROOT=" VELTRA_SHIPPED_SET, "PAGER=more", "NO_COLOR=1",
                            "LANG=en_US.UTF-8"};
    const json::object variables = config({}, environment);
    EXPECT_EQ(told(variables.at("documentation-set")),
              "\"" VELTRA_SHIPPED_SET "\" < VELTRA_DOC_ROOT");
    EXPECT_EQ(told(variables.at("pager")), "\"more\" < PAGER");
    EXPECT_EQ(told(variables.at("colours")), "\"never\" < NO_COLOR");
    EXPECT_EQ(told(variables.at("language")), "\"ja_JP\" < file 5");

    const json::object options =
        config({"--doc-root", set(), "--colours", "auto", "--language", "en"}, environment);
    EXPECT_EQ(told(options.at("documentation-set")), "\"" + set() + "\" < --doc-root");
    EXPECT_EQ(told(options.at("colours")), "\"auto\" < --colours");
    EXPECT_EQ(told(options.at("language")), "\"en_US\" < --language");
}

TEST_F(ConfigurationTest, PreferredProductsGoFirstInCompletions) {
    docset::publishProduct(
        set(), "en_US",
        ProductBuilder(u"four").entity(u"f", RefEntityType::Class, u"f.html").build());
    configure("documentation-set = \"set\"\npreferred-products = [\"four\"]\n");
    RunningSession session({}, {"XDG_CONFIG_HOME=" + m_folder.path().string()});
    const auto types = [&](const json::object& params) {
        return textsIn(session.resultOf("complete", params), "completions", "type");
    };
    EXPECT_EQ(types({{"prefix", "f"}}), Texts{"class"});
    EXPECT_EQ(types({{"prefix", "f"}, {"prefer", "one"}}), Texts{"function"});
    EXPECT_EQ(session.end(), 0);
}

TEST_F(ConfigurationTest, EveryCommandObeys) {
    configure("documentation-set = \"set\"\nlanguage = \"ja\"\ncolours = \"always\"\n");
    EXPECT_THAT(run({"find", "f"}).output, StartsWith("\033[1mf"));
    EXPECT_THAT(run({"f"}).output, StartsWith("\033[1mf"));
    EXPECT_THAT(run({"show", "f"}).output, StartsWith("\033[1mf\033[0m\n"));
    EXPECT_THAT(run({"products"}).output, AllOf(HasSubstr("three"), HasSubstr("ja_JP")));
    EXPECT_THAT(run({"warm"}).output, HasSubstr("3 products"));
    EXPECT_THAT(run({"watch"}).messages, HasSubstr("3 products, 3 entities (ja_JP)"));
    EXPECT_THAT(run({"watch", "--json"}).output, HasSubstr("\"language\":\"ja_JP\""));
    EXPECT_THAT(run({"open", "f"}).messages, HasSubstr("does not say where the pages"));
}

TEST_F(ConfigurationTest, PreferredProductsGoFirstAfterThoseOfTheCommandLine) {
    EXPECT_EQ(products(run({"find", "f", "--json", "--doc-root", set()})),
              (Texts{"one", "three", "two"}));
    configure("documentation-set = \"set\"\npreferred-products = [\"two\", \"gone\"]\n");
    for (const Texts& how : {Texts{}, Texts{"--exact"}}) {
        Texts arguments{"find", "f", "--json"};
        arguments.insert(arguments.end(), how.begin(), how.end());
        EXPECT_EQ(products(run(arguments)), (Texts{"two", "one", "three"}));
        arguments.insert(arguments.end(), {"--prefer", "three"});
        EXPECT_EQ(products(run(arguments)), (Texts{"three", "two", "one"}));
    }
    EXPECT_EQ(products(run({"show", "f", "--json"})), Texts{"two"});
    EXPECT_EQ(products(run({"show", "f", "--json", "--prefer", "three"})), Texts{"three"});
    const ToolRun unknown = run({"find", "f", "--exact", "--prefer", "gone"});
    EXPECT_EQ(unknown.status, 2);
    EXPECT_THAT(unknown.messages, HasSubstr("no product \"gone\""));

    RunningSession session({}, {"XDG_CONFIG_HOME=" + m_folder.path().string()});
    EXPECT_EQ(textsIn(session.resultOf("ask", {{"question", "f"}}), "hits", "product"),
              (Texts{"two", "one", "three"}));
    EXPECT_EQ(textsIn(session.resultOf("ask", {{"question", "f"}, {"prefer", "three"}}), "hits",
                      "product"),
              (Texts{"three", "two", "one"}));
    EXPECT_EQ(textAt(session.resultOf("show", {{"question", "f"}}), "/hit/product"), "two");
    EXPECT_EQ(session.end(), 0);

    const json::object told = config({"--prefer", "three"});
    EXPECT_EQ(toldAll(told.at("preferred-products")),
              (Texts{"\"three\" < --prefer", "\"two\" < file 2", "\"gone\" < file 2"}));
    EXPECT_TRUE(told.at("preferred-products").at(1).at("installed").as_bool());
    EXPECT_FALSE(told.at("preferred-products").at(2).at("installed").as_bool());
}

TEST_F(ConfigurationTest, AFileThatIsNotRightIsAnErrorWithItsPlace) {
    struct Case {
        const char* text;
        const char* place;
        const char* message;
    };
    const Case cases[] = {
        {"languge = \"ja\"", ":1:1: ", "no key \"languge\"; did you mean \"language\"? There is: "},
        {"\n zzz = 1", ":2:2: ", "no key \"zzz\"; there is: documentation-set, preferred-products"},
        {"[vref]\npager = false", ":1:2: ", "no key \"vref\""},
        {"pager = true", ":1:9: ", "pager: A command in quotation marks, such as \"less\", or fal"},
        {"pager = \"\"", ":1:9: ", "pager: A command"},
        {"language = 3", ":1:12: ", "language: A locale in quotation marks, such as \"ja_JP\""},
        {"language = \"a\\nb\"", ":1:12: ", "language: A locale"},
        {"colours = \"red\"", ":1:11: ", "One of \"auto\", \"always\" and \"never\" was expected"},
        {"preferred-products = \"a\"", ":1:22: ", "A list of short names in quotation marks"},
        {"preferred-products = [\"a\",\n  7]", ":2:3: ", "A product's short name"},
        {"documentation-set = [\"a\"]", ":1:21: ", "A folder in quotation marks"},
        {"documentation-set = \"~other/x\"", ":1:21: ", "A folder in quotation marks"},
        {"documentation-set = \"~/x\"", ":1:21: ", "HOME is not set"},
        {"language = ja", ":1:", "This is not TOML"},
        {"language = \"\xff\"", ":1:", "This is not TOML"},
        {"pager = false\npager = false", ":2:", "This is not TOML"},
    };
    for (const auto& c : cases) {
        configure(c.text);
        for (const char* command : {"config", "find", "products"}) {
            Texts arguments{command, "--doc-root", set()};
            if (command == std::string("find"))
                arguments.emplace_back("f");
            const ToolRun wrong = run(arguments);
            EXPECT_EQ(wrong.status, 2) << c.text;
            EXPECT_THAT(wrong.messages,
                        AllOf(StartsWith("vref: " + file() + c.place), HasSubstr(c.message)));
            EXPECT_THAT(wrong.output, IsEmpty()) << c.text;
        }
    }
}

TEST_F(ConfigurationTest, AFileThatCannotBeReadIsAnError) {
    configure(std::string(16 << 10, '\n'));
    EXPECT_EQ(run({"config"}).status, 0);
    configure(std::string((16 << 10) + 1, '\n'));
    EXPECT_THAT(run({"config"}).messages, HasSubstr("config.toml: The file is larger than"));
    std::filesystem::remove(file());
    std::filesystem::create_directory(file());
    EXPECT_THAT(run({"config"}).messages, HasSubstr("config.toml: This is not a file"));
    std::filesystem::remove(file());
    std::filesystem::create_symlink(file(), file());
    EXPECT_THAT(run({"config"}).messages, HasSubstr("config.toml: The file cannot be read: "));
}

TEST_F(ConfigurationTest, AFileWithNothingInItIsFine) {
    configure("");
    EXPECT_TRUE(config().at("file").at("exists").as_bool());
    configure("# colours = \"red\"\n");
    EXPECT_EQ(told(config().at("colours")), "\"auto\" < default");
}

TEST_F(ConfigurationTest, TheFileIsBelowHomeWhereNoAbsoluteFolderIsNamed) {
    m_folder.write("home/.config/vref/config.toml", "documentation-set = \"~/../vref/set\"\n");
    const std::string home = m_folder.path() / "home";
    for (const char* other : {"XDG_CONFIG_HOME=", "XDG_CONFIG_HOME=vref"}) {
        const ToolRun run = runTool({"config", "--json"}, {"HOME=" + home, other});
        const auto told = json::parse(run.output);
        EXPECT_EQ(told.at("file").at("path").as_string(), home + "/.config/vref/config.toml");
        EXPECT_EQ(told.at("documentation-set").at("value").as_string(), set());
    }
    const ToolRun nowhere = runTool({"config"}, {"HOME=", "XDG_CONFIG_HOME="});
    EXPECT_EQ(nowhere.status, 0);
    EXPECT_THAT(nowhere.output, HasSubstr("neither XDG_CONFIG_HOME nor HOME names a folder"));
}

TEST_F(ConfigurationTest, ItIsToldEvenWhereTheDocumentationCannotBeRead) {
    configure("documentation-set = \"gone\"\nlanguage = \"ja\"\n");
    const ToolRun gone = run({"config"});
    EXPECT_EQ(gone.status, 2);
    EXPECT_THAT(gone.output, HasSubstr("/gone"));
    EXPECT_THAT(gone.messages, HasSubstr("no usable documentation set (" + file() + ":1)."));

    configure("documentation-set = \"set\"\nlanguage = \"de\"\n");
    const ToolRun noGerman = run({"find", "f"});
    EXPECT_EQ(noGerman.status, 2);
    EXPECT_THAT(noGerman.messages,
                HasSubstr("language \"de\" (" + file() + ":2); there is: en_US"));
}

TEST_F(ConfigurationTest, ATextForPeopleHasTheSame) {
    configure("documentation-set = \"set\"\npreferred-products = [\"gone\"]\npager = false\n");
    const std::string text = run({"config"}).output;
    EXPECT_THAT(text, StartsWith("KEY "));
    EXPECT_THAT(text, HasSubstr(file() + ":1\n"));
    EXPECT_THAT(text, HasSubstr("gone (not installed)  "));
    EXPECT_THAT(text, HasSubstr("pager               none"));
    EXPECT_THAT(text, HasSubstr("\n\nThe file is " + file() + ".\n"));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
