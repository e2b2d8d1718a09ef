#include "RunningSession.hpp"

#include <stdexcept>
#include <utility>

#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>
#include <boost/process.hpp>

namespace reference::tests {

namespace process = boost::process;

struct RunningSession::Process {
    process::opstream input;
    process::ipstream output;
    process::child child;
};

RunningSession::RunningSession(const std::vector<std::string>& arguments)
    : m_process(std::make_unique<Process>()) {
    std::vector<std::string> all{"watch", "--json"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    m_process->child =
        process::child(process::exe = VELTRA_VREF, process::args = all,
                       process::std_in<m_process->input, process::std_out> m_process->output);
}

RunningSession::~RunningSession() {
    if (m_process->child.running())
        static_cast<void>(end());
}

boost::json::object RunningSession::read() {
    std::string line;
    if (!std::getline(m_process->output, line))
        throw std::runtime_error("the session ended");
    return boost::json::parse(line).as_object();
}

void RunningSession::send(const std::string& bytes) {
    m_process->input.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    m_process->input.flush();
}

boost::json::object RunningSession::ask(const std::string& line) {
    send(line + "\n");
    while (true) {
        boost::json::object value = read();
        if (value.contains("line"))
            return value;
        m_notices.push_back(std::move(value));
    }
}

std::vector<boost::json::object> RunningSession::notices() {
    return std::exchange(m_notices, {});
}

int RunningSession::end() {
    m_process->input.close();
    m_process->input.pipe().close();
    std::string rest;
    while (std::getline(m_process->output, rest)) {
    }
    m_process->child.wait();
    return m_process->child.exit_code();
}

}  // namespace reference::tests
