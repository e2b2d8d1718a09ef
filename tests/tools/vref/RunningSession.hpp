#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <boost/json/object.hpp>

namespace reference::tests {

// A running "vref watch --json", spoken to as an editor would. By one thread.
class RunningSession {
  public:
    // `arguments` come after "watch --json"; `environment` is as for runTool().
    explicit RunningSession(const std::vector<std::string>& arguments = {},
                            const std::vector<std::string>& environment = {});
    RunningSession(const RunningSession&) = delete;  // one process, one owner
    RunningSession& operator=(const RunningSession&) = delete;
    ~RunningSession();  // ends the input and waits for the end

    // The next value that the session writes; throws std::runtime_error when it ends instead, or
    // writes something that is no JSON object on a line.
    [[nodiscard]] boost::json::object read();

    // Sends bytes as they are.
    void send(const std::string& bytes);

    // Sends a line and reads up to its answer; notices on the way go to notices().
    boost::json::object ask(const std::string& line);

    // The next line that the session writes; throws std::runtime_error when it ends instead.
    [[nodiscard]] std::string readLine();

    // Sends a request of version 2, with an id of its own, and reads up to its answer; what comes
    // on the way goes to notices().
    boost::json::object call(const std::string& method, const boost::json::object& params = {});

    // The result of such a request; throws std::runtime_error with the error's message instead.
    boost::json::object resultOf(const std::string& method, const boost::json::object& params = {});

    // The notices that ask() and call() have met since this was last called.
    [[nodiscard]] std::vector<boost::json::object> notices();

    // Ends the input, waits, and tells the exit status; what was written to the end is read over.
    [[nodiscard]] int end();

  private:
    struct Process;
    std::unique_ptr<Process> m_process;
    std::vector<boost::json::object> m_notices;
    std::int64_t m_lastId = 0;
};

}  // namespace reference::tests
