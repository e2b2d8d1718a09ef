// What names are found by besides the whole of them.
#pragma once

#include <cstddef>
#include <string_view>

namespace reference::docimage {

// Components of names are divided by dots, those of hrefs by slashes, too; matching takes both for
// boundaries, and so does this.
inline constexpr std::string_view componentBoundaries = "./";

// A dot at the end is a part of the name, as in the operator "..".
[[nodiscard]] inline std::string_view firstComponent(std::string_view name) {
    const std::size_t dot = name.find('.');
    return dot + 1 == name.size() ? name : name.substr(0, dot);
}

[[nodiscard]] inline std::string_view lastComponent(std::string_view form) {
    return form.substr(form.find_last_of(componentBoundaries) + 1);
}

[[nodiscard]] inline bool hasTwoComponents(std::string_view form) {
    return form.find_first_of(componentBoundaries) != std::string_view::npos;
}

// The whole where there are no more than two.
[[nodiscard]] inline std::string_view lastTwoComponents(std::string_view form) {
    const std::size_t last = form.find_last_of(componentBoundaries);
    if (last == std::string_view::npos || last == 0)
        return form;
    return form.substr(form.find_last_of(componentBoundaries, last - 1) + 1);
}

}  // namespace reference::docimage
