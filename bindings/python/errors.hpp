// The host's errors in Python.
#pragma once

#include <exception>
#include <pybind11/pybind11.h>

#include "foundation/core/except/Exception.hpp"

namespace veltra::python {

namespace keys {

struct UnsupportedValue {
    static constexpr const char* catalog = "VELTRA:class";
    static constexpr const char* key = "UnsupportedValue";
};

}  // namespace keys

// Arguments: the Python type of the value.
using UnsupportedValueError =
    foundation::core::except::Exception<keys::UnsupportedValue, std::exception, void>;

// Makes everything that is thrown an exception of `errorClass`, which takes an identifier, the
// arguments of its message and the message: errors that have an identifier with that, others as
// "VELTRA:class:OperationFailed".
void translateErrors(pybind11::object errorClass);

}  // namespace veltra::python
