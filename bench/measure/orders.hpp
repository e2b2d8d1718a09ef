#pragma once

#include <filesystem>
#include <ostream>

#include <boost/json/object.hpp>

namespace reference::bench {

// How long it takes to bring 30,000 results of the set, shuffled, into the preferred order: by the
// library's comparator, by sorting rows of ready keys, and by SQLite's ORDER BY over a table in
// memory. All must give the same order. Throws std::runtime_error when they do not, or when the set
// has fewer results.
[[nodiscard]] boost::json::object measureOrders(const std::filesystem::path& set,
                                                std::ostream& out);

}  // namespace reference::bench
