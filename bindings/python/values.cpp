#include "values.hpp"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "HostObject.hpp"
#include "errors.hpp"
#include "vq/matrix.hpp"
#include "zorb/om.hpp"

namespace veltra::python {
namespace {

namespace py = pybind11;
using zorb::Interned;
using zorb::Shape;
using zorb::internal::makeInterned;

constexpr bool isLittle = std::endian::native == std::endian::little;

// Texts may hold unpaired surrogates; they are passed unchanged in both directions.
py::object toPython(const std::u16string& text) {
    int order = isLittle ? -1 : 1;
    const auto* bytes = reinterpret_cast<const char*>(text.data());
    const auto size = static_cast<Py_ssize_t>(text.size() * sizeof(char16_t));
    PyObject* made = PyUnicode_DecodeUTF16(bytes, size, "surrogatepass", &order);
    if (made == nullptr)
        throw py::error_already_set();
    return py::reinterpret_steal<py::object>(made);
}

std::u16string toText(const py::handle& value) {
    const auto bytes = py::reinterpret_steal<py::bytes>(PyUnicode_AsEncodedString(
        value.ptr(), isLittle ? "utf-16-le" : "utf-16-be", "surrogatepass"));
    if (!bytes)
        throw py::error_already_set();
    const std::string_view view = bytes;
    std::u16string text(view.size() / sizeof(char16_t), u'\0');
    view.copy(reinterpret_cast<char*>(text.data()), view.size());
    return text;
}

py::object toPython(const COSInterfacePtr& object) {
    if (!object)
        return py::none();
    return factories().makeObject(HostObject(object));
}

py::object memberToPython(Interned classId, std::uint32_t number) {
    return factories().makeMember(classId.str(), number);
}

// Whether a value of this shape is a list in Python even if it has one element.
bool isPlural(Shape::Kind kind) {
    switch (kind) {
        case Shape::TextArray:
        case Shape::EnumerationArray:
        case Shape::ObjectArray:
        case Shape::CellArray:
            return true;
        case Shape::Text:
        case Shape::Enumeration:
        case Shape::Object:
            break;
    }
    return false;
}

template <typename Elements, typename Convert>
py::object toPython(const Elements& elements, bool plural, const Convert& convert) {
    if (!plural && elements.size() == 1)
        return convert(elements.front());
    py::list list;
    for (const auto& element : elements)
        list.append(convert(element));
    return list;
}

py::object toPython(const vqArrayPtr& value, bool plural) {
    if (!value)
        return py::none();
    if (const auto* texts = value->getIf<vqArray::Strings>())
        return toPython(*texts, plural, [](const std::u16string& text) { return toPython(text); });
    if (const auto* objects = value->getIf<vqArray::Objects>())
        return toPython(*objects, plural,
                        [](const COSInterfacePtr& object) { return toPython(object); });
    if (const auto* cells = value->getIf<vqArray::Cells>())
        return toPython(*cells, true, [](const vqArrayPtr& cell) { return toPython(cell, false); });
    if (const auto* members = value->getIf<vqArray::Enumeration>())
        return toPython(members->numbers, plural, [members](std::uint32_t number) {
            return memberToPython(members->classId, number);
        });
    if (const auto* numbers = value->getIf<vqArray::Numbers>())
        return toPython(*numbers, plural,
                        [](std::uint32_t number) -> py::object { return py::int_(number); });
    return toPython(*value->getIf<vqArray::Doubles>(), plural,
                    [](double number) -> py::object { return py::float_(number); });
}

// One Python value that is not a sequence; the kind is that of the array that it can be in.
struct Element {
    enum Kind { Text, Number, Double, Member, Object, Null } kind = Null;
    std::u16string text;
    std::uint32_t number = 0;
    double real = 0;
    Interned classId;  // of a member or an object
    COSInterfacePtr object;
};

Element toNumber(const py::handle& value) {
    Element element;
    if (PyLong_Check(value.ptr())) {
        const long long whole = PyLong_AsLongLong(value.ptr());
        if (whole == -1 && PyErr_Occurred() != nullptr)
            PyErr_Clear();  // too large; it becomes a double
        else if (whole >= 0 && whole <= std::numeric_limits<std::uint32_t>::max())
            return {.kind = Element::Number, .number = static_cast<std::uint32_t>(whole)};
    }
    element.kind = Element::Double;
    element.real = PyFloat_AsDouble(value.ptr());
    if (element.real == -1 && PyErr_Occurred() != nullptr) {
        PyErr_Clear();
        element.real = std::numeric_limits<double>::infinity();
    }
    return element;
}

[[noreturn]] void throwUnsupported(const py::handle& value) {
    throw UnsupportedValueError({Py_TYPE(value.ptr())->tp_name});
}

Element toElement(const py::handle& value) {
    if (value.is_none())
        return {};
    if (PyUnicode_Check(value.ptr()))
        return {.kind = Element::Text, .text = toText(value)};
    if (py::isinstance(value, factories().objectClass)) {
        const py::object handle = value.attr("_handle");
        const auto object = handle.cast<const HostObject&>().object();
        return {.kind = Element::Object, .classId = object->getClass().getId(), .object = object};
    }
    if (PyBool_Check(value.ptr()) != 0)
        throwUnsupported(value);
    if (PyLong_Check(value.ptr()) || PyFloat_Check(value.ptr())) {
        Element element = toNumber(value);
        if (py::isinstance(value, factories().memberClass)) {
            element.kind = Element::Member;
            element.classId =
                makeInterned(py::type::of(value).attr("_host_class").cast<std::string>());
        }
        return element;
    }
    throwUnsupported(value);
}

bool isSequence(const py::handle& value) {
    if (PyList_CheckExact(value.ptr()) || PyTuple_CheckExact(value.ptr()))
        return true;
    return !PyUnicode_Check(value.ptr()) && PyObject_CheckBuffer(value.ptr()) == 0 &&
           !py::isinstance(value, factories().objectClass) &&
           py::isinstance(value, factories().sequenceClass);
}

// The elements of a sequence; nothing if one of them is a sequence itself.
std::optional<std::vector<Element>> toElements(const std::vector<py::object>& items) {
    std::vector<Element> elements;
    elements.reserve(items.size());
    for (const auto& item : items) {
        if (isSequence(item))
            return std::nullopt;
        elements.push_back(toElement(item));
    }
    return elements;
}

bool isDouble(const Element& element) {
    return element.kind == Element::Double;
}

// Makes doubles of whole numbers if there are other numbers among them.
void makeNumbersAlike(std::vector<Element>& elements) {
    if (std::ranges::none_of(elements, isDouble))
        return;
    for (auto& element : elements)
        if (element.kind == Element::Number) {
            element.kind = Element::Double;
            element.real = element.number;
        }
}

bool areOfOneKind(const std::vector<Element>& elements) {
    for (const auto& element : elements)
        if (element.kind != elements.front().kind || element.classId != elements.front().classId)
            return false;
    return true;
}

template <typename Field>
auto fieldsOf(std::vector<Element>& elements, Field Element::*field) {
    std::vector<Field> fields;
    fields.reserve(elements.size());
    for (auto& element : elements)
        fields.push_back(std::move(element.*field));
    return fields;
}

// A row of elements of one kind; null for a kind that has no rows.
vqArrayPtr toRow(std::vector<Element> elements) {
    switch (elements.front().kind) {
        case Element::Text:
            return matrix::createStringRow(fieldsOf(elements, &Element::text));
        case Element::Number:
            return matrix::createNumberRow(fieldsOf(elements, &Element::number));
        case Element::Double:
            return matrix::createDoubleRow(fieldsOf(elements, &Element::real));
        case Element::Member:
            return matrix::createEnumerationRow(elements.front().classId,
                                                fieldsOf(elements, &Element::number));
        case Element::Object:
            return matrix::createObjectRow(fieldsOf(elements, &Element::object));
        case Element::Null:
            break;
    }
    return nullptr;
}

// Takes numbers for members of the enumeration that is asked for, unless one of them is a number
// that no member can have.
void takeForMembers(std::vector<Element>& elements, const std::string& className) {
    if (std::ranges::any_of(elements, isDouble))
        return;
    const Interned wanted = makeInterned(std::string(className));
    for (auto& element : elements) {
        if (element.kind == Element::Number) {
            element.kind = Element::Member;
            element.classId = wanted;
        }
        if (element.kind == Element::Member && element.classId != wanted)
            throw zorb::RequireClassError({className, element.classId.str()});
    }
}

vqArrayPtr emptyRow(const Shape& shape) {
    switch (shape.kind) {
        case Shape::Text:
        case Shape::TextArray:
            return matrix::createStringRow({});
        case Shape::Enumeration:
        case Shape::EnumerationArray:
            return matrix::createEnumerationRow(makeInterned(std::string(shape.className)), {});
        case Shape::Object:
        case Shape::ObjectArray:
            return matrix::createObjectRow({});
        case Shape::CellArray:
            break;
    }
    return matrix::createCellRow({});
}

vqArrayPtr convert(const py::handle& value, const Shape* shape);

vqArrayPtr toCells(const std::vector<py::object>& items) {
    std::vector<vqArrayPtr> cells;
    cells.reserve(items.size());
    for (const auto& item : items)
        cells.push_back(convert(item, nullptr));
    return matrix::createCellRow(std::move(cells));
}

// `shape` is null within cells, whose content has no declared shape.
vqArrayPtr convert(const py::handle& value, const Shape* shape) {
    const bool wantsMembers = shape != nullptr && (shape->kind == Shape::Enumeration ||
                                                   shape->kind == Shape::EnumerationArray);
    if (!isSequence(value)) {
        std::vector<Element> one;
        one.push_back(toElement(value));
        if (wantsMembers)
            takeForMembers(one, shape->className);
        return toRow(std::move(one));
    }
    // A list may contain itself; the interpreter's own limit on recursion ends that.
    if (Py_EnterRecursiveCall(" while a list was passed on") != 0)
        throw py::error_already_set();
    struct Leave {
        ~Leave() { Py_LeaveRecursiveCall(); }
    } const leave;
    std::vector<py::object> items;
    for (const auto& item : value)
        items.push_back(py::reinterpret_borrow<py::object>(item));
    if (shape != nullptr && shape->kind == Shape::CellArray)
        return toCells(items);
    if (items.empty())
        return shape == nullptr ? matrix::createCellRow({}) : emptyRow(*shape);
    auto elements = toElements(items);
    if (!elements)
        return toCells(items);
    if (wantsMembers)
        takeForMembers(*elements, shape->className);
    makeNumbersAlike(*elements);
    if (elements->front().kind != Element::Null && areOfOneKind(*elements))
        return toRow(std::move(*elements));
    return toCells(items);
}

}  // namespace

Factories& factories() {
    static auto* const instance = new Factories;
    return *instance;
}

py::object toPython(const vqArrayPtr& value, const Shape& shape) {
    return toPython(value, isPlural(shape.kind));
}

vqArrayPtr toHost(const py::object& value, const Shape& shape) {
    return convert(value, &shape);
}

}  // namespace veltra::python
