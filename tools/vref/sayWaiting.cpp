#include "vref/sayWaiting.hpp"

#include <iostream>

#include "vref/DisplayText.hpp"
#include "vref/StandardStreams.hpp"

namespace reference::tools {

void sayWaiting(const std::string& root) {
    say("waiting for another process that changes the documentation set \"" + printableLine(root) +
        "\"");
    std::cerr.flush();
}

}  // namespace reference::tools
