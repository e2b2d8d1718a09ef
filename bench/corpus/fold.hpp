#pragma once

#include <string>
#include <string_view>

namespace reference::bench {

// The text in lower case as the library folds it, so that rivals compare with the same letters.
[[nodiscard]] std::u16string foldCase(std::u16string_view text);

// The same in UTF-8.
[[nodiscard]] std::string folded(std::u16string_view text);

}  // namespace reference::bench
