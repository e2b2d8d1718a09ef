// What the tool does when its output cannot be written, or nobody reads it.
#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <functional>
#include <stdexcept>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BuiltGadgets.hpp"
#include "support/TempFolder.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;
using Arguments = std::vector<std::string>;

constexpr int unread = 128 + SIGPIPE;

// A descriptor that closes itself.
class Descriptor {
  public:
    explicit Descriptor(int number) : m_number(number) {}
    Descriptor(Descriptor&& other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { close(); }

    void close() {
        if (m_number >= 0)
            ::close(std::exchange(m_number, -1));
    }
    [[nodiscard]] int number() const noexcept { return m_number; }

  private:
    int m_number;
};

struct Pipe {
    Descriptor read;
    Descriptor write;

    static Pipe make() {
        std::array<int, 2> ends{};
        if (::pipe2(ends.data(), O_CLOEXEC) != 0)
            throw std::runtime_error("no pipe");
        return {Descriptor(ends[0]), Descriptor(ends[1])};
    }
};

Descriptor opened(const std::string& path, int flags) {
    return Descriptor(::open(path.c_str(), flags | O_CLOEXEC, 0600));
}

Descriptor fullDevice() {
    return opened("/dev/full", O_WRONLY);
}

// The writing end of a pipe that nobody reads.
Descriptor deafPipe() {
    return std::move(Pipe::make().write);
}

enum class PipeSignal { Ends, IsIgnored };

// A run of the tool with these streams; a negative output stands for a closed one.
class ToolProcess {
  public:
    ToolProcess(
        const Arguments& arguments, int input, int output, PipeSignal pipeSignal,
        const std::function<void()>& prepare = [] {}) {
        std::vector<std::string> words{VELTRA_VREF};
        words.insert(words.end(), arguments.begin(), arguments.end());
        std::vector<char*> pointers;
        for (auto& word : words)
            pointers.push_back(word.data());
        pointers.push_back(nullptr);
        const Descriptor messages =
            opened(m_folder.path() / "messages", O_WRONLY | O_CREAT | O_TRUNC);
        m_child = ::fork();
        if (m_child != 0)
            return;
        ::signal(SIGPIPE, pipeSignal == PipeSignal::Ends ? SIG_DFL : SIG_IGN);
        prepare();
        ::dup2(input, STDIN_FILENO);
        ::dup2(messages.number(), STDERR_FILENO);
        if (output >= 0)
            ::dup2(output, STDOUT_FILENO);
        else
            ::close(STDOUT_FILENO);
        ::execv(pointers.front(), pointers.data());
        ::_exit(127);
    }
    ToolProcess(const ToolProcess&) = delete;
    ToolProcess& operator=(const ToolProcess&) = delete;
    ~ToolProcess() {
        if (m_child > 0)
            static_cast<void>(end());
    }

    // The exit status, or -1 for an end by SIGPIPE. A run that does not end is killed: -9.
    int end() {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        int status = 0;
        while (::waitpid(m_child, &status, WNOHANG) == 0) {
            if (std::chrono::steady_clock::now() > deadline)
                ::kill(m_child, SIGKILL);
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
        m_child = 0;
        if (WIFEXITED(status))
            return WEXITSTATUS(status);
        return WTERMSIG(status) == SIGPIPE ? -1 : -WTERMSIG(status);
    }
    [[nodiscard]] std::string messages() const { return m_folder.read("messages"); }

  private:
    TempFolder m_folder;
    ::pid_t m_child = 0;
};

class OutputFailureTest : public ::testing::Test {
  protected:
    OutputFailureTest() {
        writeGadgets(m_tree, 3, "Turn it.");
        m_set.write("requests", "filter\n");
    }

    // Each command once, as it writes to the standard output stream.
    [[nodiscard]] std::vector<Arguments> commands() const {
        return {
            {"find", "filter"},
            {"find", "--all", "--json"},
            {"find", "no.such.name", "--json"},
            {"show", "Table"},
            {"show", "Table", "--json"},
            {"products"},
            {"products", "--json"},
            {"import", "sphinx", m_tree.path(), "--product", "gadgets", "--into",
             (m_set.path() / "set").string()},
            {"validate", VELTRA_SHIPPED_SET},
            {"warm"},
            {"warm", "--json"},
            {"watch"},
            {"watch", "--json"},
            {"help"},
            {"help", "find"},
            {"--help"},
            {"find", "--help"},
            {"--version"},
        };
    }
    [[nodiscard]] Descriptor requests() const {
        return opened(m_set.path() / "requests", O_RDONLY);
    }

    TempFolder m_tree;
    TempFolder m_set;
};

TEST_F(OutputFailureTest, AFullDeviceIsToldWithItsReasonAndStatusTwo) {
    for (const auto& command : commands()) {
        SCOPED_TRACE(::testing::PrintToString(command));
        ToolProcess run(command, requests().number(), fullDevice().number(), PipeSignal::Ends);
        EXPECT_EQ(run.end(), 2);
        EXPECT_THAT(run.messages(), HasSubstr("vref: The output could not be written: "
                                              "No space left on device.\n"));
    }
}

TEST_F(OutputFailureTest, AClosedStreamIsToldWithItsReasonAndStatusTwo) {
    for (const auto& command : commands()) {
        SCOPED_TRACE(::testing::PrintToString(command));
        ToolProcess run(command, requests().number(), -1, PipeSignal::Ends);
        EXPECT_EQ(run.end(), 2);
        EXPECT_THAT(run.messages(), HasSubstr("could not be written: Bad file descriptor.\n"));
    }
}

TEST_F(OutputFailureTest, APipeThatNobodyReadsEndsTheToolQuietly) {
    for (const auto& command : commands()) {
        SCOPED_TRACE(::testing::PrintToString(command));
        for (const auto signal : {PipeSignal::Ends, PipeSignal::IsIgnored}) {
            ToolProcess run(command, requests().number(), deafPipe().number(), signal);
            const int status = run.end();
            // A session may notice that nobody reads before it writes anything.
            if (command.front() == "watch" && status == unread)
                continue;
            EXPECT_EQ(status, signal == PipeSignal::Ends ? -1 : unread);
            EXPECT_THAT(run.messages(), ::testing::Not(HasSubstr("written")));
        }
    }
}

TEST_F(OutputFailureTest, OutputThatIsCutIsToldAndStatusTwo) {
    const auto whole = (m_set.path() / "whole").string();
    const auto cut = (m_set.path() / "cut").string();
    const Arguments command = {"find", "--all", "--json"};
    EXPECT_EQ(ToolProcess(command, requests().number(), opened(whole, O_WRONLY | O_CREAT).number(),
                          PipeSignal::Ends)
                  .end(),
              0);
    constexpr ::rlim_t limit = 100000;
    ToolProcess run(command, requests().number(), opened(cut, O_WRONLY | O_CREAT).number(),
                    PipeSignal::Ends, [] {
                        ::signal(SIGXFSZ, SIG_DFL);  // ends a process that does not take care
                        const ::rlimit size{.rlim_cur = limit, .rlim_max = limit};
                        ::setrlimit(RLIMIT_FSIZE, &size);
                    });
    EXPECT_EQ(run.end(), 2);
    EXPECT_THAT(run.messages(), HasSubstr("could not be written: File too large.\n"));
    EXPECT_EQ(m_set.read("cut").size(), limit);
    EXPECT_THAT(m_set.read("whole"), StartsWith(m_set.read("cut")));
}

TEST_F(OutputFailureTest, MessagesThatAreLostGiveStatusTwo) {
    const std::string command = "'" VELTRA_VREF "' find no.such.name 2>/dev/full";
    EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 2);
}

class SessionWithoutReaderTest : public ::testing::Test {
  protected:
    // Reads the first line that the session writes.
    void readFirstLine() {
        char unit = 0;
        while (::read(m_output.read.number(), &unit, 1) == 1 && unit != '\n') {
        }
    }
    void send(const std::string& line) {
        ASSERT_EQ(::write(m_input.write.number(), line.data(), line.size()),
                  static_cast<::ssize_t>(line.size()));
    }

    Pipe m_input = Pipe::make();
    Pipe m_output = Pipe::make();
};

TEST_F(SessionWithoutReaderTest, EndsAsSoonAsItsReaderIsGone) {
    ToolProcess run({"watch", "--json"}, m_input.read.number(), m_output.write.number(),
                    PipeSignal::Ends);
    m_output.write.close();
    readFirstLine();
    m_output.read.close();
    EXPECT_EQ(run.end(), unread);
    EXPECT_THAT(run.messages(), IsEmpty());
}

TEST_F(SessionWithoutReaderTest, AnswersToItsEndWhenItsInputEndsFirst) {
    ToolProcess run({"watch", "--json"}, m_input.read.number(), m_output.write.number(),
                    PipeSignal::Ends);
    m_output.write.close();
    readFirstLine();
    send("filter\n");
    readFirstLine();
    m_input.write.close();
    EXPECT_EQ(run.end(), 0);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
