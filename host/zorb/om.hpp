#pragma once

#include <cstddef>
#include <cstdint>

#include "foundation/core/export.hpp"
#include "vq/vqArray.hpp"
#include "zorb/COSClass.hpp"
#include "zorb/COSInterface.hpp"
#include "zorb/HostName.hpp"
#include "zorb/Interned.hpp"
#include "zorb/errors.hpp"

// The operations of the object system on host values. An array that is returned as a raw pointer
// has no owner yet (see namespace matrix). They throw the errors of zorb/errors.hpp, which are
// named here by their identifiers. Any thread, as far as the objects allow.

namespace zorb {

// On whose behalf an object is constructed.
class VELTRA_HOST_API COSClient {
  public:
    COSClient(const COSClient&) = delete;  // known by its address
    COSClient& operator=(const COSClient&) = delete;

  private:
    friend VELTRA_HOST_API const COSClient* getPublicClient() noexcept;
    COSClient() = default;
};

// Anybody.
[[nodiscard]] VELTRA_HOST_API const COSClient* getPublicClient() noexcept;

// A member of an enumeration class, as it is found in an array.
struct EnumerationID {
    Interned classId;
    std::uint32_t number = 0;
};

}  // namespace zorb

using zorb::COSClass;
using zorb::COSClient;

// The client that stands for everybody.
[[nodiscard]] inline const COSClient* COSGetPublicClient() noexcept {
    return zorb::getPublicClient();
}

// A host object that owns `native`, which must be on the heap and of the class's type.
[[nodiscard]] VELTRA_HOST_API COSInterfacePtr omWrapData(void* native, const COSClass* objectClass);

// A 1-by-1 array that holds the object.
[[nodiscard]] VELTRA_HOST_API vqArray* omCreateZORBScalar(const COSInterfacePtr& object);

// A new value of the class `id`: a 1-by-1 array with an object, from no arguments, or with a member
// of an enumeration, from its number. A number that no member has is kept. Throws
// "VELTRA:class:UndefinedClass", "VELTRA:class:NoConstructor", "VELTRA:class:WrongArgumentCount",
// and for a wrong number "VELTRA:class:RequireScalar" and "VELTRA:class:RequireNumeric".
[[nodiscard]] VELTRA_HOST_API vqArray* omConstructObjectWithClient(zorb::Interned id,
                                                                   int argumentCount,
                                                                   const vqArray** arguments,
                                                                   const COSClient* client);

// The object at index `i`. Throws "VELTRA:class:RequireClass" for an array that holds none, null
// included, and std::out_of_range for an index that it does not have.
[[nodiscard]] VELTRA_HOST_API COSInterfacePtr omGetArrayElement(const vqArray* array,
                                                                std::size_t i);

// The class of a value: of its objects (those of the first; an empty object array has the class
// "object"), of its enumeration members, or "uint32", "double", "string", "cell". Null gives the
// empty identifier.
[[nodiscard]] VELTRA_HOST_API zorb::Interned omGetCOSClassID(const vqArray* array);

// How many elements a value has; none for null.
[[nodiscard]] VELTRA_HOST_API std::size_t omGetNumberOfElementsInUnderlyingArray(
    const vqArray* array);

// For an enumeration the array of its members' numbers; any other value itself.
[[nodiscard]] VELTRA_HOST_API vqArrayPtr omGetUnderlyingArray(const vqArray* array);

// The number at index `i` of an array of whole numbers. Throws "VELTRA:class:RequireNumeric" for
// another array and std::out_of_range.
[[nodiscard]] VELTRA_HOST_API std::uint32_t omGetUInt32(const vqArray* array, std::size_t i);

// An enumeration array whose elements are all the member with the number 0. Throws
// "VELTRA:class:UndefinedClass".
[[nodiscard]] VELTRA_HOST_API vqArray* omCreateZORBEnumerationMatrix(std::size_t rows,
                                                                     std::size_t columns,
                                                                     zorb::Interned classId);

// The member at index `i`. Throws "VELTRA:class:RequireEnumeration" for an array of anything else,
// and std::out_of_range.
[[nodiscard]] VELTRA_HOST_API zorb::EnumerationID omGetEnumerationID(const vqArray* array,
                                                                     std::size_t i);

// Puts a member at index `i`. Throws "VELTRA:class:RequireEnumeration" for an array of anything
// else, "VELTRA:class:RequireClass" for a member of another class, std::invalid_argument for an
// array that is shared, and std::out_of_range.
VELTRA_HOST_API void omSetEnumerationElement(vqArray* array, std::size_t i, zorb::EnumerationID id);

// A member's object: a 1-by-1 enumeration array. Throws "VELTRA:class:RequireClass" for a member of
// another class.
[[nodiscard]] VELTRA_HOST_API vqArray* omGetEnumeration(zorb::Interned classId,
                                                        zorb::EnumerationID id);

// The native object that a host object wraps, which stays the host object's. Throws
// "VELTRA:class:RequireClass" when it is not of the class `id`.
[[nodiscard]] VELTRA_HOST_API void* omGetNativeOfClass(const COSInterfacePtr& object,
                                                       zorb::Interned id);

// The same for the native type T, whose class zorb::HostName names.
template <typename T>
[[nodiscard]] T& omGetNative(const COSInterfacePtr& object) {
    return *static_cast<T*>(omGetNativeOfClass(object, zorb::HostName<T>::id()));
}
