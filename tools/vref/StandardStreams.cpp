#include "vref/StandardStreams.hpp"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <fcntl.h>
#include <iostream>
#include <poll.h>
#include <string>
#include <string_view>
#include <unistd.h>

#include "vref/DisplayText.hpp"
#include "vref/OutputFilter.hpp"

namespace reference::tools {
namespace {

// A closed descriptor would be given to the next file that is opened, which would then receive what
// is written to the stream. What is opened here in its place fails just as a closed one does.
void occupy(int descriptor, int flags) {
    if (::fcntl(descriptor, F_GETFD) >= 0 || errno != EBADF)
        return;
    // open(2) returns the lowest free number; those below this one are already taken.
    static_cast<void>(::open("/dev/null", flags));
}

}  // namespace

// What goes to a descriptor, in pieces; keeps the reason of the first failure and writes nothing
// after it.
class StandardStreams::Buffer final : public std::streambuf {
  public:
    explicit Buffer(int descriptor) : m_descriptor(descriptor) {
        setp(m_bytes.data(), m_bytes.data() + m_bytes.size());
    }

    // Writes what waits for bytes that will not come.
    void finish() {
        writeOut();
        write(m_filter.finish());
    }

    // The errno of the first failure; 0 while there is none.
    [[nodiscard]] int failure() const noexcept { return m_failure; }

  protected:
    int_type overflow(int_type unit) override {
        if (!writeOut())
            return traits_type::eof();
        if (!traits_type::eq_int_type(unit, traits_type::eof()))
            sputc(traits_type::to_char_type(unit));
        return traits_type::not_eof(unit);
    }
    int sync() override { return writeOut() ? 0 : -1; }

  private:
    bool writeOut() {
        write(m_filter.pass({pbase(), static_cast<std::size_t>(pptr() - pbase())}));
        setp(m_bytes.data(), m_bytes.data() + m_bytes.size());
        return m_failure == 0;
    }

    void write(std::string_view bytes) {
        while (!bytes.empty() && m_failure == 0) {
            const auto count = ::write(m_descriptor, bytes.data(), bytes.size());
            if (count >= 0)
                bytes.remove_prefix(static_cast<std::size_t>(count));
            else if (errno == EAGAIN)
                waitUntilWritable();
            else if (errno != EINTR)
                m_failure = errno;
        }
    }

    // Another process that shares the descriptor may have made it non-blocking.
    void waitUntilWritable() const {
        pollfd waiting{.fd = m_descriptor, .events = POLLOUT, .revents = 0};
        static_cast<void>(::poll(&waiting, 1, -1));
    }

    const int m_descriptor;
    int m_failure = 0;
    OutputFilter m_filter;
    std::array<char, OutputFilter::usualSize> m_bytes;
};

StandardStreams::StandardStreams()
    : m_output(std::make_unique<Buffer>(STDOUT_FILENO)),
      m_errors(std::make_unique<Buffer>(STDERR_FILENO)) {
    occupy(STDIN_FILENO, O_WRONLY);
    occupy(STDOUT_FILENO, O_RDONLY);
    occupy(STDERR_FILENO, O_RDONLY);
    m_outputBefore = std::cout.rdbuf(m_output.get());
    m_errorsBefore = std::cerr.rdbuf(m_errors.get());
}

StandardStreams::~StandardStreams() {
    m_output->finish();
    m_errors->finish();
    std::cout.rdbuf(m_outputBefore);
    std::cerr.rdbuf(m_errorsBefore);
}

bool StandardStreams::isErrorStreamWhole() const noexcept {
    return m_errors->failure() == 0;
}

void say(const std::string& message) {
    std::cerr << "vref: " << printable(message) << '\n';
}

void flushOutput() {
    std::cout.flush();
    if (std::cout)
        return;
    const auto* const buffer = dynamic_cast<StandardStreams::Buffer*>(std::cout.rdbuf());
    const int failure = buffer != nullptr ? buffer->failure() : 0;
    if (failure == EPIPE)
        throw ReaderGone();
    throw OutputError(std::string("The output could not be written: ") +
                      std::strerror(failure != 0 ? failure : EIO) + ".");
}

}  // namespace reference::tools
