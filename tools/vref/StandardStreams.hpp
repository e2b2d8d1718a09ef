#pragma once

#include <iosfwd>
#include <memory>
#include <stdexcept>

namespace reference::tools {

// What was written to a standard stream is lost; what() says why.
class OutputError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Nobody reads the standard output stream any more, as in "vref find --all | head". The tool ends
// without a word then: by SIGPIPE where the signal has its default effect, else with this.
class ReaderGone {};

// The standard output and error streams of the process, written so that no failure is missed:
// std::cout and std::cerr go through this while it lives. It changes nothing for a terminal but
// that std::cout is written when it is flushed, not at each line. One in a process.
class StandardStreams {
  public:
    // Takes the place of a stream that the process was started without, too, lest the next file
    // that is opened be taken for it.
    StandardStreams();

    // Writes what is left, without telling whether that worked.
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

// Writes what is left in std::cout. Throws OutputError when anything that went to it could not be
// written, and ReaderGone when that is because nobody reads it.
void flushOutput();

}  // namespace reference::tools
