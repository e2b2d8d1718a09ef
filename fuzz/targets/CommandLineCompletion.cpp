// A command line that a shell asks to be completed: the number of the word that is being typed,
// with "q" after it for words with their quotation marks, and on each line after it a word.
#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/App.hpp>

#include "FuzzTarget.hpp"
#include "FuzzTexts.hpp"
#include "vref/CompleteLine.hpp"
#include "vref/FindCommandLine.hpp"
#include "vref/ImportCommandLine.hpp"
#include "vref/SettingOptions.hpp"

namespace reference::fuzz {
namespace VELTRA_TEST_FILE {

using namespace tools;

// Some commands of the tool, with arguments of each kind.
class CommandLine {
  public:
    CommandLine() : app("Finds and shows reference documentation.", "vref") {
        app.set_version_flag("--version", "1");
        for (const char* const name : {"find", "complete"}) {
            CLI::App& command = *app.add_subcommand(name, "Some command");
            if (name == std::string_view("find"))
                addFindOptions(command, m_find);
            else
                addCompleteOptions(command, m_complete);
            addDocumentationOptions(command, m_given);
            addColoursOption(command, m_given);
            addPagerOption(command, m_given);
        }
        addImportSphinx(*app.add_subcommand("import", "Imports"), m_import);
        app.add_subcommand("validate", "Checks a set")->add_option("ROOT", m_root, "The folder");
        app.add_subcommand("help", "Tells")->add_option("COMMAND", m_helpFor, "The command");
    }

    CLI::App app;

  private:
    FindOptions m_find;
    CompleteOptions m_complete;
    GivenSettings m_given;
    ImportSphinxOptions m_import;
    std::string m_root;
    std::vector<std::string> m_helpFor;
};

// What the completion prints.
std::string printed(const CLI::App& app, const std::vector<std::string>& arguments) {
    std::ostringstream output;
    auto* const before = std::cout.rdbuf(output.rdbuf());
    const int status = completeLine(app, arguments);
    std::cout.rdbuf(before);
    require((status == Success) == !output.str().empty(), "The status says whether there is any");
    return output.str();
}

bool hasControl(std::string_view text) {
    return std::ranges::any_of(text,
                               [](char unit) { return static_cast<unsigned char>(unit) < 0x20; });
}

void run(std::string_view input) {
    static const bool isSet = [] {
        ::setenv("VELTRA_DOC_ROOT", VELTRA_SHIPPED_SET, 1);
        // A person's own file would change what is offered.
        ::setenv("XDG_CONFIG_HOME", "/nowhere", 1);
        return true;
    }();
    static_cast<void>(isSet);
    static const CommandLine commandLine;
    const auto lines = linesOf(input);
    if (lines.empty())
        return;
    auto first = lines.front();
    const auto current = takeWord(first);
    std::vector<std::string> arguments = {"complete", "--words", std::string(current)};
    if (first == "q")
        arguments.emplace_back("--quoted");
    arguments.emplace_back("--");
    const std::size_t begin = arguments.size();
    arguments.insert(arguments.end(), lines.begin() + 1, lines.end());
    // As on a command line, where a word ends with its first zero.
    for (auto& argument : arguments)
        argument = argument.c_str();
    require(isLineCompletion(arguments), "This is a line to be completed");

    const std::string output = printed(commandLine.app, arguments);
    require(output.empty() || output.back() == '\n', "Each line has an end", output);
    const std::size_t word = begin + numberOf(current);
    const std::string typed = word < arguments.size() ? arguments[word] : std::string();
    std::size_t checked = 0;
    for (const auto line : linesOf(output)) {
        const auto tab = line.find('\t');
        require(tab != std::string_view::npos && tab == line.rfind('\t'), "A line has one tab",
                line);
        // What was typed before stays, whatever it was.
        require(hasControl(typed) || !hasControl(line.substr(0, tab)), "A text can be typed", line);
        // What is offered is offered again once it is typed; a few are enough to see that. Of a
        // text with spaces only the last word is completed.
        constexpr std::size_t most = 3;
        if (tab == 0 || line.substr(0, tab).find(' ') != std::string_view::npos || first == "q" ||
            ++checked > most || word > arguments.size())
            continue;
        auto again = arguments;
        again.resize(std::max(again.size(), word + 1));
        again[word] = std::string(line.substr(0, tab));
        if (again[word].find_last_of(".:=,") + 1 == again[word].size())
            continue;
        const std::string more = printed(commandLine.app, again);
        require(more.starts_with(again[word] + "\t") ||
                    more.find("\n" + again[word] + "\t") != std::string::npos,
                "What is offered is offered again", line);
    }
}

const FuzzTarget target("CommandLineCompletion", &run);

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::fuzz
