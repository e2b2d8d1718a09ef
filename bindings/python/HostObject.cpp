#include "HostObject.hpp"

#include <string>
#include <utility>
#include <vector>

#include "Interpreter.hpp"
#include "errors.hpp"
#include "foundation/core/Mutex.hpp"
#include "values.hpp"
#include "vq/matrix.hpp"
#include "zorb/om.hpp"

namespace veltra::python {
namespace {

using foundation::core::MutexLock;

// Holds an object for the calling thread. A thread never waits for an object while it holds the
// interpreter lock, and never waits for the interpreter lock while it holds an object to read or
// set a property. So no two threads can wait for each other.
class Use {
  public:
    explicit Use(zorb::COSInterface& object) : m_mutex(object.getUseMutex()) {
        while (!m_mutex.try_lock())
            withoutInterpreterLock([this] { const MutexLock untilItIsFree(m_mutex); });
    }
    Use(const Use&) = delete;  // bound to its scope
    Use& operator=(const Use&) = delete;
    ~Use() { m_mutex.unlock(); }

  private:
    foundation::core::Mutex& m_mutex;
};

template <typename Named>
std::string namesOf(const std::vector<Named>& all) {
    std::string names;
    for (const auto& one : all)
        names += (names.empty() ? "" : ", ") + one.name;
    return names.empty() ? "none" : names;
}

// A descriptor of one class can be called with an object of another.
const zorb::Property& propertyOf(const COSClass& objectClass, const std::string& name) {
    if (const auto* property = objectClass.findProperty(name))
        return *property;
    throw NoSuchPropertyError(
        {objectClass.getId().str(), name, namesOf(objectClass.describe().properties)});
}

const zorb::Method& methodOf(const COSClass& objectClass, const std::string& name) {
    if (const auto* method = objectClass.findMethod(name))
        return *method;
    throw NoSuchMethodError(
        {objectClass.getId().str(), name, namesOf(objectClass.describe().methods)});
}

}  // namespace

HostObject HostObject::construct(const std::string& className) {
    const Operation operation;
    const vqArrayPtr scalar = matrix::from_veltra(omConstructObjectWithClient(
        zorb::internal::makeInterned(std::string(className)), 0, nullptr, COSGetPublicClient()));
    return HostObject(omGetArrayElement(scalar.get(), 0));
}

pybind11::object HostObject::get(const std::string& name) const {
    const Operation operation;
    const auto& property = propertyOf(m_object->getClass(), name);
    vqArrayPtr value;
    {
        const Use use(*m_object);
        value = property.get(m_object->getNative());
    }
    return toPython(value, property.shape);
}

void HostObject::set(const std::string& name, const pybind11::object& value) const {
    const Operation operation;
    const auto& property = propertyOf(m_object->getClass(), name);
    const vqArrayPtr given = toHost(value, property.shape);
    // The objects within the value are read under the interpreter lock alone, as every property is;
    // only methods run without it.
    const Use use(*m_object);
    property.set(m_object->getNative(), given.get());
}

pybind11::object HostObject::call(const std::string& name) const {
    const Operation operation;
    const auto& method = methodOf(m_object->getClass(), name);
    vqArrayPtr result;
    withoutInterpreterLock([this, &method, &result] {
        const MutexLock use(m_object->getUseMutex());
        result = method.call(m_object->getNative());
    });
    return toPython(result, method.result);
}

}  // namespace veltra::python
