#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace reference::bench {

[[nodiscard]] constexpr bool isAsciiLetter(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

// Calls `run` with each longest piece of the text that is all ASCII letters, or has none, in order.
template <typename Run>
void forEachRun(std::u16string_view text, Run run) {
    while (!text.empty()) {
        const bool isWord = isAsciiLetter(text.front());
        const auto end = std::ranges::find_if(
            text, [&](char16_t unit) { return isAsciiLetter(unit) != isWord; });
        const auto length = static_cast<std::size_t>(end - text.begin());
        run(text.substr(0, length), isWord);
        text.remove_prefix(length);
    }
}

}  // namespace reference::bench
