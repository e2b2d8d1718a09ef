// Values of Python and of the host, turned into each other.
#pragma once

#include <pybind11/pybind11.h>

#include "vq/vqArray.hpp"
#include "zorb/COSClass.hpp"

namespace veltra::python {

// Makes the Python objects that stand for host objects and enumeration members. The package
// supplies it, because the package makes their classes.
struct Factories {
    pybind11::object makeObject;   // (HostObject) -> the object that stands for it
    pybind11::object makeMember;   // (class name, number) -> member
    pybind11::object objectClass;  // the base of all objects; their _handle is a HostObject
    pybind11::object memberClass;  // the base of all enumerations; their _host_class is their name
    pybind11::object sequenceClass;  // what has elements in an order
};
// Never destroyed, because the interpreter ends before static objects do.
Factories& factories();

// Texts become str, numbers int or float, members and objects the Python objects that stand for
// them, null None; arrays of these, and cells, become lists. A value of one element is a list only
// where `shape` says that there may be several.
[[nodiscard]] pybind11::object toPython(const vqArrayPtr& value, const zorb::Shape& shape);

// The reverse. A sequence that is neither an object nor a buffer becomes an array if its elements
// are of one kind, and a cell array otherwise. Where `shape` asks for members of an enumeration,
// numbers are taken for members; where it asks for a cell array, a sequence becomes one. Everything
// else is passed on unchanged, and the setter refuses it.
//
// Throws "VELTRA:class:UnsupportedValue" for what has no host form, and "VELTRA:class:RequireClass"
// for members of another enumeration than the one that `shape` names.
[[nodiscard]] vqArrayPtr toHost(const pybind11::object& value, const zorb::Shape& shape);

}  // namespace veltra::python
