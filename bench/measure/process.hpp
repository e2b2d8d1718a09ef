#pragma once

#include <string>
#include <vector>

#include <boost/json/object.hpp>

namespace reference::bench {

// Runs a program a few times, with its output thrown away, and returns the medians of what the
// system says of it: seconds of processor time and the most memory that it had. Call it in a small
// process, because a new process begins with the memory of the one that made it.
//
// Throws std::runtime_error when the program fails.
[[nodiscard]] boost::json::object measureProcess(const std::vector<std::string>& command);

}  // namespace reference::bench
