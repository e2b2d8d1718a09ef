// The one rule by which the library folds letter case. Internal: no public header includes it.
#pragma once

#include <string>
#include <string_view>

namespace reference::utils {

// `text` in lower case, by the host's Unicode mapping. Text that the host refuses (an unpaired
// surrogate in it) comes back unchanged: a search over a thousand texts must not fail for one.
// Any thread.
[[nodiscard]] std::u16string toLowerCopy(std::u16string_view text);

}  // namespace reference::utils
