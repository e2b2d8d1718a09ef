#include "RunningSession.hpp"

#include <cstddef>
#include <stdexcept>
#include <utility>

#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>
#include <boost/process.hpp>

namespace reference::tests {

namespace process = boost::process;

struct RunningSession::Process {
    process::opstream input;
    process::ipstream output;
    process::child child;
};

RunningSession::RunningSession(const std::vector<std::string>& arguments,
                               const std::vector<std::string>& environment)
    : m_process(std::make_unique<Process>()) {
    process::environment variables = boost::this_process::environment();
    for (const auto& variable : environment) {
        const std::size_t sign = variable.find('=');
        variables[variable.substr(0, sign)] = variable.substr(sign + 1);
    }
    std::vector<std::string> all{"watch", "--json"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    m_process->child =
        process::child(process::exe = VELTRA_VREF, process::args = all, variables,
                       process::std_in<m_process->input, process::std_out> m_process->output);
}

RunningSession::~RunningSession() {
    if (m_process->child.running())
        static_cast<void>(end());
}

std::string RunningSession::readLine() {
    std::string line;
    if (!std::getline(m_process->output, line))
        throw std::runtime_error("the session ended");
    return line;
}

boost::json::object RunningSession::read() {
    return boost::json::parse(readLine()).as_object();
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

boost::json::object RunningSession::call(const std::string& method,
                                         const boost::json::object& params) {
    const std::int64_t id = ++m_lastId;
    send(boost::json::serialize(boost::json::object{
             {"jsonrpc", "2.0"}, {"id", id}, {"method", method}, {"params", params}}) +
         "\n");
    while (true) {
        boost::json::object value = read();
        if (const auto* const answered = value.if_contains("id");
            answered != nullptr && *answered == id)
            return value;
        m_notices.push_back(std::move(value));
    }
}

boost::json::object RunningSession::resultOf(const std::string& method,
                                             const boost::json::object& params) {
    const boost::json::object answer = call(method, params);
    if (const auto* const error = answer.if_contains("error"))
        throw std::runtime_error(std::string(error->at("message").as_string()));
    return answer.at("result").as_object();
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
