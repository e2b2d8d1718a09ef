#include "question.hpp"

#include <optional>
#include <pybind11/stl.h>
#include <utility>

#include "Interpreter.hpp"
#include "property/RefEntityType.hpp"
#include "reference/ask/QuestionError.hpp"
#include "reference/ask/ask.hpp"
#include "values.hpp"
#include "zorb/ClassDescription.hpp"

namespace veltra::python {
namespace {

namespace py = pybind11;
using reference::ask::Answer;
using reference::ask::Hit;
using reference::ask::QuestionError;
using reference::property::RefEntityType;

py::list listOf(std::vector<Hit> hits) {
    py::list list;
    for (Hit& hit : hits) {
        const std::string_view rung = toString(hit.rung);
        list.append(py::make_tuple(
            hit.name, py::str(rung.data(), rung.size()), hit.change,
            toPython(zorb::wrap(std::move(hit.data)), {.kind = zorb::Shape::Object})));
    }
    return list;
}

[[noreturn]] void raise(const std::string& message, std::size_t position, std::size_t length) {
    const py::object error = py::module_::import("veltra").attr("QuestionError");
    const py::object made = error(message, position, length);
    PyErr_SetObject(error.ptr(), made.ptr());
    throw py::error_already_set();
}

}  // namespace

py::tuple ask(const std::u16string& question, std::size_t limit,
              const std::vector<std::u16string>& prefer,
              const std::vector<std::u16string>& products, const std::vector<std::string>& types) {
    const Operation operation;
    reference::ask::AskOptions options{
        .limit = limit, .preferredProducts = prefer, .types = {}, .products = products};
    for (const auto& name : types) {
        const auto type = RefEntityType::fromString(name);
        if (!type)
            throw py::value_error("There is no type \"" + name + "\".");
        options.types.push_back(*type);
    }
    Answer answer;
    std::optional<QuestionError> problem;
    withoutInterpreterLock([&] {
        try {
            answer = reference::ask::ask(question, options);
        } catch (const QuestionError& error) {
            problem = error;
        }
    });
    if (problem)
        raise(problem->what(), problem->position(), problem->length());
    return py::make_tuple(listOf(std::move(answer.hits)), answer.total, answer.filteredAway,
                          listOf(std::move(answer.turnedAway)));
}

}  // namespace veltra::python
