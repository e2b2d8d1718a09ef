// The errors that the library itself raises against scripts; the host's message catalogue has their
// texts. Internal: no public header includes it, for a client catches IMsgIDException.
#pragma once

#include "zorb/errors.hpp"

namespace reference::utils {

namespace keys {

inline constexpr const char* libraryCatalog = "VELTRA:referenceapi";

struct ExpectedScalarComparator {
    static constexpr const char* catalog = libraryCatalog;
    static constexpr const char* key = "ExpectedScalarComparator";
};
struct InvalidComparator {
    static constexpr const char* catalog = libraryCatalog;
    static constexpr const char* key = "InvalidComparator";
};
struct ExpectedComparatorCellArray {
    static constexpr const char* catalog = libraryCatalog;
    static constexpr const char* key = "ExpectedComparatorCellArray";
};

}  // namespace keys

// No arguments.
using ExpectedScalarComparatorError = zorb::Error<keys::ExpectedScalarComparator>;
// Arguments: the class of the value.
using InvalidComparatorError = zorb::Error<keys::InvalidComparator>;
// No arguments.
using ExpectedComparatorCellArrayError = zorb::Error<keys::ExpectedComparatorCellArray>;

}  // namespace reference::utils
