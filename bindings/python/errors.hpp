// The host's errors in Python.
#pragma once

#include <pybind11/pybind11.h>

#include "zorb/errors.hpp"

namespace veltra::python {

// Arguments: the class, the name, the names that there are.
using NoSuchMethodError = zorb::ClassError<"NoSuchMethod">;
using NoSuchPropertyError = zorb::ClassError<"NoSuchProperty">;
// Arguments: the Python type of the value.
using UnsupportedValueError = zorb::ClassError<"UnsupportedValue">;

// Turns everything that is thrown into an exception of `errorClass`, which takes an identifier, the
// arguments of its message and the message. Errors that have an identifier keep it; others get
// "VELTRA:class:OperationFailed".
void translateErrors(pybind11::object errorClass);

}  // namespace veltra::python
