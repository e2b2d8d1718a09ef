#pragma once

#include <exception>

#include "foundation/core/except/Exception.hpp"

// The errors that the object system raises, each with its identifier; MessageCatalog has the texts.
namespace zorb {

// An error of the scripting language, by its message catalogue and its key there.
template <foundation::core::FixedString Catalog, foundation::core::FixedString Key>
using Error =
    foundation::core::except::Exception<foundation::core::except::MessageKey<Catalog, Key>,
                                        std::exception, void>;

template <foundation::core::FixedString Key>
using ClassError = Error<"VELTRA:class", Key>;

// Arguments: the class's name.
using UndefinedClassError = ClassError<"UndefinedClass">;
// No arguments.
using RequireScalarError = ClassError<"RequireScalar">;
// Arguments: the class of the value.
using RequireEnumerationError = ClassError<"RequireEnumeration">;
using RequireNumericError = ClassError<"RequireNumeric">;
using RequireStringError = ClassError<"RequireString">;
using RequireStringArrayError = ClassError<"RequireStringArray">;
// Arguments: the class that was expected, the class of the value.
using RequireClassError = ClassError<"RequireClass">;
// Arguments: the class's name.
using NoConstructorError = ClassError<"NoConstructor">;
// Arguments: what takes them, how many it takes, how many were given.
using WrongArgumentCountError = ClassError<"WrongArgumentCount">;

}  // namespace zorb
