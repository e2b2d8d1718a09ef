#pragma once

#include <filesystem>
#include <ostream>

#include <boost/json/array.hpp>

namespace reference::bench {

// How much memory the process has resident before the library has loaded anything, with the lookups
// of the set loaded, and with all pages. Call it in a process that has done nothing else.
[[nodiscard]] boost::json::array measureMemory(const std::filesystem::path& set, std::ostream& out);

}  // namespace reference::bench
