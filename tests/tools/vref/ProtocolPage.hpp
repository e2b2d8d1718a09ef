#pragma once

#include <string>
#include <vector>

namespace reference::tests {

// The indented lines that follow the given line, below the given heading, on the page about the
// protocol.
[[nodiscard]] std::vector<std::string> exampleAfter(const std::string& heading,
                                                    const std::string& line);

}  // namespace reference::tests
