#pragma once

#include <cstdint>
#include <pybind11/pybind11.h>
#include <string>

#include "zorb/COSClass.hpp"
#include "zorb/COSInterface.hpp"

namespace veltra::python {

// What a Python object holds of the host object that it stands for. Any Python thread may use the
// host object, one at a time.
class HostObject {
  public:
    explicit HostObject(COSInterfacePtr object) : m_object(std::move(object)) {}

    // A new object of the class, with the native defaults. Throws what the object system throws.
    [[nodiscard]] static HostObject construct(const std::string& className);

    [[nodiscard]] const std::string& className() const {
        return m_object->getClass().getId().str();
    }
    [[nodiscard]] const COSInterfacePtr& object() const noexcept { return m_object; }

    // Different for any two host objects that are alive.
    [[nodiscard]] std::uintptr_t key() const noexcept {
        return reinterpret_cast<std::uintptr_t>(m_object.get());
    }

    // Read and set a property. Throw "VELTRA:class:NoSuchProperty", what the native accessor
    // throws, and what toPython() and toHost() throw.
    [[nodiscard]] pybind11::object get(const std::string& property) const;
    void set(const std::string& property, const pybind11::object& value) const;

    // Calls a method; other Python threads run meanwhile. Throws "VELTRA:class:NoSuchMethod" and
    // what the method throws.
    [[nodiscard]] pybind11::object call(const std::string& method) const;

  private:
    COSInterfacePtr m_object;
};

}  // namespace veltra::python
