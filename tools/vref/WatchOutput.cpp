#include "vref/WatchOutput.hpp"

#include <iostream>
#include <string_view>
#include <unistd.h>
#include <utility>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>

#include "vref/Counted.hpp"
#include "vref/DisplayText.hpp"
#include "vref/ResultJson.hpp"
#include "vref/Terminal.hpp"

namespace reference::tools {
namespace {

namespace json = boost::json;

// Stands in the first message of every session in JSON. Additions that a client may ignore do not
// change it.
constexpr int protocolVersion = 1;

class PersonOutput final : public WatchOutput {
  public:
    explicit PersonOutput(Colours colours) : m_terminal(Terminal::ofStandardOutput(colours)) {}

    void prompt() override {
        if (::isatty(STDIN_FILENO) != 0 && m_terminal.isTerminal())
            std::cout << m_terminal.styled(Style::Faint, "vref> ") << std::flush;
    }

    void answer(std::size_t, const FindOptions& options, const Finding& finding) override {
        writeResults(std::cout, m_terminal, options, finding);
        std::cout.flush();
        for (const auto& message : finding.messages)
            tell(message);
        if (finding.lesson)
            tell(finding.lesson->text + "\n      " + toArguments(finding.lesson->query));
        endAnswer();
    }

    void answerError(std::size_t, const std::string& problem) override {
        tell(problem);
        endAnswer();
    }

    void answerHelp(std::size_t, const std::string& text) override {
        std::cout << text;
        endAnswer();
    }

    void answerDone(std::size_t) override { endAnswer(); }

    void loaded(const std::string& why, const LoadedDocumentation& documentation) override {
        const std::string what = why == "ready" ? "ready"
                                 : why == "language"
                                     ? "the language is now " + documentation.language
                                 : why == "documentation" ? "the documentation has changed"
                                                          : "read anew";
        tell(what + ": " + counted(documentation.products, "product") + ", " +
             counted(documentation.entities, "entity", "entities") + " (" + documentation.language +
             ")" + (why == "ready" ? "; :help tells what may be asked" : ""));
    }

    void warning(const std::string& message) override { tell(message); }

  private:
    static void tell(const std::string& message) {
        std::cerr << "vref: " << printable(message) << '\n';
    }

    static void endAnswer() { std::cout << '\n' << std::flush; }

    const Terminal m_terminal;
};

class ProgramOutput final : public WatchOutput {
  public:
    void prompt() override {}

    void answer(std::size_t line, const FindOptions&, const Finding& finding) override {
        json::array messages;
        for (const auto& message : finding.messages)
            messages.emplace_back(wellFormed(message));
        json::object value{{"line", line},
                           {"total", finding.total},
                           {"results", toJson(finding)},
                           {"messages", std::move(messages)}};
        if (finding.lesson)
            value["suggestion"] = json::object{{"text", wellFormed(finding.lesson->text)},
                                               {"line", toArguments(finding.lesson->query)}};
        write(value);
    }

    void answerError(std::size_t line, const std::string& problem) override {
        write({{"line", line}, {"error", wellFormed(problem)}});
    }

    void answerHelp(std::size_t line, const std::string& text) override {
        write({{"line", line}, {"help", text}});
    }

    void answerDone(std::size_t line) override { write({{"line", line}, {"done", true}}); }

    void loaded(const std::string& why, const LoadedDocumentation& documentation) override {
        json::object value{{"notice", why == "ready" ? "ready" : "reloaded"}};
        if (why == "ready")
            value["protocol"] = protocolVersion;
        else
            value["why"] = why;
        value["language"] = documentation.language;
        value["products"] = documentation.products;
        value["entities"] = documentation.entities;
        write(value);
    }

    void warning(const std::string& message) override {
        write({{"notice", "warning"}, {"text", wellFormed(message)}});
    }

  private:
    static void write(const json::object& value) {
        std::cout << json::serialize(value) << '\n' << std::flush;
    }
};

}  // namespace

WatchOutput::~WatchOutput() = default;

std::unique_ptr<WatchOutput> WatchOutput::forPerson(Colours colours) {
    return std::make_unique<PersonOutput>(colours);
}

std::unique_ptr<WatchOutput> WatchOutput::forProgram() {
    return std::make_unique<ProgramOutput>();
}

}  // namespace reference::tools
