#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace reference::tools {

// Which of the words somebody who typed `typed` most likely meant: one that differs from it by two
// slips at most (a letter too many, too few, wrong, or two exchanged), or by one in a short word,
// letter case aside; or the only one that begins with it. Nothing when none is that near.
[[nodiscard]] std::optional<std::string> nearest(std::string_view typed,
                                                 const std::vector<std::string>& words);

}  // namespace reference::tools
