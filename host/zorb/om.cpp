#include "zorb/om.hpp"

#include <stdexcept>
#include <utility>

#include <boost/smart_ptr/make_shared_object.hpp>

#include "vq/matrix.hpp"

namespace {

using zorb::Interned;
using zorb::internal::makeInterned;

std::string classNameOf(const vqArray* array) {
    return array == nullptr ? "null" : omGetCOSClassID(array).str();
}

void requireIndex(std::size_t index, std::size_t size) {
    if (index >= size)
        throw std::out_of_range(
            "There is no element " + std::to_string(index) +
            (size == 0 ? ": the array is empty."
                       : ": the array's last one is element " + std::to_string(size - 1) + "."));
}

const vqArray::Enumeration& requireEnumeration(const vqArray* array) {
    const auto* enumeration = array == nullptr ? nullptr : array->getIf<vqArray::Enumeration>();
    if (enumeration == nullptr)
        throw zorb::RequireEnumerationError({classNameOf(array)});
    return *enumeration;
}

void requireSameClass(Interned expected, Interned given) {
    if (expected != given)
        throw zorb::RequireClassError({expected.str(), given.str()});
}

vqArray* createEnumeration(std::size_t rows, std::size_t columns, Interned classId,
                           vqArray::Numbers numbers) {
    return new vqArray(rows, columns,
                       vqArray::Enumeration{.classId = classId, .numbers = std::move(numbers)});
}

}  // namespace

const zorb::COSClient* zorb::getPublicClient() noexcept {
    static const COSClient client;
    return &client;
}

COSInterfacePtr omWrapData(void* native, const COSClass* objectClass) {
    // Destroys the native object even if there is no memory for the host object.
    struct Owner {
        void* native;
        const COSClass* objectClass;
        ~Owner() {
            if (native != nullptr)
                objectClass->describe().destroy(native);
        }
    } owner{native, objectClass};
    auto object = boost::make_shared<zorb::COSInterface>(native, *objectClass);
    owner.native = nullptr;
    return object;
}

vqArray* omCreateZORBScalar(const COSInterfacePtr& object) {
    return new vqArray(1, 1, vqArray::Objects{object});
}

vqArray* omConstructObjectWithClient(Interned id, int argumentCount, const vqArray** arguments,
                                     const COSClient* /*client*/) {
    const COSClass& wanted = COSClass::getClass(id);
    const auto& description = wanted.describe();
    const int takes = description.isEnumeration ? 1 : 0;
    if (argumentCount != takes)
        throw zorb::WrongArgumentCountError(
            {id.str(), std::to_string(takes), std::to_string(argumentCount)});
    if (description.isEnumeration) {
        const vqArray* number = arguments[0];
        if (omGetNumberOfElementsInUnderlyingArray(number) != 1)
            throw zorb::RequireScalarError();
        return createEnumeration(1, 1, id, {omGetUInt32(omGetUnderlyingArray(number).get(), 0)});
    }
    if (!description.construct)
        throw zorb::NoConstructorError({id.str()});
    return omCreateZORBScalar(omWrapData(description.construct(), &wanted));
}

COSInterfacePtr omGetArrayElement(const vqArray* array, std::size_t i) {
    const auto* objects = array == nullptr ? nullptr : array->getIf<vqArray::Objects>();
    if (objects == nullptr)
        throw zorb::RequireClassError({"object", classNameOf(array)});
    requireIndex(i, objects->size());
    return (*objects)[i];
}

Interned omGetCOSClassID(const vqArray* array) {
    if (array == nullptr)
        return {};
    switch (array->getClass()) {
        case vqClass::UInt32:
            return makeInterned("uint32");
        case vqClass::Double:
            return makeInterned("double");
        case vqClass::String:
            return makeInterned("string");
        case vqClass::Cell:
            return makeInterned("cell");
        case vqClass::Enumeration:
            return array->getIf<vqArray::Enumeration>()->classId;
        case vqClass::Object:
            break;
    }
    const auto& objects = *array->getIf<vqArray::Objects>();
    return objects.empty() || !objects.front() ? makeInterned("object")
                                               : objects.front()->getClass().getId();
}

std::size_t omGetNumberOfElementsInUnderlyingArray(const vqArray* array) {
    return array == nullptr ? 0 : array->getNumberOfElements();
}

vqArrayPtr omGetUnderlyingArray(const vqArray* array) {
    const auto* enumeration = array == nullptr ? nullptr : array->getIf<vqArray::Enumeration>();
    if (enumeration == nullptr)
        return vqArrayPtr(array);
    return vqArrayPtr(new vqArray(array->getRows(), array->getColumns(), enumeration->numbers));
}

std::uint32_t omGetUInt32(const vqArray* array, std::size_t i) {
    const auto* numbers = array == nullptr ? nullptr : array->getIf<vqArray::Numbers>();
    if (numbers == nullptr)
        throw zorb::RequireNumericError({classNameOf(array)});
    requireIndex(i, numbers->size());
    return (*numbers)[i];
}

vqArray* omCreateZORBEnumerationMatrix(std::size_t rows, std::size_t columns, Interned classId) {
    static_cast<void>(COSClass::getClass(classId));  // throws if there is no such class
    return createEnumeration(rows, columns, classId, vqArray::Numbers(rows * columns));
}

zorb::EnumerationID omGetEnumerationID(const vqArray* array, std::size_t i) {
    const auto& enumeration = requireEnumeration(array);
    requireIndex(i, enumeration.numbers.size());
    return {.classId = enumeration.classId, .number = enumeration.numbers[i]};
}

void omSetEnumerationElement(vqArray* array, std::size_t i, zorb::EnumerationID id) {
    const auto& enumeration = requireEnumeration(array);
    requireSameClass(enumeration.classId, id.classId);
    requireIndex(i, enumeration.numbers.size());
    auto* writable = array->getIfWritable<vqArray::Enumeration>();
    if (writable == nullptr)
        throw std::invalid_argument("Enumeration array is not writable.");
    writable->numbers[i] = id.number;
}

vqArray* omGetEnumeration(Interned classId, zorb::EnumerationID id) {
    requireSameClass(classId, id.classId);
    return createEnumeration(1, 1, classId, {id.number});
}

void* omGetNativeOfClass(const COSInterfacePtr& object, Interned id) {
    if (!object)
        throw zorb::RequireClassError({id.str(), "null"});
    requireSameClass(id, object->getClass().getId());
    return object->getNative();
}
