#include "vref/WatchOutput.hpp"

#include <iostream>
#include <unistd.h>

#include "vref/CommandLineText.hpp"
#include "vref/Counted.hpp"
#include "vref/DisplayText.hpp"
#include "vref/StandardStreams.hpp"
#include "vref/Terminal.hpp"

namespace reference::tools {
namespace {

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
            say(message);
        if (finding.lesson)
            say(printableLine(finding.lesson->text) + "\n      " +
                joinLine(toArguments(finding.lesson->query)));
        endAnswer();
    }

    void answerError(std::size_t, const std::string& problem) override {
        say(problem);
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
        say(what + ": " + counted(documentation.products, "product") + ", " +
            counted(documentation.entities, "entity", "entities") + " (" + documentation.language +
            ")" + (why == "ready" ? "; :help tells what may be asked" : ""));
    }

    void warning(const std::string& message) override { say(message); }

    void flush() override { flushOutput(); }

  private:
    static void endAnswer() { std::cout << '\n' << std::flush; }

    const Terminal m_terminal;
};

}  // namespace

WatchOutput::~WatchOutput() = default;

std::unique_ptr<WatchOutput> WatchOutput::forPerson(Colours colours) {
    return std::make_unique<PersonOutput>(colours);
}

}  // namespace reference::tools
