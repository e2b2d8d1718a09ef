// Short ways to make values of the scripting language, and to tell how an operation on them ended.
#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "vq/matrix.hpp"
#include "vq/vqArray.hpp"
#include "zorb/ClassDescription.hpp"
#include "zorb/om.hpp"

namespace reference::tests {

// A row of members of the enumeration class that Owner names, by their numbers.
template <typename Owner>
[[nodiscard]] vqArrayPtr members(std::vector<std::uint32_t> numbers) {
    return matrix::createEnumerationRow(zorb::HostName<Owner>::id(), std::move(numbers));
}

// The values as a single column.
[[nodiscard]] vqArrayPtr asColumn(const vqArrayPtr& row);

// A row of objects out of arrays that hold one each.
[[nodiscard]] vqArrayPtr objects(const std::vector<vqArrayPtr>& scalars);

// The native object that the first element wraps; it stays the value's.
template <typename T>
[[nodiscard]] T& nativeOf(const vqArray* value) {
    return omGetNative<T>(omGetArrayElement(value, 0));
}
template <typename T>
[[nodiscard]] T& nativeOf(const vqArrayPtr& value) {
    return nativeOf<T>(value.get());
}

// A new object of a class, made as a script makes it.
[[nodiscard]] vqArrayPtr construct(zorb::Interned classId);
template <typename T>
[[nodiscard]] vqArrayPtr construct() {
    return construct(zorb::HostName<T>::id());
}

// How an operation ended: "" when it returned, the identifier of an error that has one, "invalid
// argument: …" or "out of range: …" with the text of these, else the text alone.
std::string outcomeOf(const std::function<void()>& operation);

// The numbers of the members, or of the plain numbers, that a value holds.
[[nodiscard]] std::vector<std::uint32_t> numbersOf(const vqArray* value);

// How many host values and objects there are in the process.
struct LiveCounts {
    std::size_t arrays = vqArray::getNumberOfLiveArrays();
    std::size_t objects = zorb::COSInterface::getNumberOfLiveObjects();

    friend bool operator==(const LiveCounts&, const LiveCounts&) = default;
};
void PrintTo(const LiveCounts& counts, std::ostream* out);

}  // namespace reference::tests
