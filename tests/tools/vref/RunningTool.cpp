#include "RunningTool.hpp"

#include <cstdlib>
#include <sys/wait.h>

#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>

#include "support/TempFolder.hpp"

namespace reference::tests {
namespace {

std::string quoted(const std::string& text) {
    std::string result = "'";
    for (const char unit : text)
        result += unit == '\'' ? std::string("'\\''") : std::string(1, unit);
    return result + "'";
}

}  // namespace

boost::json::array ToolRun::json() const {
    return boost::json::parse(output).as_array();
}

ToolRun runTool(const std::vector<std::string>& arguments,
                const std::vector<std::string>& environment) {
    const TempFolder folder;
    std::string command = "env";
    for (const auto& variable : environment)
        command += " " + quoted(variable);
    command += " " VELTRA_VREF;
    for (const auto& argument : arguments)
        command += " " + quoted(argument);
    command += " >" + quoted(folder.path() / "output") + " 2>" +
               quoted(folder.path() / "messages") + " </dev/null";
    const int status = std::system(command.c_str());
    return {.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1,
            .output = folder.read("output"),
            .messages = folder.read("messages")};
}

std::vector<std::string> failing(const std::string& file, const std::string& call, int error,
                                 const std::string& times) {
    std::vector<std::string> variables = {"LD_PRELOAD=" VELTRA_FAILING_FILES,
                                          "VELTRA_FAIL_FILE=" + file, "VELTRA_FAIL_CALL=" + call,
                                          "VELTRA_FAIL_ERRNO=" + std::to_string(error)};
    if (!times.empty())
        variables.push_back("VELTRA_FAIL_TIMES=" + times);
    return variables;
}

}  // namespace reference::tests
