#include "measure/process.hpp"

#include <algorithm>
#include <cstddef>
#include <fcntl.h>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "measure/Clock.hpp"

namespace reference::bench {
namespace {

double seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

[[noreturn]] void become(const std::vector<std::string>& command) {
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string& argument : command)
        arguments.push_back(const_cast<char*>(argument.c_str()));  // execvp changes nothing
    arguments.push_back(nullptr);
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    dup2(nowhere, STDOUT_FILENO);
    execvp(arguments[0], arguments.data());
    _exit(127);
}

}  // namespace

boost::json::object measureProcess(const std::vector<std::string>& command) {
    constexpr std::size_t repetitions = 5;
    std::vector<double> processor;
    std::vector<double> wall;
    std::vector<long> memory;
    // The first run brings files into the system's cache.
    for (std::size_t n = 0; n <= repetitions; ++n) {
        const double begin = wallSeconds();
        const pid_t child = fork();
        if (child == 0)
            become(command);
        int status = 0;
        rusage usage{};
        if (child < 0 || wait4(child, &status, 0, &usage) != child)
            throw std::runtime_error("Cannot run " + command.front());
        if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
            throw std::runtime_error(command.front() + " failed.");
        if (n == 0)
            continue;
        wall.push_back(wallSeconds() - begin);
        processor.push_back(seconds(usage.ru_utime) + seconds(usage.ru_stime));
        memory.push_back(usage.ru_maxrss);
    }
    std::ranges::sort(processor);
    std::ranges::sort(wall);
    std::ranges::sort(memory);
    return {{"seconds", processor[repetitions / 2]},
            {"wallSeconds", wall[repetitions / 2]},
            {"kilobytes", memory[repetitions / 2]}};
}

}  // namespace reference::bench
