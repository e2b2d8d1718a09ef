#pragma once

#include <stdexcept>

namespace reference::tools {

// The tool's exit status, for its callers.
enum ExitStatus : int {
    // What was asked for was found or done.
    Success = 0,
    // The tool worked, but nothing was found, or something was faulty or incomplete.
    NothingFound = 1,
    Incomplete = 1,
    // The command line is wrong, what the tool depends on is broken, or the output cannot be
    // written.
    Unusable = 2,
    // Nobody read the output to its end. A shell reports this status for a tool that SIGPIPE ended.
    Unread = 128 + 13,
};

// Ends the tool with status Unusable; what() tells the user what to do.
class UnusableError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

}  // namespace reference::tools
