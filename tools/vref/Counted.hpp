#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace reference::tools {

// "1 fault", "2 faults". An irregular plural, such as that of "entity", is passed in.
[[nodiscard]] inline std::string counted(std::size_t count, std::string_view singular,
                                         std::string_view plural = {}) {
    std::string text = std::to_string(count) + " ";
    if (count == 1)
        return text.append(singular);
    return plural.empty() ? text.append(singular) + "s" : text.append(plural);
}

}  // namespace reference::tools
