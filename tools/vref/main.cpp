#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <functional>
#include <iostream>
#include <new>
#include <span>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

#include <CLI/CLI.hpp>
#include <boost/algorithm/string/join.hpp>

#include "foundation/core/TextStream.hpp"
#include "vref/CommandLineErrors.hpp"
#include "vref/Commands.hpp"
#include "vref/CompleteLine.hpp"
#include "vref/Configuration.hpp"
#include "vref/DisplayText.hpp"
#include "vref/FindCommandLine.hpp"
#include "vref/ImportCommandLine.hpp"
#include "vref/Nearest.hpp"
#include "vref/OptionTexts.hpp"
#include "vref/Pager.hpp"
#include "vref/SettingOptions.hpp"
#include "vref/StandardStreams.hpp"
#include "vref/Terminal.hpp"

namespace {

using namespace reference::tools;

// The command line of the tool, and what its commands were told.
class CommandLine {
  public:
    CommandLine() : m_app("Finds and shows reference documentation.", "vref") {
        m_app.set_version_flag("--version", "vref " VELTRA_VERSION);
        m_app.footer(
            "Exit status: 0 found or done, 1 nothing found or not whole, 2 wrong use, broken "
            "documentation, or output that cannot be written.");
        addFind();
        addShow();
        addOpen();
        addComplete();
        addProducts();
        addImport();
        addValidate();
        addCompile();
        addWarm();
        addWatch();
        addConfig();
        addHelp();
        requireCleanTexts(m_app);
    }

    int run(int argc, char** argv) {
        std::vector<std::string> arguments(argv + 1, argv + argc);
        // Not left to CLI11, which would run the commands that help is wanted for.
        if (!arguments.empty() && arguments.front() == "help" &&
            std::ranges::none_of(arguments, [](auto& word) { return word.starts_with('-'); }))
            return help(std::span(arguments).subspan(1));
        // Its words are those of another command line.
        if (isLineCompletion(arguments))
            return completeLine(m_app, arguments);
        // Words without a command are a question.
        if (!arguments.empty() && commandNamed(m_app, arguments.front()) == nullptr &&
            !isOwnOption(arguments.front())) {
            m_find.isWithoutCommand = true;
            arguments.insert(arguments.begin(), "find");
        }
        requireKnownCommand(arguments);
        try {
            // CLI11 takes them from the last to the first.
            m_app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
        } catch (const CLI::ParseError& error) {
            if (error.get_exit_code() == 0) {  // --help and --version
                foundation::core::TextStream text;
                m_app.exit(error, text, text);
                return tell(text.str());
            }
            throw UnusableError(describe(m_app, error) + "\n\"" + helpCommand() + "\" tells more.");
        }
        if (!m_command)
            throw UnusableError("A command is missing; \"vref help\" tells which there are.");
        return m_command();
    }

  private:
    static bool isOwnOption(const std::string& argument) {
        return argument == "--help" || argument == "-h" || argument == "--version";
    }

    // CLI11 treats an unknown command, and everything after it, as unexpected arguments.
    void requireKnownCommand(const std::vector<std::string>& arguments) const {
        const CLI::App* app = &m_app;
        for (const auto& argument : arguments) {
            if (argument.starts_with('-') || app->get_subcommands({}).empty())
                return;
            const CLI::App* const command = commandNamed(*app, argument);
            if (command == nullptr && app == m_importCommand)
                throw UnusableError(describeUnknownImporter(argument));
            if (command == nullptr)
                throw UnusableError(describeUnknownCommand(*app, argument));
            app = command;
        }
        if (app == m_importCommand)
            throw UnusableError(describeMissingImporter());
        if (!app->get_subcommands({}).empty())
            throw UnusableError("A command is missing; \"vref help\" tells which there are.");
    }

    static const CLI::App* commandNamed(const CLI::App& app, const std::string& name) {
        for (const CLI::App* command : app.get_subcommands({}))
            if (command->check_name(name))
                return command;
        return nullptr;
    }

    // The help command for what was parsed: "vref help import sphinx".
    [[nodiscard]] std::string helpCommand() const {
        std::string text = "vref help";
        for (auto parsed = m_app.get_subcommands(); !parsed.empty();
             parsed = parsed.front()->get_subcommands())
            text += " " + parsed.front()->get_name();
        return text;
    }

    void addHelp() {
        CLI::App* command =
            m_app.add_subcommand("help", "Tells about the tool, or about a command");
        command->add_option("COMMAND", m_helpFor, "The command, such as find or import sphinx");
        addPagerOption(*command, m_given);
        command->callback([this] { m_command = [this] { return help(m_helpFor); }; });
    }

    // The help for a command; each word names a command below that of the word before.
    [[nodiscard]] ExitStatus help(std::span<const std::string> words) const {
        const CLI::App* app = &m_app;
        std::string before;
        for (const auto& word : words) {
            const CLI::App* const command = commandNamed(*app, word);
            if (command == nullptr)
                throw UnusableError(describeUnknownCommand(*app, word));
            before += (before.empty() ? "" : " ") + app->get_name();
            app = command;
        }
        return tell(app->help(before));
    }

    [[nodiscard]] ExitStatus tell(const std::string& text) const {
        const auto terminal = Terminal::ofStandardOutput();
        PagedOutput output(terminal, terminal.isTerminal() ? pagerForHelp() : std::string());
        output.stream() << text;
        output.show();
        return Success;
    }

    // A file that is not right does not stand in the way of help; all other commands report it.
    [[nodiscard]] std::string pagerForHelp() const {
        try {
            return Configuration::inForce(m_given).pager.value;
        } catch (const UnusableError&) {
            return Configuration::withoutFile(m_given).pager.value;
        }
    }

    void addFind() {
        CLI::App* command = m_app.add_subcommand(
            "find", "Lists what a question finds; without a command, words are a question, too");
        addFindOptions(*command, m_find);
        addDocumentationOptions(*command, m_given);
        addColoursOption(*command, m_given);
        addPagerOption(*command, m_given);
        command->callback([this] { m_command = [this] { return findOrExplain(); }; });
    }

    // Where words without a command find nothing, the first of them may be a mistyped command.
    ExitStatus findOrExplain() {
        const ExitStatus status = find(m_find, configuration());
        if (status == NothingFound && m_find.isWithoutCommand) {
            const std::string first = m_find.query.name.substr(0, m_find.query.name.find(' '));
            const auto commands = m_app.get_subcommands({});
            std::vector<std::string> names;
            names.reserve(commands.size());
            for (const CLI::App* command : commands)
                names.push_back(command->get_name());
            if (const auto meant = nearest(first, names))
                say("did you mean the command \"" + *meant + "\"?");
        }
        return status;
    }

    static void addWords(CLI::App& command, QueryOptions& query) {
        command
            .add_option_function<std::vector<std::string>>(
                "WORDS",
                [&query](const std::vector<std::string>& words) {
                    query.name = boost::join(words, " ");
                },
                "What \"vref find\" takes, or a page's href")
            ->required();
    }

    void addShow() {
        CLI::App* command = m_app.add_subcommand("show", "Shows one entry as a manual page");
        addWords(*command, m_show.query);
        command
            ->add_option("--nth", m_show.nth,
                         "Not the first entry that is found but this one, counted from 1")
            ->type_name("N")
            ->check(checkPositive);
        addQueryOptions(*command, m_show.query);
        command->add_flag("--json", m_show.json, "Print the entry as a JSON array of one");
        addDocumentationOptions(*command, m_given);
        addColoursOption(*command, m_given);
        addPagerOption(*command, m_given);
        command->callback([this] { m_command = [this] { return show(m_show, configuration()); }; });
    }

    void addOpen() {
        CLI::App* command = m_app.add_subcommand(
            "open", "Opens the page of one entry in the browser, or prints its address");
        addWords(*command, m_open);
        addQueryOptions(*command, m_open);
        addDocumentationOptions(*command, m_given);
        command->callback(
            [this] { m_command = [this] { return openPage(m_open, configuration()); }; });
    }

    void addComplete() {
        CLI::App* command = m_app.add_subcommand(
            "complete", "Lists names that go on from what is typed, for shells and editors");
        addCompleteOptions(*command, m_complete);
        command->footer("Scripts that complete vref in bash, zsh and fish are installed with it.");
        addDocumentationOptions(*command, m_given);
        addColoursOption(*command, m_given);
        command->callback(
            [this] { m_command = [this] { return complete(m_complete, configuration()); }; });
    }

    void addProducts() {
        CLI::App* command = m_app.add_subcommand("products", "Lists the products");
        command->add_flag("--json", m_products.json, "Print the list as a JSON array");
        addDocumentationOptions(*command, m_given);
        addColoursOption(*command, m_given);
        addPagerOption(*command, m_given);
        command->callback(
            [this] { m_command = [this] { return products(m_products, configuration()); }; });
    }

    void addImport() {
        m_importCommand =
            m_app.add_subcommand("import", "Brings documentation into a documentation set");
        CLI::App& command = addImportSphinx(*m_importCommand, m_import);
        command.callback([this] { m_command = [this] { return importSphinx(m_import); }; });
    }

    void addValidate() {
        CLI::App* command = m_app.add_subcommand("validate", "Checks a documentation set");
        command->add_option("ROOT", m_root, "The set's folder")->required();
        command->callback([this] { m_command = [this] { return validate(m_root); }; });
    }

    void addCompile() {
        CLI::App* command = m_app.add_subcommand(
            "compile", "Writes the images from which a documentation set is read quickly");
        command->add_option("ROOT", m_root, "The set's folder")->required();
        command->callback([this] { m_command = [this] { return compile(m_root); }; });
    }

    void addWarm() {
        CLI::App* command = m_app.add_subcommand(
            "warm", "Performs the library's start-up and tells what it logged and loaded");
        command->add_flag("--trace", m_warm.trace, "Also tell when start-up begins and ends");
        command->add_flag("--json", m_warm.json, "Print one JSON object");
        addDocumentationOptions(*command, m_given);
        addColoursOption(*command, m_given);
        command->callback([this] { m_command = [this] { return warm(m_warm, configuration()); }; });
    }

    void addWatch() {
        CLI::App* command = m_app.add_subcommand(
            "watch",
            "Answers a request a line from the standard input, until that ends: the arguments of "
            "\"find\", or \":help\" for the rest. Takes notice when the documentation changes");
        command->add_flag("--json", m_watch.json, "Print one JSON value a line, for a program");
        addDocumentationOptions(*command, m_given);
        addColoursOption(*command, m_given);
        command->callback(
            [this] { m_command = [this] { return watch(m_watch, configuration()); }; });
    }

    void addConfig() {
        CLI::App* command = m_app.add_subcommand(
            "config", "Tells what is configured, and what is in force with these options");
        command->add_flag("--json", m_config.json, "Print one JSON object");
        command->add_option("--prefer", m_config.prefer, "A product that goes first")
            ->type_name("PRODUCT")
            ->allow_extra_args(false);
        addDocumentationOptions(*command, m_given);
        addColoursOption(*command, m_given);
        addPagerOption(*command, m_given);
        command->callback(
            [this] { m_command = [this] { return config(m_config, configuration()); }; });
    }

    // What is in force for the command; queries get to know the products that are preferred.
    Configuration configuration() {
        Configuration inForce = Configuration::inForce(m_given);
        for (QueryOptions* query : {&m_find.query, &m_show.query, &m_open, &m_complete.query})
            query->usuallyPrefer = inForce.preferredProducts.value;
        return inForce;
    }

    CLI::App m_app;
    CLI::App* m_importCommand = nullptr;
    std::vector<std::string> m_helpFor;
    GivenSettings m_given;  // by the one command that is run
    FindOptions m_find;
    ShowOptions m_show;
    QueryOptions m_open;
    CompleteOptions m_complete;
    ProductsOptions m_products;
    ImportSphinxOptions m_import;
    WarmOptions m_warm;
    WatchOptions m_watch;
    ConfigOptions m_config;
    std::string m_root;
    std::function<ExitStatus()> m_command;
};

}  // namespace

namespace {

void sayNoMemory() noexcept {
    constexpr std::string_view text = "vref: There is not enough memory to go on.\n";
    // Where nobody can be told, the exit status is all there is.
    [[maybe_unused]] const auto count = ::write(STDERR_FILENO, text.data(), text.size());
}

// Not every function that may run out of memory may throw, and some libraries take memory before
// main() begins: what would end the process by a signal and the name of an exception ends it with a
// message. Without an exception in flight, there was no memory even for that.
[[noreturn]] void endForWantOfMemory() {
    bool isMemory = true;
    try {
        if (const auto exception = std::current_exception())
            std::rethrow_exception(exception);
    } catch (const std::bad_alloc&) {
        isMemory = true;
    } catch (...) {
        isMemory = false;
    }
    if (!isMemory)
        std::abort();
    sayNoMemory();
    ::_exit(Unusable);
}

void setTerminate() {
    std::set_terminate(&endForWantOfMemory);
}

// Called by the loader before it initialises the libraries.
[[gnu::section(".preinit_array"), gnu::used]] void (*const beforeLibraries)() = &setTerminate;

// A file that may not get larger is an error like any other, to be told; the signal would end the
// tool without a word.
void ignoreFileSizeSignal() {
    struct sigaction action = {};
    action.sa_handler = SIG_IGN;
    ::sigaction(SIGXFSZ, &action, nullptr);
}

int run(int argc, char** argv) {
    StandardStreams streams;
    int status = Unusable;
    try {
        try {
            status = CommandLine().run(argc, argv);
        } catch (const OutputError&) {
            // Reported below.
        } catch (const std::bad_alloc&) {
            say("There is not enough memory for this.");
        } catch (const std::exception& error) {
            say(error.what());
        }
        flushOutput();
    } catch (const ReaderGone&) {
        return Unread;
    } catch (const OutputError& error) {
        say(error.what());
        return Unusable;
    }
    return streams.isErrorStreamWhole() ? status : Unusable;
}

}  // namespace

int main(int argc, char** argv) {
    ignoreFileSizeSignal();
    try {
        prepareDefaultLocale();
        return run(argc, argv);
    } catch (...) {
        // Not even memory for a message is left.
        sayNoMemory();
        return Unusable;
    }
}
