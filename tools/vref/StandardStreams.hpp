#pragma once

#include <iosfwd>
#include <memory>
#include <stdexcept>
#include <string>

namespace reference::tools {

// Output to a standard stream was lost; what() says why.
class OutputError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Nobody reads the standard output stream any more, as in "vref find --all | head". The tool then
// ends silently: by SIGPIPE if the signal has its default effect, else with this.
class ReaderGone {};

// The standard output and error streams of the process, written so that no failure is missed, and
// that nothing controls a terminal but the tool itself (OutputFilter.hpp): std::cout and std::cerr
// go through this while it lives. On a terminal the only change is that std::cout is written when
// it is flushed, not at each line. One per process.
class StandardStreams {
  public:
    // Also fills in a stream that was closed when the process started; otherwise the next file to
    // be opened would take its place.
    StandardStreams();

    // Writes what is left, without reporting whether that worked.
    ~StandardStreams();
    StandardStreams(const StandardStreams&) = delete;  // the process has one of each
    StandardStreams& operator=(const StandardStreams&) = delete;

    // Whether everything that went to std::cerr was written.
    [[nodiscard]] bool isErrorStreamWhole() const noexcept;

  private:
    class Buffer;
    const std::unique_ptr<Buffer> m_output;
    const std::unique_ptr<Buffer> m_errors;
    std::streambuf* m_outputBefore;
    std::streambuf* m_errorsBefore;

    friend void flushOutput();
};

// Writes a message, any bytes, to std::cerr as a line of the tool's, or as several where it has
// line feeds: what it quotes from elsewhere must be in one line (printableLine). Not flushed.
void say(const std::string& message);

// Writes what is left in std::cout. Throws OutputError when anything that went to it could not be
// written, and ReaderGone when that is because nobody reads it.
void flushOutput();

}  // namespace reference::tools
