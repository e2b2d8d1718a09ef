// The registry of the host's classes as Python reads it.
#pragma once

#include <pybind11/pybind11.h>
#include <string>

namespace veltra::python {

// All packages that have classes.
[[nodiscard]] pybind11::set packageNames();

// The names of a package's classes, in alphabetical order.
[[nodiscard]] pybind11::list classNames(const std::string& package);

// What is known of a class, or None if there is no such class: a dict with "package", "name",
// "doc", "members" (of (name, number)), "properties" (of (name, doc, shape, settable)), "methods"
// (of (name, doc, shape)) and whether it "isEnumeration" and "isConstructible". A shape is (kind,
// class name, may be null).
[[nodiscard]] pybind11::object describeClass(const std::string& qualifiedName);

}  // namespace veltra::python
