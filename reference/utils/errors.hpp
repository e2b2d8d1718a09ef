// The errors that the library itself raises against scripts; the host's message catalogue has their
// texts. Internal: no public header includes it, for a client catches IMsgIDException.
#pragma once

#include "zorb/errors.hpp"

namespace reference::utils {

template <foundation::core::FixedString Key>
using LibraryError = zorb::Error<"VELTRA:referenceapi", Key>;

// No arguments.
using ExpectedScalarComparatorError = LibraryError<"ExpectedScalarComparator">;
// Arguments: the class of the value.
using InvalidComparatorError = LibraryError<"InvalidComparator">;
// No arguments.
using ExpectedComparatorCellArrayError = LibraryError<"ExpectedComparatorCellArray">;

}  // namespace reference::utils
