#include "vref/Browser.hpp"

#include <array>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace reference::tools {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds patience{3000};
constexpr milliseconds interval{10};

bool isSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

// Starts a program in a session of its own, so that closing the terminal does not end it, and
// without the terminal, because what a browser logs is not the tool's output. Negative when it
// cannot be started.
::pid_t start(const std::string& program, const std::string& argument) {
    ::posix_spawn_file_actions_t streams;
    ::posix_spawn_file_actions_init(&streams);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        ::posix_spawn_file_actions_addopen(&streams, stream, "/dev/null", O_RDWR, 0);
    ::posix_spawnattr_t attributes;
    ::posix_spawnattr_init(&attributes);
    ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
    std::string name = program;
    std::string text = argument;
    std::array<char*, 3> words{name.data(), text.data(), nullptr};
    ::pid_t child = -1;
    const int error =
        ::posix_spawnp(&child, program.c_str(), &streams, &attributes, words.data(), environ);
    ::posix_spawnattr_destroy(&attributes);
    ::posix_spawn_file_actions_destroy(&streams);
    return error == 0 ? child : -1;
}

}  // namespace

Opening openInBrowser(const std::string& address) {
    if (!isSet("DISPLAY") && !isSet("WAYLAND_DISPLAY"))
        return Opening::NoBrowser;
    const ::pid_t child = start("xdg-open", address);
    if (child < 0)
        return Opening::NoBrowser;
    int status = 0;
    for (const auto deadline = Clock::now() + patience; Clock::now() < deadline;) {
        const ::pid_t ended = ::waitpid(child, &status, WNOHANG);
        if (ended == child)
            return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? Opening::Done : Opening::Failed;
        if (ended < 0)
            return Opening::Failed;
        std::this_thread::sleep_for(interval);
    }
    return Opening::Done;
}

}  // namespace reference::tools
