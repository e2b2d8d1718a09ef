#pragma once

#include <ostream>

#include <boost/json/array.hpp>

#include "engines/Rivals.hpp"

namespace reference::bench {

// How long it takes in a running process from nothing to the first answer to an exact name, for
// each that can be opened: the files are in the system's file cache, and nothing of them is in the
// process. Throws std::runtime_error when an answer is wrong. Xapian only `withXapian`.
[[nodiscard]] boost::json::array measureOpening(const SetFolders& folders, bool withXapian,
                                                std::ostream& out);

}  // namespace reference::bench
