#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace reference::tools {

// Which of the words was most likely meant by `typed`: one that differs from it by at most two
// slips (a letter too many, too few, wrong, or two exchanged), or by one in a short word, ignoring
// letter case; or the only word that begins with it. Nothing when no word is that close.
[[nodiscard]] std::optional<std::string> nearest(std::string_view typed,
                                                 const std::vector<std::string>& words);

}  // namespace reference::tools
