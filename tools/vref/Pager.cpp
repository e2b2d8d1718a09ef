#include "vref/Pager.hpp"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <ctime>
#include <iostream>
#include <optional>
#include <spawn.h>
#include <string_view>
#include <sys/mman.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "files/Descriptor.hpp"
#include "vref/DisplayText.hpp"
#include "vref/Environment.hpp"
#include "vref/OutputFilter.hpp"

namespace reference::tools {
namespace {

// Holds back the signals that would end this process before its pager, which would then be left
// with a terminal that somebody else reads. Those that a person types are the pager's alone.
class SignalsHeldBack {
  public:
    SignalsHeldBack() {
        ::sigemptyset(&m_held);
        for (const int signal : {SIGINT, SIGQUIT, SIGTERM, SIGHUP})
            ::sigaddset(&m_held, signal);
        ::pthread_sigmask(SIG_BLOCK, &m_held, &m_before);
    }
    SignalsHeldBack(const SignalsHeldBack&) = delete;  // one mask to restore
    SignalsHeldBack& operator=(const SignalsHeldBack&) = delete;
    ~SignalsHeldBack() {
        static_cast<void>(forgetTyped());
        ::pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
    }

    [[nodiscard]] const ::sigset_t& maskBefore() const noexcept { return m_before; }

    // Drops what was typed so far; returns whether there was anything.
    bool forgetTyped() {
        ::sigset_t typed;
        ::sigemptyset(&typed);
        ::sigaddset(&typed, SIGINT);
        ::sigaddset(&typed, SIGQUIT);
        const ::timespec noTime{};
        while (::sigtimedwait(&typed, nullptr, &noTime) > 0)
            m_wasTyped = true;
        return m_wasTyped;
    }

  private:
    ::sigset_t m_held{};
    ::sigset_t m_before{};
    bool m_wasTyped = false;
};

// Puts the terminal back into the mode that it had, in case a pager did not.
class TerminalMode {
  public:
    TerminalMode() { m_isKnown = ::tcgetattr(STDOUT_FILENO, &m_mode) == 0; }
    TerminalMode(const TerminalMode&) = delete;  // one mode to restore
    TerminalMode& operator=(const TerminalMode&) = delete;
    ~TerminalMode() {
        if (m_isKnown)
            ::tcsetattr(STDOUT_FILENO, TCSADRAIN, &m_mode);
    }

  private:
    ::termios m_mode{};
    bool m_isKnown;
};

// The environment of this process, with LESS so that less(1) shows colours and links.
std::vector<std::string> pagerEnvironment() {
    constexpr std::string_view name = "LESS=";
    std::vector<std::string> variables;
    for (char** each = environ; *each != nullptr; ++each)
        if (!std::string_view(*each).starts_with(name))
            variables.emplace_back(*each);
    const std::string wishes = environmentText("LESS");
    variables.push_back(std::string(name) + (wishes.empty() ? "FRX" : "-R " + wishes));
    return variables;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

// Whether the command's program is less(1). Others may count the sequences of links as text, and
// break their lines within them.
bool showsLinks(const std::string& command) {
    const std::string program = command.substr(0, command.find(' '));
    return program.substr(program.rfind('/') + 1) == "less";
}

// A file in memory that holds the text, to be read from its start: a pager may be left, or fail,
// without anybody waiting for it to read. Not open where there is none to be had.
files::Descriptor fileWith(std::string_view text) {
    files::Descriptor file(::memfd_create("vref answer", MFD_CLOEXEC));
    while (!text.empty() && file.isOpen()) {
        const auto count = ::write(file.number(), text.data(), text.size());
        if (count < 0)
            return {};
        text.remove_prefix(static_cast<std::size_t>(count));
    }
    if (file.isOpen())
        static_cast<void>(::lseek(file.number(), 0, SEEK_SET));
    return file;
}

// Shows the text with a shell's command, and waits. Returns what went wrong; nothing if the person
// has seen the text, or seen enough of it.
std::optional<std::string> showWith(const std::string& command, std::string_view text) {
    const files::Descriptor file = fileWith(text);
    if (!file.isOpen())
        return std::strerror(errno);
    const TerminalMode mode;
    SignalsHeldBack signals;

    ::posix_spawn_file_actions_t streams;
    ::posix_spawn_file_actions_init(&streams);
    ::posix_spawn_file_actions_adddup2(&streams, file.number(), STDIN_FILENO);
    ::posix_spawnattr_t attributes;
    ::posix_spawnattr_init(&attributes);
    ::posix_spawnattr_setsigmask(&attributes, &signals.maskBefore());
    ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK);
    std::vector<std::string> words{"sh", "-c", command};
    std::vector<std::string> environment = pagerEnvironment();
    ::pid_t child = -1;
    const int error = ::posix_spawn(&child, "/bin/sh", &streams, &attributes,
                                    pointersTo(words).data(), pointersTo(environment).data());
    ::posix_spawnattr_destroy(&attributes);
    ::posix_spawn_file_actions_destroy(&streams);
    if (error != 0)
        return std::strerror(error);

    int status = 0;
    while (::waitpid(child, &status, 0) < 0)
        if (errno != EINTR)
            return std::strerror(errno);
    // Some pagers end with a status of their own, or by the signal, when Ctrl-C leaves them.
    if (signals.forgetTyped() || (WIFEXITED(status) && WEXITSTATUS(status) == 0))
        return std::nullopt;
    return WIFEXITED(status) ? "exit status " + std::to_string(WEXITSTATUS(status))
                             : "ended by signal " + std::to_string(WTERMSIG(status));
}

}  // namespace

PagedOutput::PagedOutput(const Terminal& terminal, std::string pager)
    : m_terminal(terminal), m_pager(std::move(pager)) {}

std::ostream& PagedOutput::stream() {
    return m_terminal.isTerminal() ? m_collected : std::cout;
}

void PagedOutput::show() {
    OutputFilter filter;
    std::string answer(filter.pass(m_collected.str()));
    answer += filter.finish();
    if (!m_pager.empty() && isLong(answer)) {
        std::cout.flush();
        const auto problem = showWith(m_pager, showsLinks(m_pager) ? answer : withoutLinks(answer));
        if (!problem)
            return;
        std::cerr << "vref: the pager \"" << printableLine(m_pager) << "\" failed (" << *problem
                  << "), so this is the answer without it:\n"
                  << std::flush;
    }
    std::cout << answer << std::flush;
}

// The last line of the terminal is the prompt's.
bool PagedOutput::isLong(const std::string& answer) const {
    std::size_t rows = 1;
    for (std::size_t start = 0; start < answer.size() && rows <= m_terminal.height();) {
        const auto end = std::min(answer.find('\n', start), answer.size());
        const std::size_t width =
            displayWidth(withoutEscapes(std::string_view(answer).substr(start, end - start)));
        rows += width == 0 ? 1 : (width + m_terminal.width() - 1) / m_terminal.width();
        start = end + 1;
    }
    return m_terminal.height() > 0 && rows > m_terminal.height();
}

}  // namespace reference::tools
