// How a native enumeration field is read and set from the scripting language. Internal: no public
// header includes it.
#pragma once

#include <array>
#include <cstdint>

#include "property/hostNames.hpp"
#include "reference/api/hostNames.hpp"
#include "refutils/hostTexts.hpp"
#include "vq/matrix.hpp"
#include "vq/vqArray.hpp"
#include "zorb/om.hpp"

namespace reference::utils {

// The host form of `value`: `cache` when it is filled, whatever `value` has become since, so that a
// script sees what it last read or set. An empty cache is filled with a new enumeration object.
// Value is an enumeration that zorb::HostName names. Lives as long as the cache keeps it.
template <typename Value>
[[nodiscard]] const vqArray* getEnumerationProperty(vqArrayPtr& cache, Value value) {
    if (!cache) {
        const vqArrayPtr number = matrix::createNumber(value);
        std::array arguments{number.get()};
        cache = matrix::from_veltra(omConstructObjectWithClient(
            zorb::HostName<Value>::id(), 1, arguments.data(), COSGetPublicClient()));
    }
    return cache.get();
}

// Takes over a value that a script set, and tells whether there was one: null is ignored. Any
// number is stored, and the number of whichever enumeration: a member that is not known here may
// be one that the scripts know. Throws "VELTRA:class:RequireScalar" for any other count of elements
// than one and "VELTRA:class:RequireNumeric" for an element that is no number; `cache` and `value`
// are as they were then.
template <typename Value>
bool setEnumerationProperty(const vqArray* given, vqArrayPtr& cache, Value& value) {
    if (given == nullptr)
        return false;
    if (omGetNumberOfElementsInUnderlyingArray(given) != 1)
        throw zorb::RequireScalarError();
    const auto number = omGetUInt32(omGetUnderlyingArray(given).get(), 0);
    cache = copyVqArrayToSharedVqArrayPtr(given);
    value = static_cast<Value>(number);
    return true;
}

}  // namespace reference::utils
