#pragma once

#include <cstddef>
#include <filesystem>
#include <vector>

#include "docset/Fault.hpp"
#include "foundation/core/export.hpp"

namespace reference::docset {

// What the validation of a documentation set found.
struct ValidationReport {
    // In the order of the manifest; empty for a sound set.
    std::vector<Fault> faults;
    std::size_t products = 0;
    std::size_t files = 0;
    std::size_t entities = 0;
    std::size_t items = 0;
};

// Reads every file that the manifest of the set at `root` names, with the aliases beside it, and
// reports each fault: what cannot
// be read, what the format does not know, and where lookup and reference files disagree (a record
// that leads to no item, or to one of another name and kind, an item that no record leads to, a
// property that its class's item does not have, headers that differ). Throws only if memory runs
// out. Any thread.
[[nodiscard]] VELTRA_HOST_API ValidationReport validate(const std::filesystem::path& root);

}  // namespace reference::docset
