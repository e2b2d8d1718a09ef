// A session of "vref watch --json" in this process.
#pragma once

#include <string>
#include <string_view>

namespace reference::fuzz {

// What the session writes for this input, in lines. The documentation is the one that ships with
// the library, in English.
[[nodiscard]] std::string watched(std::string_view input);

}  // namespace reference::fuzz
