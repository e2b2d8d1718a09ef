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
    // The command line is wrong, or what the tool stands on is broken.
    Unusable = 2,
};

// Ends the tool with status Unusable; what() tells the user what to do.
class UnusableError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

}  // namespace reference::tools
