// Reads the pages of hits. Internal: no public header includes it.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "property/RefEntityType.hpp"
#include "reference/api/ReferenceData.hpp"
#include "reference/search/ReferenceStore.hpp"

namespace reference::ask {

// The items that document a name of a product, given as its number there, as entities of these
// types, or of any where there are none: of each of its pages the first item that bears it, a
// property of a class as an item of its own. In the preferred order; empty where the pages cannot
// be read.
[[nodiscard]] std::vector<api::ReferenceData> dataOf(
    const search::Snapshot& snapshot, std::uint32_t product, std::uint32_t key,
    std::span<const property::RefEntityType::Value> types);

}  // namespace reference::ask
