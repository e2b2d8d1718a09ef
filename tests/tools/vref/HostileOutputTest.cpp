// Documentation and arguments that try to control a terminal, through every command and stream.
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BuiltGadgets.hpp"
#include "RunningSession.hpp"
#include "RunningTool.hpp"
#include "docset/publish.hpp"
#include "fl/i18n/utf.hpp"
#include "support/Items.hpp"
#include "support/LibraryTest.hpp"
#include "support/TempFolder.hpp"
#include "vref/Terminal.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using namespace property;

// A title, a cleared screen, C1 controls, an override, and what would be a line of the tool's.
const std::u16string hostile =
    u"x\u001B]0;owned\a\u001B[2J\u009B31m\u202Egnol\u2028\r\nvref: forged\n\u0085y\u2066z\u007F\b";

// Which bytes of the text a terminal would obey; empty: none, besides line feeds and tabs.
std::string controlsIn(std::string_view text) {
    std::string found;
    const auto units = fl::i18n::toUtf16(text);  // throws for what is no UTF-8
    for (const char16_t unit : units) {
        const bool isPlain = unit == u'\n' || unit == u'\t';
        const bool isControl = unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
        const bool isDirection = (unit >= 0x202A && unit <= 0x202E) ||
                                 (unit >= 0x2066 && unit <= 0x2069) || unit == 0x2028 ||
                                 unit == 0x2029;
        if (!isPlain && (isControl || isDirection))
            found += std::to_string(unit) + " ";
    }
    return found;
}

void expectHarmless(const std::string& what, const std::string& text) {
    EXPECT_EQ(controlsIn(text), "") << what << " writes: " << text;
    EXPECT_THAT("\n" + text, ::testing::Not(::testing::HasSubstr("\nvref: forged"))) << what;
}

class HostileOutputTest : public ::testing::Test {
  protected:
    HostileOutputTest() {
        ItemFields fields{.href = u"x.html",
                          .packageName = hostile,
                          .purpose = hostile,
                          .introduced = hostile,
                          .description = hostile};
        fields.entities = {RefEntity(RefEntityType::Class, hostile, FunctionType::NotCallable)};
        fields.syntaxGroups = {SyntaxGroup(hostile, {hostile})};
        fields.inputs = {Input(hostile, hostile, u"", {hostile})};
        fields.inputGroups = {InputGroup(hostile, {Input(hostile, hostile, u"", {hostile})})};
        fields.outputs = {Output(hostile, hostile, u"", {hostile})};
        fields.classPropertyGroups = {
            ClassPropertyGroup(hostile, {ClassProperty(hostile, hostile, u"", {hostile})})};
        fields.seeAlso = {SeeAlso(u"x.html", hostile)};
        fields.examples = {Example(hostile, hostile)};
        fields.parameters = {Parameter(hostile, hostile, hostile)};
        auto product = ProductBuilder(u"evil" + hostile)
                           .record(hostile, RefEntityType::Class, u"x.html", hostile,
                                   FunctionType::NotCallable)
                           .record(u"plain", RefEntityType::Class, u"x.html", hostile,
                                   FunctionType::NotCallable)
                           .item(makeItem(std::move(fields)))
                           .build();
        product.header.displayName = hostile;
        product.header.version = hostile;
        docset::publishProduct(m_root.path(), "en_US", product);
    }

    // Runs the tool over that set.
    [[nodiscard]] ToolRun run(std::vector<std::string> arguments) const {
        return runTool(arguments, {"VELTRA_DOC_ROOT=" + m_root.path().string()});
    }

    void expectHarmlessRun(const std::vector<std::string>& arguments) const {
        std::string what;
        for (const auto& argument : arguments)
            what += argument + " ";
        const ToolRun ended = run(arguments);
        expectHarmless(what, ended.output);
        expectHarmless(what, ended.messages);
        EXPECT_THAT(ended.output + ended.messages, ::testing::Not(::testing::IsEmpty())) << what;
    }

    [[nodiscard]] const TempFolder& root() const { return m_root; }

  private:
    TempFolder m_root;
};

TEST_F(HostileOutputTest, EveryCommandShowsItHarmlessly) {
    const std::string typed = fl::i18n::toUtf8(hostile);
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {"products"},
             {"find", "plain"},
             {"find", "--all"},
             {"find", "--all", "--long", "--explain"},
             {"find", "--exact", "plain"},
             {"find", typed},
             {"find", "--exact", typed},
             {"find", "--exact", "--type", "class", "PLAIN"},
             {"find", "--product", typed, "plain"},
             {"find", "type:" + typed},
             {"find", "--limit", typed, "plain"},
             {"show", "plain"},
             {"show", typed},
             {"show", "x.html"},
             {"open", "plain"},
             {"complete", "pl"},
             {"complete", ""},
             {"warm", "--trace"},
             {"config"},
             {"validate", root().path().string()},
             {"compile", root().path().string()},
             {typed},
             {"--" + typed},
             {"find", "plain", "--doc-root", typed},
             {"find", "plain", "--language", typed},
         })
        expectHarmlessRun(arguments);
}

// Colours and links are the tool's own; nothing else that begins like them gets through.
TEST_F(HostileOutputTest, WithColoursThereAreNoneButTheToolsOwn) {
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {"products"}, {"find", "--all", "--long"}, {"show", "plain"}}) {
        std::vector<std::string> coloured = arguments;
        coloured.insert(coloured.end(), {"--color", "always"});
        const std::string shown = run(coloured).output;
        EXPECT_THAT(shown, ::testing::HasSubstr("\033["));
        EXPECT_EQ(tools::withoutEscapes(shown), run(arguments).output) << arguments.front();
    }
}

TEST_F(HostileOutputTest, JsonHoldsItWholeAndHarmlessly) {
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"products", "--json"},
                                               {"find", "plain", "--json"},
                                               {"show", "plain", "--json"},
                                               {"warm", "--json"},
                                               {"complete", "pl", "--json"}})
        expectHarmlessRun(arguments);
    const auto item = run({"show", "plain", "--json"}).json().at(0);
    EXPECT_EQ(std::string(item.at("purpose").as_string()), fl::i18n::toUtf8(hostile));
}

TEST_F(HostileOutputTest, FaultsOfFilesAreShownHarmlessly) {
    const std::string name = R"(\u001b]0;owned\u0007\u009b31m\u202e\nvref: forged)";
    root().write("documentation-set.json",
                 R"({"format": "veltra-documentation-set", "formatVersion": 1, "locales": ["en_US"],
                     "products": [{"shortName": ")" +
                     name + R"(", "installed": true, "files": {")" + name +
                     R"(": {"lookup": "a"}}}, {")" + name + R"(": 1}, 2]})");
    expectHarmlessRun({"find", "plain"});
    expectHarmlessRun({"products"});
    expectHarmlessRun({"warm"});
    expectHarmlessRun({"validate", root().path().string()});
    expectHarmlessRun({"compile", root().path().string()});
}

TEST_F(HostileOutputTest, ASessionOfAProgramAnswersHarmlessly) {
    const std::string line = fl::i18n::toUtf8(hostile.substr(0, hostile.find(u'\r')));
    RunningSession session({}, {"VELTRA_DOC_ROOT=" + root().path().string()});
    expectHarmless("the first line", session.readLine());
    for (const std::string& asked :
         {std::string("plain"), "--exact " + line, line, "--type " + line, ":language " + line,
          ":" + line, std::string("--exact PLAIN")}) {
        session.send(asked + "\n");
        expectHarmless(asked, session.readLine());
    }
    session.send(R"({"jsonrpc":"2.0","id":7,"method":"ask","params":{"question":"plain"}})"
                 "\n");
    expectHarmless("ask", session.readLine());
    session.send(R"({"jsonrpc":"2.0","id":8,"method":"\u001b\u009b","params":{}})"
                 "\n");
    expectHarmless("an unknown method", session.readLine());
}

TEST_F(HostileOutputTest, ASessionOfAPersonAnswersHarmlessly) {
    const std::string typed = fl::i18n::toUtf8(hostile);
    root().write("lines", "plain\n--exact PLAIN\n" + typed + "\n:language " + typed + "\n--all\n");
    const std::string command = "VELTRA_DOC_ROOT='" + root().path().string() +
                                "' '" VELTRA_VREF "' watch < '" + root().path().string() +
                                "/lines' 2>&1";
    std::FILE* const pipe = ::popen(command.c_str(), "r");
    ASSERT_NE(pipe, nullptr);
    std::string shown;
    for (int unit = std::getc(pipe); unit != EOF; unit = std::getc(pipe))
        shown += static_cast<char>(unit);
    ::pclose(pipe);
    EXPECT_THAT(shown, ::testing::HasSubstr("ready"));
    expectHarmless("watch", shown);
}

TEST_F(HostileOutputTest, AnImportTellsOfItHarmlessly) {
    const TempFolder tree;
    const std::string typed = "x\033]0;owned\a\u009B31m\u202E";
    tree.write("objects.inv", gadgetInventory("f py:function 1 " + typed + ".html#f -\n" + typed +
                                              " py:class 1 p.html#c -\n" + "g py:" + typed +
                                              " 1 p.html#g -\nno line\n"));
    tree.write("p.html", "<p>x</p>");
    expectHarmlessRun({"import", "sphinx", tree.path().string(), "--into", root().path().string(),
                       "--product", "gadgets", "--force"});
    expectHarmlessRun(
        {"import", "sphinx", typed, "--into", root().path().string(), "--product", "gadgets"});
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
