// Reads the pages of hits. Internal: no public header includes it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "reference/api/ReferenceData.hpp"
#include "reference/search/ReferenceStore.hpp"

namespace reference::ask {

// The items that document a name of a product, given as its number there: of each of its pages the
// first item that bears it, a property of a class as an item of its own. Empty where the pages
// cannot be read.
[[nodiscard]] std::vector<api::ReferenceData> dataOf(const search::Snapshot& snapshot,
                                                     std::uint32_t product, std::uint32_t key);

}  // namespace reference::ask
