#include "vref/Environment.hpp"

#include <cstdlib>

namespace reference::tools {

std::string environmentText(const char* variable) {
    const char* const text = std::getenv(variable);
    return text != nullptr ? text : std::string();
}

}  // namespace reference::tools
