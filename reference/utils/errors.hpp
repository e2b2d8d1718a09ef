// The errors that the library itself raises against scripts. Their texts, which errors.cpp has, are
// added to the host's message catalogue when the library is loaded. Internal: no public header
// includes it, because clients catch IMsgIDException.
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
// No arguments.
using ExpectedRequestError = LibraryError<"ExpectedRequest">;

}  // namespace reference::utils
