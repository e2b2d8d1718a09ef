#pragma once

#include <exception>

#include "foundation/core/except/Exception.hpp"

// The errors that the object system raises, each with its identifier; MessageCatalog has the texts.
namespace zorb {

namespace keys {

inline constexpr const char* classCatalog = "VELTRA:class";

struct UndefinedClass {
    static constexpr const char* catalog = classCatalog;
    static constexpr const char* key = "UndefinedClass";
};
struct RequireScalar {
    static constexpr const char* catalog = classCatalog;
    static constexpr const char* key = "RequireScalar";
};
struct RequireEnumeration {
    static constexpr const char* catalog = classCatalog;
    static constexpr const char* key = "RequireEnumeration";
};
struct RequireNumeric {
    static constexpr const char* catalog = classCatalog;
    static constexpr const char* key = "RequireNumeric";
};
struct RequireString {
    static constexpr const char* catalog = classCatalog;
    static constexpr const char* key = "RequireString";
};
struct RequireStringArray {
    static constexpr const char* catalog = classCatalog;
    static constexpr const char* key = "RequireStringArray";
};
struct RequireClass {
    static constexpr const char* catalog = classCatalog;
    static constexpr const char* key = "RequireClass";
};
struct NoConstructor {
    static constexpr const char* catalog = classCatalog;
    static constexpr const char* key = "NoConstructor";
};
struct WrongArgumentCount {
    static constexpr const char* catalog = classCatalog;
    static constexpr const char* key = "WrongArgumentCount";
};

}  // namespace keys

template <typename Key>
using Error = foundation::core::except::Exception<Key, std::exception, void>;

// Arguments: the class's name.
using UndefinedClassError = Error<keys::UndefinedClass>;
// No arguments.
using RequireScalarError = Error<keys::RequireScalar>;
// Arguments: the class of the value.
using RequireEnumerationError = Error<keys::RequireEnumeration>;
using RequireNumericError = Error<keys::RequireNumeric>;
using RequireStringError = Error<keys::RequireString>;
using RequireStringArrayError = Error<keys::RequireStringArray>;
// Arguments: the class that was expected, the class of the value.
using RequireClassError = Error<keys::RequireClass>;
// Arguments: the class's name.
using NoConstructorError = Error<keys::NoConstructor>;
// Arguments: what takes them, how many it takes, how many were given.
using WrongArgumentCountError = Error<keys::WrongArgumentCount>;

}  // namespace zorb
