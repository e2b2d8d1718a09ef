#pragma once

#include <cstdint>
#include <pybind11/pybind11.h>
#include <string>

#include "zorb/COSClass.hpp"
#include "zorb/COSInterface.hpp"

namespace veltra::python {

// What a Python object holds of the host object that it stands for. The host object may be used
// from any Python thread: one after the other.
class HostObject {
  public:
    explicit HostObject(COSInterfacePtr object) : m_object(std::move(object)) {}

    // A new object of the class, as the native class begins. Throws what the object system throws.
    [[nodiscard]] static HostObject construct(const std::string& className);

    [[nodiscard]] const std::string& className() const {
        return m_object->getClass().getId().str();
    }
    [[nodiscard]] const COSInterfacePtr& object() const noexcept { return m_object; }

    // Tells host objects apart for as long as they live.
    [[nodiscard]] std::uintptr_t key() const noexcept {
        return reinterpret_cast<std::uintptr_t>(m_object.get());
    }

    // A property's value as Python sees it, and setting it. Throws "VELTRA:class:NoSuchProperty",
    // what the native accessor throws, and what turning the value throws.
    [[nodiscard]] pybind11::object get(const std::string& property) const;
    void set(const std::string& property, const pybind11::object& value) const;

    // Calls a method, other Python threads running meanwhile. Throws "VELTRA:class:NoSuchMethod"
    // and what the method throws.
    [[nodiscard]] pybind11::object call(const std::string& method) const;

  private:
    COSInterfacePtr m_object;
};

}  // namespace veltra::python
