// The host's errors in Python.
#pragma once

#include <pybind11/pybind11.h>

#include "zorb/errors.hpp"

namespace veltra::python {

namespace keys {

struct NoSuchMethod {
    static constexpr const char* catalog = zorb::keys::classCatalog;
    static constexpr const char* key = "NoSuchMethod";
};
struct NoSuchProperty {
    static constexpr const char* catalog = zorb::keys::classCatalog;
    static constexpr const char* key = "NoSuchProperty";
};
struct UnsupportedValue {
    static constexpr const char* catalog = zorb::keys::classCatalog;
    static constexpr const char* key = "UnsupportedValue";
};

}  // namespace keys

// Arguments: the class, the name, the names that there are.
using NoSuchMethodError = zorb::Error<keys::NoSuchMethod>;
using NoSuchPropertyError = zorb::Error<keys::NoSuchProperty>;
// Arguments: the Python type of the value.
using UnsupportedValueError = zorb::Error<keys::UnsupportedValue>;

// Makes everything that is thrown an exception of `errorClass`, which takes an identifier, the
// arguments of its message and the message: errors that have an identifier with that, others as
// "VELTRA:class:OperationFailed".
void translateErrors(pybind11::object errorClass);

}  // namespace veltra::python
