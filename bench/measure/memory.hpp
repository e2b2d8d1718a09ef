#pragma once

#include <filesystem>
#include <ostream>

#include <boost/json/object.hpp>

namespace reference::bench {

// How much memory the process has resident before the library has loaded anything, with the lookups
// of the set, with all pages, and after questions that touch much of both ("memory"); and how much
// of it two such processes share ("shared"). Call it in a process that has done nothing else.
[[nodiscard]] boost::json::object measureMemory(const std::filesystem::path& set,
                                                std::ostream& out);

}  // namespace reference::bench
