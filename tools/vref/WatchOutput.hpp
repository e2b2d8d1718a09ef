#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "vref/Finding.hpp"
#include "vref/WatchedDocumentation.hpp"

namespace reference::tools {

// How a session speaks to its client. docs/watch-protocol.md has the contract. Each operation
// writes at once; what could not be written is known to flush(). Texts may be any bytes. One thread
// but for warning(); for a program see ProgramOutput.
class WatchOutput {
  public:
    // For a person: lists to the standard output stream, each with an empty line after it, and all
    // else to the standard error stream.
    [[nodiscard]] static std::unique_ptr<WatchOutput> forPerson(Colours colours);

    WatchOutput() = default;
    WatchOutput(const WatchOutput&) = delete;  // there is one client
    WatchOutput& operator=(const WatchOutput&) = delete;
    virtual ~WatchOutput();

    // Prompts for a line if a person is waiting at a terminal.
    virtual void prompt() = 0;

    // The answers to line number `line`; each line that is not blank gets one.
    virtual void answer(std::size_t line, const FindOptions& options, const Finding& finding) = 0;
    virtual void answerError(std::size_t line, const std::string& problem) = 0;
    virtual void answerHelp(std::size_t line, const std::string& text) = 0;
    virtual void answerDone(std::size_t line) = 0;

    // Messages that answer no line: that the documentation was loaded, and `why` ("ready",
    // "language", "documentation", "request"), and what the client should know.
    virtual void loaded(const std::string& why, const LoadedDocumentation& documentation) = 0;
    virtual void warning(const std::string& message) = 0;

    // Throws OutputError and ReaderGone where anything could not be written so far.
    virtual void flush() = 0;
};

}  // namespace reference::tools
