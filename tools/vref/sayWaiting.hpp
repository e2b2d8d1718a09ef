#pragma once

#include <string>

namespace reference::tools {

// Says that the documentation set at `root` is being changed by another process, which is waited
// for.
void sayWaiting(const std::string& root);

}  // namespace reference::tools
