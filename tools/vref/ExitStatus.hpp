#pragma once

#include <stdexcept>

namespace reference::tools {

// How the tool ends, for those who call it.
enum ExitStatus : int {
    // What was asked for is there.
    Success = 0,
    // The tool worked, but nothing was found, or not everything was whole.
    NothingFound = 1,
    Incomplete = 1,
    // The command line is wrong, what the tool stands on is broken, or the output cannot be
    // written.
    Unusable = 2,
    // Nobody read the output to its end. What a shell reports of a tool that SIGPIPE ended.
    Unread = 128 + 13,
};

// Ends the tool with status Unusable; what() tells the user what to do.
class UnusableError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

}  // namespace reference::tools
