#pragma once

#include <string>
#include <vector>

#include <boost/json/array.hpp>

namespace reference::tests {

// How a run of the tool ended.
struct ToolRun {
    int status = -1;
    std::string output;
    std::string messages;  // of the standard error stream

    // The output as a JSON array; throws when it is none.
    [[nodiscard]] boost::json::array json() const;
};

// Runs vref with these arguments and waits for its end. `environment` has "NAME=value" texts that
// are set besides; what a person may set for the tool is otherwise unset (userEnvironment.cpp).
[[nodiscard]] ToolRun runTool(const std::vector<std::string>& arguments,
                              const std::vector<std::string>& environment = {});

// Such texts, with which the system fails the tool for the files whose names end in `file`: `call`,
// "open" or "read", ends with the number `error`, `times` times or, empty, always.
[[nodiscard]] std::vector<std::string> failing(const std::string& file, const std::string& call,
                                               int error, const std::string& times = {});

}  // namespace reference::tests
