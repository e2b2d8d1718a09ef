#include "vq/CellArray.hpp"

#include <stdexcept>
#include <utility>

namespace {

const vqArray* requireCells(const vqArray* array) {
    if (array == nullptr || array->getClass() != vqClass::Cell)
        throw std::invalid_argument("Array is not cell array.");
    return array;
}

}  // namespace

CellArray::CellArray(const vqArray* array) : m_array(requireCells(array)), m_writable(nullptr) {}

CellArray::CellArray(vqArray* array) : m_array(requireCells(array)), m_writable(array) {}

vqArrayPtr CellArray::read(std::size_t index) const {
    if (index >= size())
        throw std::out_of_range("Cell index is out of range.");
    return (*m_array->getIf<vqArray::Cells>())[index];
}

void CellArray::write(std::size_t index, vqArrayPtr value) {
    auto* cells = m_writable == nullptr ? nullptr : m_writable->getIfWritable<vqArray::Cells>();
    if (cells == nullptr)
        throw std::invalid_argument("Cell array is not writable.");
    if (index >= cells->size())
        throw std::out_of_range("Cell index is out of range.");
    (*cells)[index] = std::move(value);
}
