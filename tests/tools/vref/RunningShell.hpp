#pragma once

#include <memory>
#include <string>

namespace reference::tests {

enum class Shell { Bash, Zsh, Fish };

[[nodiscard]] std::string nameOf(Shell shell);

// A shell at a terminal, with the tool's completion loaded as it is when it is installed. Its home
// is an empty folder of its own, which is also where it stands. By one thread.
class RunningShell {
  public:
    // `documentation` is VELTRA_DOC_ROOT. Throws std::runtime_error when the shell is missing or
    // does not get ready.
    RunningShell(Shell shell, const std::string& documentation);
    RunningShell(const RunningShell&) = delete;  // one process, one owner
    RunningShell& operator=(const RunningShell&) = delete;
    ~RunningShell();  // ends the shell

    // The line as the shell has it after these keys were typed into an empty line.
    [[nodiscard]] std::string lineAfter(const std::string& keys);

    // Makes an empty folder where the shell stands.
    void makeFolder(const std::string& name) const;

    // All that the shell has written to its terminal.
    [[nodiscard]] const std::string& written() const;

  private:
    struct Process;
    std::unique_ptr<Process> m_process;
};

}  // namespace reference::tests
