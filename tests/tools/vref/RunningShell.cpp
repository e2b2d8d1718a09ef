#include "RunningShell.hpp"

#include <array>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <poll.h>
#include <pty.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "support/TempFolder.hpp"

namespace reference::tests {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

// Sanitizers make the tool slow, and a machine may be busy.
constexpr std::chrono::seconds patience(120);
constexpr const char* endOfLine = "\x05";    // Ctrl-E
constexpr const char* clearLine = "\x15";    // Ctrl-U
constexpr const char* tellTheLine = "\x14";  // Ctrl-T, to which each shell is told to react

const std::string scripts = VELTRA_COMPLETION_SCRIPTS;

// What each shell reads first: it loads the completion as installed, and writes the line into the
// file "line.new" and then renames it to "line" for Ctrl-T.
std::string initOf(Shell shell) {
    switch (shell) {
        case Shell::Bash:
            return "source /usr/share/bash-completion/bash_completion\n"
                   "source '" +
                   scripts +
                   "/vref.bash'\n"
                   "_tell() { printf %s \"$READLINE_LINE\" >line.new; mv line.new line; }\n"
                   "bind -x '\"\\C-t\": _tell'\n"
                   "bind 'set bell-style none'\n";
        case Shell::Zsh:
            return "fpath=('" + scripts +
                   "' $fpath)\n"
                   "autoload -Uz compinit && compinit -D -u\n"
                   "_tell() { printf %s \"$BUFFER\" >line.new; mv line.new line }\n"
                   "zle -N _tell\n"
                   "bindkey -e\n"
                   "bindkey '^T' _tell\n";
        case Shell::Fish:
            return "source '" + scripts +
                   "/vref.fish'\n"
                   "function _tell; commandline >line.new; mv line.new line; end\n"
                   "bind \\ct _tell\n"
                   "set -g fish_greeting\n";
    }
    throw std::logic_error("no such shell");
}

std::vector<std::string> argumentsOf(Shell shell) {
    switch (shell) {
        case Shell::Bash:
            return {"bash", "--noprofile", "--rcfile", ".init", "-i"};
        case Shell::Zsh:
            return {"zsh", "-d", "-i"};  // reads .zshrc in the home folder alone
        case Shell::Fish:
            return {"fish", "--no-config", "--private", "-i", "-C", "source .init"};
    }
    throw std::logic_error("no such shell");
}

}  // namespace

struct RunningShell::Process {
    TempFolder home;
    int terminal = -1;
    pid_t id = -1;
    std::string written;

    void send(const std::string& keys) const {
        if (::write(terminal, keys.data(), keys.size()) != static_cast<::ssize_t>(keys.size()))
            throw std::runtime_error("the shell takes no keys; it wrote: " + written);
    }

    // Reads what the shell writes for a while.
    void listen(std::chrono::milliseconds time) {
        const auto end = Clock::now() + time;
        while (Clock::now() < end) {
            pollfd waiting{.fd = terminal, .events = POLLIN, .revents = 0};
            if (::poll(&waiting, 1, 10) <= 0)
                continue;
            std::array<char, 4096> bytes{};
            const auto count = ::read(terminal, bytes.data(), bytes.size());
            if (count <= 0)
                throw std::runtime_error("the shell ended; it wrote: " + written);
            written.append(bytes.data(), static_cast<std::size_t>(count));
        }
    }

    // Sends the keys, again where `again` is set, until the shell has told its line.
    std::string askForLine(bool again) {
        const fs::path file = home.path() / "line";
        const auto end = Clock::now() + patience;
        send(tellTheLine);
        for (int round = 1; Clock::now() < end; ++round) {
            listen(std::chrono::milliseconds(20));
            if (fs::exists(file)) {
                std::string line = home.read("line");
                fs::remove(file);
                if (line.ends_with('\n'))  // fish ends it so
                    line.pop_back();
                return line;
            }
            if (again && round % 50 == 0)
                send(tellTheLine);
        }
        throw std::runtime_error("the shell does not answer; it wrote: " + written);
    }
};

std::string nameOf(Shell shell) {
    return argumentsOf(shell).front();
}

RunningShell::RunningShell(Shell shell, const std::string& documentation)
    : m_process(std::make_unique<Process>()) {
    m_process->home.write(shell == Shell::Zsh ? ".zshrc" : ".init", initOf(shell));
    const std::string home = m_process->home.path().string();
    const std::string tool = fs::path(VELTRA_VREF).parent_path().string();
    auto arguments = argumentsOf(shell);
    const std::vector<std::string> variables = {"HOME=" + home,
                                                "ZDOTDIR=" + home,
                                                "XDG_CONFIG_HOME=" + home,
                                                "XDG_DATA_HOME=" + home,
                                                "TERM=xterm",
                                                "LANG=C.UTF-8",
                                                "PATH=" + tool + ":/usr/bin:/bin",
                                                "VELTRA_DOC_ROOT=" + documentation};
    std::vector<char*> argv;
    for (auto& argument : arguments)
        argv.push_back(argument.data());
    argv.push_back(nullptr);
    std::vector<std::string> environment = variables;
    std::vector<char*> envp;
    for (auto& variable : environment)
        envp.push_back(variable.data());
    envp.push_back(nullptr);

    const winsize size{.ws_row = 50, .ws_col = 200, .ws_xpixel = 0, .ws_ypixel = 0};
    m_process->id = ::forkpty(&m_process->terminal, nullptr, nullptr, &size);
    if (m_process->id == 0) {
        if (::chdir(home.c_str()) == 0)
            ::execvpe(argv.front(), argv.data(), envp.data());
        ::_exit(127);
    }
    if (m_process->id < 0)
        throw std::runtime_error("no terminal could be made");
    static_cast<void>(m_process->askForLine(true));
    // Keys that were sent before it was ready are answered, too.
    m_process->listen(std::chrono::milliseconds(500));
    fs::remove(m_process->home.path() / "line");
}

RunningShell::~RunningShell() {
    ::kill(m_process->id, SIGKILL);
    ::waitpid(m_process->id, nullptr, 0);
    ::close(m_process->terminal);
}

std::string RunningShell::lineAfter(const std::string& keys) {
    m_process->send(endOfLine);
    m_process->send(clearLine);
    m_process->send(keys);
    return m_process->askForLine(false);
}

void RunningShell::makeFolder(const std::string& name) const {
    fs::create_directories(m_process->home.path() / name);
}

const std::string& RunningShell::written() const {
    return m_process->written;
}

}  // namespace reference::tests
