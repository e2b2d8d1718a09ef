// The errors that the library itself raises against scripts; the host's message catalogue has their
// texts. Internal: no public header includes it, for a client catches IMsgIDException.
#pragma once

#include <exception>

#include "foundation/core/except/Exception.hpp"

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

template <typename Key>
using Error = foundation::core::except::Exception<Key, std::exception, void>;

// No arguments.
using ExpectedScalarComparatorError = Error<keys::ExpectedScalarComparator>;
// Arguments: the class of the value.
using InvalidComparatorError = Error<keys::InvalidComparator>;
// No arguments.
using ExpectedComparatorCellArrayError = Error<keys::ExpectedComparatorCellArray>;

}  // namespace reference::utils
