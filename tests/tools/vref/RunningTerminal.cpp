#include "RunningTerminal.hpp"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstddef>
#include <poll.h>
#include <pty.h>
#include <stdexcept>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

namespace reference::tests {
namespace {

constexpr int patience = 30'000;  // milliseconds

}  // namespace

RunningTerminal::RunningTerminal(const std::vector<std::string>& arguments,
                                 const std::vector<std::string>& environment, unsigned short lines,
                                 unsigned short columns) {
    std::vector<std::string> words{"env", "TERM=xterm"};
    words.insert(words.end(), environment.begin(), environment.end());
    words.emplace_back(VELTRA_VREF);
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (auto& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    const ::winsize size{.ws_row = lines, .ws_col = columns, .ws_xpixel = 0, .ws_ypixel = 0};
    m_tool = ::forkpty(&m_terminal, nullptr, nullptr, &size);
    if (m_tool < 0)
        throw std::runtime_error("no pseudo terminal");
    if (m_tool == 0) {
        ::execvp(pointers.front(), pointers.data());
        ::_exit(127);
    }
}

RunningTerminal::~RunningTerminal() {
    if (m_tool > 0) {
        ::kill(m_tool, SIGKILL);
        ::waitpid(m_tool, nullptr, 0);
    }
    ::close(m_terminal);
}

bool RunningTerminal::readMore() {
    ::pollfd readable{.fd = m_terminal, .events = POLLIN, .revents = 0};
    if (::poll(&readable, 1, patience) == 0)
        throw std::runtime_error("the terminal shows nothing more: " + m_shown);
    std::array<char, 4096> bytes{};
    const auto count = ::read(m_terminal, bytes.data(), bytes.size());
    if (count <= 0)
        return false;
    std::copy_if(bytes.begin(), bytes.begin() + count, std::back_inserter(m_shown),
                 [](char byte) { return byte != '\r'; });
    return true;
}

void RunningTerminal::waitFor(const std::string& text) {
    while (m_shown.find(text) == std::string::npos)
        if (!readMore())
            throw std::runtime_error("the run ended: " + m_shown);
}

void RunningTerminal::type(const std::string& keys) const {
    if (::write(m_terminal, keys.data(), keys.size()) != static_cast<::ssize_t>(keys.size()))
        throw std::runtime_error("nothing can be typed");
}

void RunningTerminal::signal(int number) const {
    ::kill(m_tool, number);
}

int RunningTerminal::end() {
    while (readMore()) {
    }
    int status = 0;
    ::waitpid(m_tool, &status, 0);
    m_tool = 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

std::string RunningTerminal::shown() const {
    return m_shown;
}

bool RunningTerminal::isInItsUsualMode() const {
    ::termios mode{};
    ::tcgetattr(m_terminal, &mode);
    return (mode.c_lflag & ECHO) != 0 && (mode.c_lflag & ICANON) != 0;
}

std::string shownAtTerminal(const std::vector<std::string>& arguments,
                            const std::vector<std::string>& environment, unsigned short lines) {
    RunningTerminal terminal(arguments, environment, lines);
    static_cast<void>(terminal.end());
    return terminal.shown();
}

}  // namespace reference::tests
