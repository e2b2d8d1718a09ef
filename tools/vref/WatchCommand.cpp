#include <chrono>
#include <cstddef>
#include <exception>
#include <functional>
#include <memory>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>

#include <CLI/CLI.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>

#include "fl/i18n/utf.hpp"
#include "vref/CommandLineErrors.hpp"
#include "vref/CommandLineText.hpp"
#include "vref/Commands.hpp"
#include "vref/FindCommandLine.hpp"
#include "vref/LineReader.hpp"
#include "vref/OptionTexts.hpp"
#include "vref/ProgramOutput.hpp"
#include "vref/RpcError.hpp"
#include "vref/RpcMessage.hpp"
#include "vref/RpcMethods.hpp"
#include "vref/RpcSession.hpp"
#include "vref/StandardStreams.hpp"
#include "vref/WatchOutput.hpp"
#include "vref/WatchedDocumentation.hpp"

namespace reference::tools {
namespace {

namespace json = boost::json;

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
        auto arguments = argumentsOf(line);
        if (arguments.empty())
            arguments = splitLine(line);
        // CLI11 takes them from the last to the first.
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
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
        : m_program(options.json ? std::make_unique<ProgramOutput>() : nullptr),
          m_person(options.json ? nullptr : WatchOutput::forPerson(configuration.colours.value)),
          m_output(options.json ? static_cast<WatchOutput&>(*m_program) : *m_person),
          m_usuallyPrefer(configuration.preferredProducts.value),
          m_watched(
              configuration.documentation(),
              [this](const std::string& message) { m_output.warning(message); },
              [this](const std::string& why, const LoadedDocumentation& documentation) {
                  m_output.loaded(why, documentation);
              }),
          m_methods(m_watched, m_usuallyPrefer) {}
    Session(const Session&) = delete;  // the session of this process
    Session& operator=(const Session&) = delete;
    ~Session() = default;

    // Answers lines until there are no more, or the client asks for the end. Throws UnusableError
    // where there are no more because the input cannot be read, OutputError and ReaderGone after an
    // answer that could not be written, and ReaderGone as soon as nobody reads the answers.
    void run() {
        using State = LineReader::State;
        LineReader reader(STDIN_FILENO, STDOUT_FILENO);
        m_output.prompt();
        while (!m_rpc || !m_rpc->isOver()) {
            m_output.flush();
            const auto [state, line] = reader.next(lookAround);
            if (state == State::AtTheEnd)
                break;
            if (state == State::Failed)
                endBadly("The standard input cannot be read: " + line + ".");
            if (state == State::Unread)
                throw ReaderGone();
            if (state != State::NoneYet)
                ++m_line;
            if (m_program && isRpcLine(line, m_rpc.has_value()))
                takeRpc(line, state == State::TooLong);
            else if (m_rpc && state == State::NoneYet)
                followForRpc();
            else
                alone([&, &state = state, &line = line] { takeLine(state, line); });
        }
        if (m_rpc)
            m_rpc->drain();
        m_output.flush();
    }

  private:
    [[noreturn]] void endBadly(const std::string& problem) {
        if (m_rpc)
            m_rpc->drain();
        m_output.flush();
        throw UnusableError(problem);
    }

    // What changes the documentation does not wait for requests of version 2: they may last.
    void followForRpc() {
        if (m_watched.hasChanged())
            m_rpc->readAnew();
    }

    void takeRpc(const std::string& line, bool isTooLong) {
        if (!m_rpc) {
            m_program->speakVersion2();
            m_rpc.emplace(m_methods,
                          [this](const json::value& message) { m_program->send(message); });
        }
        m_watched.documentation().startNewQuestion();
        followForRpc();
        if (isTooLong)
            m_rpc->refuse(RpcError::notRequest(tooLong()));
        else
            m_rpc->take(line);
    }

    void alone(const std::function<void()>& task) {
        if (m_rpc)
            m_rpc->runAlone(task);
        else
            task();
    }

    static std::string tooLong() {
        return "The line is longer than " + std::to_string(LineReader::maxLineLength) + " bytes.";
    }

    // A line of version 1, or none.
    void takeLine(LineReader::State state, const std::string& line) {
        using State = LineReader::State;
        m_watched.documentation().startNewQuestion();
        static_cast<void>(m_watched.followManifests());
        if (state == State::NoneYet)
            return;
        if (state == State::TooLong)
            m_output.answerError(m_line, tooLong());
        else
            answer(line);
        m_output.prompt();
    }

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
            m_output.answerHelp(m_line, helpText());
        } catch (const std::bad_alloc&) {
            m_output.answerError(m_line, "There is not enough memory to answer this.");
        } catch (const std::exception& error) {
            m_output.answerError(m_line, error.what());
        }
    }

    // A program gets what version 1 of the protocol promises: the request of the library.
    [[nodiscard]] FindOptions parseLine(const std::string& line) const {
        FindOptions options = parseRequest(line);
        options.exact = options.exact || m_program;
        if (!m_program)
            options.query.usuallyPrefer = m_usuallyPrefer;
        return options;
    }

    void find(const FindOptions& options) {
        const Documentation& documentation = m_watched.documentation();
        for (int attempt = 1; attempt < maxAttempts; ++attempt) {
            const std::size_t unreadable = documentation.unreadableFiles();
            try {
                const Finding finding = findEntries(options, documentation);
                if (documentation.unreadableFiles() == unreadable || !m_watched.followManifests()) {
                    m_output.answer(m_line, options, finding);
                    return;
                }
            } catch (const std::exception&) {
                if (!m_watched.followManifests())
                    throw;
            }
        }
        m_output.answer(m_line, options, findEntries(options, documentation));
    }

    void obey(const Command& command) {
        if (command.word == "help") {
            m_output.answerHelp(m_line, helpText());
            return;
        }
        if (command.word == "language") {
            if (command.argument.empty())
                throw UnusableError("A language is missing; \":language ja_JP\" names one.");
            static_cast<void>(m_watched.setLanguage(command.argument));
        } else if (command.word == "reload") {
            static_cast<void>(m_watched.reload());
        } else {
            throw UnusableError("There is no command \":" + command.word +
                                "\"; there is: :help, :language, :reload.");
        }
        m_output.answerDone(m_line);
    }

    // One of them.
    const std::unique_ptr<ProgramOutput> m_program;
    const std::unique_ptr<WatchOutput> m_person;
    WatchOutput& m_output;

    const std::vector<std::string> m_usuallyPrefer;
    WatchedDocumentation m_watched;
    DocumentationMethods m_methods;
    std::size_t m_line = 0;
    // From the first message of version 2 on. Last, so that its threads end first.
    std::optional<RpcSession> m_rpc;
};

}  // namespace

ExitStatus watch(const WatchOptions& options, const Configuration& configuration) {
    Session(options, configuration).run();
    return Success;
}

}  // namespace reference::tools
