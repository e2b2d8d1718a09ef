#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace reference::docimage {

// What a product's examples call modules and classes, of this product or of another: "np". By alias
// the full names that it stands for ("numpy"), each with how often it was seen.
using Aliases = std::map<std::u16string, std::map<std::u16string, std::uint32_t>>;

}  // namespace reference::docimage
