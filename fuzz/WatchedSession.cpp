#include "WatchedSession.hpp"

#include <cstdlib>
#include <iostream>
#include <sstream>
#include <sys/mman.h>
#include <system_error>
#include <unistd.h>

#include "FuzzTarget.hpp"
#include "vref/Commands.hpp"

namespace reference::fuzz {
namespace {

// Puts bytes in the place of the standard input stream.
class Input {
  public:
    explicit Input(std::string_view bytes)
        : m_before(::dup(STDIN_FILENO)), m_file(::memfd_create("input", MFD_CLOEXEC)) {
        const auto size = static_cast<::ssize_t>(bytes.size());
        if (m_file < 0 || ::write(m_file, bytes.data(), bytes.size()) != size ||
            ::lseek(m_file, 0, SEEK_SET) != 0 || ::dup2(m_file, STDIN_FILENO) < 0)
            throw std::system_error(errno, std::generic_category(), "the input");
    }
    Input(const Input&) = delete;  // there is one stream
    Input& operator=(const Input&) = delete;
    ~Input() {
        ::close(m_file);
        if (m_before >= 0) {
            ::dup2(m_before, STDIN_FILENO);
            ::close(m_before);
        }
    }

  private:
    const int m_before;
    const int m_file;
};

// What goes to a stream.
class Captured {
  public:
    explicit Captured(std::ostream& stream) : m_stream(stream), m_before(stream.rdbuf(&m_text)) {}
    Captured(const Captured&) = delete;  // there is one stream
    Captured& operator=(const Captured&) = delete;
    ~Captured() { m_stream.rdbuf(m_before); }

    [[nodiscard]] std::string text() const { return m_text.str(); }

  private:
    std::ostream& m_stream;
    std::stringbuf m_text;
    std::streambuf* const m_before;
};

}  // namespace

std::string watched(std::string_view input) {
    static const bool isSet = [] {
        ::setenv("VELTRA_DOC_ROOT", VELTRA_SHIPPED_SET, 1);
        // A person's own file would change the answers.
        ::setenv("XDG_CONFIG_HOME", "/nowhere", 1);
        return true;
    }();
    static_cast<void>(isSet);
    tools::GivenSettings given;
    given.language = "en_US";
    const auto configuration = tools::Configuration::inForce(given);
    const Input stream(input);
    const Captured output(std::cout);
    const Captured messages(std::cerr);
    require(tools::watch({.json = true}, configuration) == tools::Success, "A session ends well");
    require(messages.text().empty(), "A program is told nothing elsewhere", messages.text());
    return output.text();
}

}  // namespace reference::fuzz
