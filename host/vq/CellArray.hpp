#pragma once

#include <cstddef>

#include "foundation/core/export.hpp"
#include "vq/vqArray.hpp"

// A view of a host array as a cell array. Does not own it: the array must outlive this.
class VELTRA_HOST_API CellArray {
  public:
    // Throws std::invalid_argument ("Array is not cell array.") for null and for an array of
    // another class.
    explicit CellArray(const vqArray* array);
    explicit CellArray(vqArray* array);

    [[nodiscard]] std::size_t size() const noexcept { return m_array->getNumberOfElements(); }

    // What the cell holds; null if it is empty. Throws std::out_of_range ("Cell index is out of
    // range.").
    [[nodiscard]] vqArrayPtr read(std::size_t index) const;

    // Puts a value into the cell. Throws std::invalid_argument ("Cell array is not writable.") for
    // an array that is shared, or that was given as const, and std::out_of_range as read() does.
    void write(std::size_t index, vqArrayPtr value);

  private:
    const vqArray* m_array;
    vqArray* m_writable;
};
