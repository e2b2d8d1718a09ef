#include <chrono>
#include <cstddef>
#include <exception>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>

#include "fl/i18n/utf.hpp"
#include "foundation/msg_svc/eventmgr/ScopedConnection.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "reference/api/cache_manager/ReferenceDataChangeEvent.hpp"
#include "vref/CommandLineErrors.hpp"
#include "vref/CommandLineText.hpp"
#include "vref/Commands.hpp"
#include "vref/FindCommandLine.hpp"
#include "vref/LineReader.hpp"
#include "vref/ManifestWatch.hpp"
#include "vref/OptionTexts.hpp"
#include "vref/ProductFigures.hpp"
#include "vref/StandardStreams.hpp"
#include "vref/WatchOutput.hpp"
#include "vvm/Factory.hpp"

namespace reference::tools {
namespace {

namespace json = boost::json;
using cache_manager::ReferenceCacheManager;
using cache_manager::ReferenceDataChangeEvent;

// How long a change of the documentation may go unnoticed between requests. Before a request is
// answered, the session always checks.
constexpr std::chrono::milliseconds lookAround{500};

// If a product is replaced for the second time while a request is answered, its files may be gone;
// the request is then repeated. More than a few times in a row is no accident.
constexpr int maxAttempts = 3;

// A line that asks for its own help.
class HelpWanted {};

void requireUtf8(const std::string& line) {
    try {
        static_cast<void>(fl::i18n::toUtf16(line));
    } catch (const std::invalid_argument&) {
        throw UnusableError("The line is not UTF-8.");
    }
}

std::string helpText() {
    FindOptions unused;
    CLI::App app(
        "A line holds the arguments of \"vref find\", with quotes around what has spaces, "
        "or is a JSON array of them: [\"--limit\", \"3\", \"plot\"].");
    app.set_help_flag("-h,--help", "Print this text");
    addFindOptions(app, unused);
    app.footer(
        ":language LOCALE   change the language, as with ja_JP or ja\n"
        ":reload            read the documentation anew\n"
        ":help              this text\n"
        "The session ends with the input.");
    return app.help("");
}

// The arguments that a line holds. Throws UnusableError for a JSON array that holds anything but
// texts.
std::vector<std::string> argumentsOf(const std::string& line) {
    if (!line.starts_with("[\""))
        return {};
    try {
        std::vector<std::string> arguments;
        const json::value parsed = json::parse(line);
        for (const auto& element : parsed.as_array())
            arguments.emplace_back(element.as_string());
        return arguments;
    } catch (const std::exception&) {
        throw UnusableError("The line begins like a JSON array of texts, but is none.");
    }
}

// The search that a line asks for. Throws UnusableError for what "vref find" does not take, and
// HelpWanted.
FindOptions parseRequest(const std::string& line) {
    FindOptions options;
    CLI::App app;
    addFindOptions(app, options);
    requireCleanTexts(app);
    try {
        if (auto arguments = argumentsOf(line); !arguments.empty()) {
            // CLI11 takes them from the last to the first.
            app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
        } else {
            app.parse(line);
        }
    } catch (const CLI::CallForHelp&) {
        throw HelpWanted();
    } catch (const CLI::ParseError& error) {
        throw UnusableError(describe(app, error));
    }
    return options;
}

// A line of the form ":word argument"; a colon alone, or twice, is an operator's name.
struct Command {
    std::string word;
    std::string argument;
};

std::optional<Command> commandIn(const std::string& line) {
    const auto isLetter = [](char unit) { return unit >= 'a' && unit <= 'z'; };
    if (line.size() < 2 || line.front() != ':' || !isLetter(line[1]))
        return std::nullopt;
    const auto end = line.find_first_of(" \t");
    if (end == std::string::npos)
        return Command{.word = line.substr(1), .argument = {}};
    return Command{.word = line.substr(1, end - 1), .argument = trimmed(line.substr(end))};
}

class Session {
  public:
    Session(const WatchOptions& options, const Configuration& configuration)
        : m_isForProgram(options.json),
          m_output(options.json ? WatchOutput::forProgram()
                                : WatchOutput::forPerson(configuration.colours.value)),
          m_usuallyPrefer(configuration.preferredProducts.value),
          m_documentation(configuration.documentation(),
                          [this](const std::string& message) { m_output->warning(message); }) {
        vvm::Factory::makeLocalVVM();
        ReferenceCacheManager::SubscribeToDataChangeEvent(
            m_connection, [this](const ReferenceDataChangeEvent&) { m_isOutdated = true; });
        static_cast<void>(m_manifests.hasChanged(m_documentation.roots()));
        ReferenceCacheManager::PerformStartupOperations();
        m_output->loaded("ready", whatIsLoaded());
    }
    Session(const Session&) = delete;  // the session of this process
    Session& operator=(const Session&) = delete;
    ~Session() { vvm::Factory::setCurrentLocalVVM(nullptr); }

    // Answers lines until there are no more. Throws OutputError and ReaderGone after an answer that
    // could not be written, and ReaderGone as soon as nobody reads the answers.
    void run() {
        using State = LineReader::State;
        LineReader reader(STDIN_FILENO, STDOUT_FILENO);
        m_output->prompt();
        while (true) {
            flushOutput();
            const auto [state, line] = reader.next(lookAround);
            if (state == State::AtTheEnd)
                return;
            if (state == State::Unread)
                throw ReaderGone();
            m_documentation.startNewQuestion();
            followDocumentation();
            if (state == State::NoneYet)
                continue;
            ++m_line;
            if (state == State::TooLong)
                m_output->answerError(m_line, "The line is longer than " +
                                                  std::to_string(LineReader::maxLineLength) +
                                                  " bytes.");
            else
                answer(line);
            m_output->prompt();
        }
    }

  private:
    void answer(const std::string& line) {
        try {
            requireUtf8(line);
            const std::string request = trimmed(line);
            if (request.empty())
                return;
            if (const auto command = commandIn(request))
                obey(*command);
            else
                find(parseLine(request));
        } catch (const HelpWanted&) {
            m_output->answerHelp(m_line, helpText());
        } catch (const std::exception& error) {
            m_output->answerError(m_line, error.what());
        }
    }

    // A program gets what version 1 of the protocol promises: the request of the library.
    [[nodiscard]] FindOptions parseLine(const std::string& line) const {
        FindOptions options = parseRequest(line);
        options.exact = options.exact || m_isForProgram;
        if (!m_isForProgram)
            options.query.usuallyPrefer = m_usuallyPrefer;
        return options;
    }

    void find(const FindOptions& options) {
        for (int attempt = 1; attempt < maxAttempts; ++attempt) {
            const std::size_t unreadable = m_documentation.unreadableFiles();
            try {
                const Finding finding = findEntries(options, m_documentation);
                if (m_documentation.unreadableFiles() == unreadable || !followDocumentation()) {
                    m_output->answer(m_line, options, finding);
                    return;
                }
            } catch (const std::exception&) {
                if (!followDocumentation())
                    throw;
            }
        }
        m_output->answer(m_line, options, findEntries(options, m_documentation));
    }

    void obey(const Command& command) {
        if (command.word == "help") {
            m_output->answerHelp(m_line, helpText());
            return;
        }
        if (command.word == "language") {
            if (command.argument.empty())
                throw UnusableError("A language is missing; \":language ja_JP\" names one.");
            m_documentation.setLanguage(command.argument);
            reloadIfOutdated("language");
        } else if (command.word == "reload") {
            ReferenceCacheManager::ClearAllCaches();
            reloadIfOutdated("request");
        } else {
            throw UnusableError("There is no command \":" + command.word +
                                "\"; there is: :help, :language, :reload.");
        }
        m_output->answerDone(m_line);
    }

    // Reads the documentation anew if its manifest was replaced, and returns whether it did. While
    // a manifest cannot be read, for example because somebody is writing it, what is loaded is
    // kept.
    bool followDocumentation() {
        const auto roots = m_documentation.roots();
        if (!m_manifests.hasChanged(roots))
            return false;
        if (const std::string reason = whyUnreadable(roots.front()); !reason.empty()) {
            m_output->warning(
                "the documentation has changed but cannot be read, so that what is "
                "loaded is kept: " +
                reason);
            return false;
        }
        ReferenceCacheManager::ClearAllCaches();
        reloadIfOutdated("documentation");
        return true;
    }

    // Loads the lookup files again at once, so that the next request need not wait for them.
    void reloadIfOutdated(const std::string& why) {
        if (!std::exchange(m_isOutdated, false))
            return;
        try {
            ReferenceCacheManager::PopulateLookupCaches();
        } catch (const std::exception& error) {
            m_output->warning(error.what());
            return;
        }
        m_output->loaded(why, whatIsLoaded());
    }

    [[nodiscard]] LoadedDocumentation whatIsLoaded() const {
        LoadedDocumentation loaded{.language = m_documentation.language()};
        for (const auto& [name, lookup] : *ReferenceCacheManager::GetLookupCache()) {
            ++loaded.products;
            loaded.entities += countEntities(lookup);
        }
        return loaded;
    }

    const bool m_isForProgram;
    const std::unique_ptr<WatchOutput> m_output;
    const std::vector<std::string> m_usuallyPrefer;
    Documentation m_documentation;
    ManifestWatch m_manifests;
    foundation::msg_svc::eventmgr::ScopedConnection m_connection;
    bool m_isOutdated = false;  // the caches were cleared and are not loaded again
    std::size_t m_line = 0;
};

}  // namespace

ExitStatus watch(const WatchOptions& options, const Configuration& configuration) {
    Session(options, configuration).run();
    return Success;
}

}  // namespace reference::tools
