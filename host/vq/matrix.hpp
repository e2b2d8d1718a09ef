#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "foundation/core/export.hpp"
#include "vq/vqArray.hpp"

// Makes and destroys host arrays. Any thread. An array that is returned as a raw pointer has no
// owner yet: hand it to from_veltra() or destroyArray().
namespace matrix {

// Takes ownership of an array that has no owner; null gives null.
[[nodiscard]] VELTRA_HOST_API vqArrayPtr from_veltra(vqArray* array) noexcept;

// Destroys an array that has no owner. Null is ignored.
VELTRA_HOST_API void destroyArray(vqArray* array) noexcept;

namespace detail {

// A numeric array whose elements are still to be written. Throws std::invalid_argument for a class
// that is not numeric.
[[nodiscard]] VELTRA_HOST_API vqArray* do_create_uninitnumeric(std::size_t rows,
                                                               std::size_t columns,
                                                               vqClass numericClass);

}  // namespace detail

// A 1-by-1 array.
[[nodiscard]] VELTRA_HOST_API vqArrayPtr createNumber(std::uint32_t number);
[[nodiscard]] VELTRA_HOST_API vqArrayPtr createDouble(double number);
[[nodiscard]] VELTRA_HOST_API vqArrayPtr createString(std::u16string text);

// A 1-by-n array.
[[nodiscard]] VELTRA_HOST_API vqArrayPtr createNumberRow(std::vector<std::uint32_t> numbers);
[[nodiscard]] VELTRA_HOST_API vqArrayPtr createDoubleRow(std::vector<double> numbers);
[[nodiscard]] VELTRA_HOST_API vqArrayPtr createStringRow(std::vector<std::u16string> texts);
// Members of the enumeration class, by their numbers.
[[nodiscard]] VELTRA_HOST_API vqArrayPtr createEnumerationRow(zorb::Interned classId,
                                                              std::vector<std::uint32_t> numbers);
[[nodiscard]] VELTRA_HOST_API vqArrayPtr createCellRow(std::vector<vqArrayPtr> cells);
[[nodiscard]] VELTRA_HOST_API vqArrayPtr createObjectRow(std::vector<COSInterfacePtr> objects);

}  // namespace matrix
