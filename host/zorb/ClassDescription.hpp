#pragma once

#include <concepts>
#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "vq/matrix.hpp"
#include "zorb/COSClass.hpp"
#include "zorb/HostName.hpp"
#include "zorb/om.hpp"

namespace zorb {

// The text that a host value passes to a native setter: null for null. Throws
// "VELTRA:class:RequireString" for anything but one text. Lives as long as the value.
[[nodiscard]] VELTRA_HOST_API const std::u16string* textOf(const vqArray* value);

namespace detail {

template <typename T>
concept HasCopy = requires(const T& value) {
    { value.copy() } -> std::same_as<T>;
};

// A copy for a value that stays with its owner, the value itself for one that is given away.
template <typename T>
T* toHeap(const T& value) {
    if constexpr (HasCopy<T>)
        return new T(value.copy());
    else
        return new T(value);
}
template <typename T>
requires(!std::is_lvalue_reference_v<T>) T* toHeap(T&& value) {
    return new T(std::forward<T>(value));
}

template <typename T>
COSInterfacePtr wrapObject(T&& value) {
    const COSClass& objectClass = COSClass::getClass(HostName<std::remove_cvref_t<T>>::id());
    return omWrapData(toHeap(std::forward<T>(value)), &objectClass);
}

template <typename T>
struct IsVector : std::false_type {};
template <typename T>
struct IsVector<std::vector<T>> : std::true_type {};

// The form in which a native value is seen.
template <typename T>
Shape shapeOf() {
    if constexpr (std::same_as<T, std::u16string>)
        return {Shape::Text, {}};
    else if constexpr (std::same_as<T, std::vector<std::u16string>>)
        return {Shape::TextArray, {}};
    else if constexpr (std::is_enum_v<T>)
        return {Shape::Enumeration, HostName<T>::id().str()};
    else if constexpr (IsVector<T>::value)
        return {Shape::ObjectArray, HostName<typename T::value_type>::id().str()};
    else
        return {Shape::Object, HostName<T>::id().str()};
}

}  // namespace detail

// A host object that wraps a copy of `value`, or `value` itself when it is given away, in a 1-by-1
// array.
template <typename T>
[[nodiscard]] vqArrayPtr wrap(T&& value) {
    return matrix::from_veltra(omCreateZORBScalar(detail::wrapObject(std::forward<T>(value))));
}

// The host form of a native value: of a text, of a member of an enumeration, of an object, or of a
// vector of texts or objects. Objects are copies, unless the value is given away.
template <typename T>
[[nodiscard]] vqArrayPtr toHostValue(T&& value) {
    using Plain = std::remove_cvref_t<T>;
    if constexpr (std::same_as<Plain, std::u16string>) {
        return matrix::createString(std::forward<T>(value));
    } else if constexpr (std::same_as<Plain, std::vector<std::u16string>>) {
        return matrix::createStringRow(std::forward<T>(value));
    } else if constexpr (std::is_enum_v<Plain>) {
        const EnumerationID id{.classId = HostName<Plain>::id(),
                               .number = static_cast<std::uint32_t>(value)};
        return matrix::from_veltra(omGetEnumeration(id.classId, id));
    } else if constexpr (detail::IsVector<Plain>::value) {
        std::vector<COSInterfacePtr> objects;
        objects.reserve(value.size());
        for (auto& element : value) {
            if constexpr (std::is_lvalue_reference_v<T>)
                objects.push_back(detail::wrapObject(element));
            else
                objects.push_back(detail::wrapObject(std::move(element)));
        }
        return matrix::createObjectRow(std::move(objects));
    } else {
        return wrap(std::forward<T>(value));
    }
}

// Describes a class of objects, a line for each property:
//
//     ClassDescription<Door>("A door.")
//         .constructible()
//         .readOnly("Width", &Door::getWidth, "How wide it is.")
//         .text("Label", &Door::getLabelProperty, &Door::setLabelProperty, "What stands on it.")
//         .registerClass();
//
// T is the native type, which zorb::HostName names.
template <typename T>
class ClassDescription {
  public:
    explicit ClassDescription(const char* documentation) {
        m_description.packageName = HostName<T>::package();
        m_description.name = HostName<T>::name();
        m_description.documentation = documentation;
        m_description.destroy = [](void* native) { delete static_cast<T*>(native); };
    }

    // Scripts may make objects; they begin as the native default.
    ClassDescription& constructible() {
        m_description.construct = []() -> void* { return new T(); };
        return *this;
    }

    // A native value that scripts may read; Native is T or a base of it.
    template <typename Native, typename Value>
    ClassDescription& readOnly(const char* name, Value (Native::*get)() const,
                               const char* documentation) {
        using Plain = std::remove_cvref_t<Value>;
        return add(
            {.name = name,
             .documentation = documentation,
             .shape = detail::shapeOf<Plain>(),
             .get = [get](void* native) { return toHostValue((static_cast<T*>(native)->*get)()); },
             .set = {}});
    }

    // A text, which the native accessors pass as a pointer.
    template <typename Native, typename Getter>
    ClassDescription& text(const char* name, Getter get, void (Native::*set)(const std::u16string*),
                           const char* documentation) {
        return add({.name = name,
                    .documentation = documentation,
                    .shape = {Shape::Text, {}},
                    .get =
                        [get](void* native) {
                            return matrix::createString(*(static_cast<T*>(native)->*get)());
                        },
                    .set =
                        [set](void* native, const vqArray* value) {
                            (static_cast<T*>(native)->*set)(textOf(value));
                        }});
    }

    // A value that the native accessors pass as a host value.
    template <typename Native, typename Getter>
    ClassDescription& value(const char* name, const Shape& shape, Getter get,
                            void (Native::*set)(const vqArray*), const char* documentation) {
        return add(
            {.name = name,
             .documentation = documentation,
             .shape = shape,
             .get = [get](void* native) { return vqArrayPtr((static_cast<T*>(native)->*get)()); },
             .set = [set](void* native,
                          const vqArray* given) { (static_cast<T*>(native)->*set)(given); }});
    }

    // An operation that returns a native value.
    template <typename Native, typename Value>
    ClassDescription& method(const char* name, Value (Native::*call)() const,
                             const char* documentation) {
        using Plain = std::remove_cvref_t<Value>;
        m_description.methods.push_back({.name = name,
                                         .documentation = documentation,
                                         .result = detail::shapeOf<Plain>(),
                                         .call = [call](void* native) {
                                             return toHostValue((static_cast<T*>(native)->*call)());
                                         }});
        return *this;
    }

    const COSClass& registerClass() { return COSClass::registerClass(std::move(m_description)); }

  private:
    ClassDescription& add(Property property) {
        m_description.properties.push_back(std::move(property));
        return *this;
    }

    COSClass::Description m_description;
};

// Makes an enumeration class known. Owner gives the class's name.
template <typename Owner>
const COSClass& registerEnumeration(const char* documentation, const std::vector<Member>& members) {
    return COSClass::registerClass({.packageName = HostName<Owner>::package(),
                                    .name = HostName<Owner>::name(),
                                    .documentation = documentation,
                                    .members = members,
                                    .isEnumeration = true});
}

}  // namespace zorb
