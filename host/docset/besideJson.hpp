// Internal: no public header includes it.
#pragma once

#include <string>
#include <string_view>

namespace reference::docset {

// The name of a file that stands beside a JSON file and belongs to it: the same name with another
// ending. A name without ".json" gets the ending, too.
[[nodiscard]] inline std::string besideJson(std::string_view jsonFile, std::string_view ending) {
    constexpr std::string_view json = ".json";
    if (jsonFile.ends_with(json))
        jsonFile.remove_suffix(json.size());
    return std::string(jsonFile) + std::string(ending);
}

}  // namespace reference::docset
