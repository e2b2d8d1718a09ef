#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace settings::core {

// What a setting may hold. The alternative that a setting is declared with stays its type.
using SettingsValue =
    std::variant<bool, std::int64_t, double, std::string, std::vector<std::string>>;

}  // namespace settings::core
