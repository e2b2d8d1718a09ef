// The part of the package veltra that is written in C++: reading the registry, and using host
// objects.
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>
#include <string>
#include <vector>

#include "HostObject.hpp"
#include "Interpreter.hpp"
#include "errors.hpp"
#include "foundation/core/except/MessageCatalog.hpp"
#include "question.hpp"
#include "registry.hpp"
#include "values.hpp"

namespace py = pybind11;
using namespace veltra::python;

PYBIND11_MODULE(_veltra, module) {
    waitForOperationsAtExit();
    module.doc() = "The bridge to the host's object system. Use the package veltra instead.";
    py::class_<HostObject> hostObject(module, "HostObject");
    hostObject.def_property_readonly("class_name", &HostObject::className)
        .def_property_readonly("key", &HostObject::key)
        .def("get", &HostObject::get)
        .def("set", &HostObject::set)
        .def("call", &HostObject::call);
    // One that was allocated but not made would be a wild pointer.
    hostObject.attr("__new__") = py::cpp_function([](const py::args&, const py::kwargs&) {
        throw py::type_error("Only the bridge makes a HostObject.");
    });
    module.def("construct", &HostObject::construct);

    module.def("ask", &ask);
    module.def("package_names", &packageNames);
    module.def("class_names", &classNames);
    module.def("describe_class", &describeClass);
    module.def("message", [](const std::string& identifier, const std::vector<std::string>& texts) {
        return foundation::core::except::MessageCatalog::getText(identifier, texts);
    });
    module.def("live_counts", [] {
        return py::make_tuple(vqArray::getNumberOfLiveArrays(),
                              zorb::COSInterface::getNumberOfLiveObjects());
    });

    module.def("install", [](const py::object& makeObject, const py::object& makeMember,
                             const py::object& objectClass, const py::object& memberClass,
                             const py::object& errorClass) {
        factories() = {.makeObject = makeObject,
                       .makeMember = makeMember,
                       .objectClass = objectClass,
                       .memberClass = memberClass,
                       .sequenceClass = py::module_::import("collections.abc").attr("Sequence")};
        translateErrors(errorClass);
    });
}
