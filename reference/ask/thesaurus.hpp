// Words that people use for the same thing. Internal: no public header includes it.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace reference::ask {

// The stems of words that mean what a word with this stem may mean, in no order; not the stem
// itself. Empty for most. Lives as long as the process; any thread.
[[nodiscard]] std::span<const std::string> synonymsOf(std::string_view stem);

}  // namespace reference::ask
