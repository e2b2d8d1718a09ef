#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

namespace reference::tests {

// A run of vref by a person: at a terminal of its own (a pseudo terminal, TERM=xterm, which adds a
// carriage return before each line feed). By one thread.
class RunningTerminal {
  public:
    // `environment` has "NAME=value" texts that are set besides.
    explicit RunningTerminal(const std::vector<std::string>& arguments,
                             const std::vector<std::string>& environment = {},
                             unsigned short lines = 24, unsigned short columns = 80);
    RunningTerminal(const RunningTerminal&) = delete;  // one process, one owner
    RunningTerminal& operator=(const RunningTerminal&) = delete;
    ~RunningTerminal();  // kills what still runs

    // Waits until the terminal shows the text; throws std::runtime_error when the run ends first,
    // or after half a minute.
    void waitFor(const std::string& text);

    void type(const std::string& keys) const;

    // Sends a signal to vref alone.
    void signal(int number) const;

    // Waits for the end, and returns the exit status, or -N for an end by the signal N.
    int end();

    // All that the terminal has shown so far, without carriage returns.
    [[nodiscard]] std::string shown() const;

    // Whether the terminal shows what is typed and gives it out by lines, as it did at the start.
    [[nodiscard]] bool isInItsUsualMode() const;

  private:
    [[nodiscard]] bool readMore();  // false at the end

    int m_terminal = -1;
    ::pid_t m_tool = 0;
    std::string m_shown;
};

// Runs vref to its end, and returns what the terminal has shown.
[[nodiscard]] std::string shownAtTerminal(const std::vector<std::string>& arguments,
                                          const std::vector<std::string>& environment = {},
                                          unsigned short lines = 24);

}  // namespace reference::tests
