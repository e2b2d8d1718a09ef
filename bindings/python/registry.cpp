#include "registry.hpp"

#include "zorb/COSClass.hpp"

namespace veltra::python {
namespace {

namespace py = pybind11;
using zorb::COSClass;
using zorb::Shape;

const char* nameOf(Shape::Kind kind) {
    switch (kind) {
        case Shape::Text:
            return "text";
        case Shape::TextArray:
            return "texts";
        case Shape::Enumeration:
            return "member";
        case Shape::EnumerationArray:
            return "members";
        case Shape::Object:
            return "object";
        case Shape::ObjectArray:
            return "objects";
        case Shape::CellArray:
            break;
    }
    return "cells";
}

py::tuple describe(const Shape& shape) {
    return py::make_tuple(nameOf(shape.kind), shape.className, shape.mayBeNull);
}

}  // namespace

py::set packageNames() {
    py::set names;
    for (const auto* one : COSClass::getClasses())
        names.add(one->describe().packageName);
    return names;
}

py::list classNames(const std::string& package) {
    py::list names;
    for (const auto* one : COSClass::getClasses())
        if (one->describe().packageName == package)
            names.append(one->describe().name);
    return names;
}

py::object describeClass(const std::string& qualifiedName) {
    const auto* found = COSClass::findClass(qualifiedName);
    if (found == nullptr)
        return py::none();
    const auto& description = found->describe();
    py::list members;
    for (const auto& member : description.members)
        members.append(py::make_tuple(member.name, member.number));
    py::list properties;
    for (const auto& property : description.properties)
        properties.append(py::make_tuple(property.name, property.documentation,
                                         describe(property.shape),
                                         static_cast<bool>(property.set)));
    py::list methods;
    for (const auto& method : description.methods)
        methods.append(py::make_tuple(method.name, method.documentation, describe(method.result)));
    py::dict known;
    known["package"] = description.packageName;
    known["name"] = description.name;
    known["doc"] = description.documentation;
    known["isEnumeration"] = description.isEnumeration;
    known["isConstructible"] = static_cast<bool>(description.construct);
    known["members"] = members;
    known["properties"] = properties;
    known["methods"] = methods;
    return known;
}

}  // namespace veltra::python
