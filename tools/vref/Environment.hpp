#pragma once

#include <string>

namespace reference::tools {

// The text of an environment variable; empty where it is unset, which means the same as empty for
// all that the tool reads. Any thread, while none changes the environment.
[[nodiscard]] std::string environmentText(const char* variable);

}  // namespace reference::tools
