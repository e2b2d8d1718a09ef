#include "errors.hpp"

#include <exception>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "foundation/core/except/IMsgIDException.hpp"
#include "foundation/core/except/MessageCatalog.hpp"

namespace veltra::python {
namespace {

namespace py = pybind11;
using foundation::core::except::IMsgIDException;
using foundation::core::except::MessageCatalog;

// Never destroyed, because the interpreter ends before static objects do.
py::object& errorClass() {
    static auto* const instance = new py::object;
    return *instance;
}

// Our own messages are UTF-8. One from elsewhere that is not must still be shown.
py::object toMessage(const std::string& text) {
    return py::reinterpret_steal<py::object>(PyUnicode_DecodeUTF8(
        text.data(), static_cast<Py_ssize_t>(text.size()), "backslashreplace"));
}

void raise(const std::string& identifier, const std::vector<std::string>& texts,
           const std::string& message) {
    py::tuple arguments(texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i)
        arguments[i] = toMessage(texts[i]);
    const py::object error = errorClass()(identifier, arguments, toMessage(message));
    PyErr_SetObject(py::type::of(error).ptr(), error.ptr());
}

}  // namespace

void translateErrors(py::object wanted) {
    errorClass() = std::move(wanted);
    py::register_local_exception_translator([](std::exception_ptr thrown) {
        try {
            if (thrown)
                std::rethrow_exception(std::move(thrown));
        } catch (const py::builtin_exception&) {
            throw;  // pybind11's own
        } catch (const py::error_already_set&) {
            throw;
        } catch (const std::bad_alloc&) {
            throw;
        } catch (const IMsgIDException& error) {
            raise(error.getIdentifier(), error.getArguments(), error.getMessage());
        } catch (const std::exception& error) {
            const std::vector<std::string> arguments{error.what()};
            const std::string identifier = "VELTRA:class:OperationFailed";
            raise(identifier, arguments, MessageCatalog::getText(identifier, arguments));
        }
    });
}

}  // namespace veltra::python
