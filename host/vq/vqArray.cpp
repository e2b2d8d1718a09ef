#include "vq/vqArray.hpp"

#include <algorithm>
#include <utility>

#include "zorb/COSInterface.hpp"

namespace {

std::atomic<std::size_t> liveArrays{0};

bool isEqualCell(const vqArrayPtr& a, const vqArrayPtr& b) {
    return a == b || (a && b && *a == *b);
}

}  // namespace

vqArray::vqArray(std::size_t rows, std::size_t columns, Elements elements)
    : m_rows(rows),
      m_columns(columns),
      m_elements(std::make_shared<Elements>(std::move(elements))) {
    ++liveArrays;
}

vqArray::vqArray(const vqArray& other)
    : m_rows(other.m_rows), m_columns(other.m_columns), m_elements(other.m_elements) {
    ++liveArrays;
}

vqArray::~vqArray() {
    --liveArrays;
}

bool vqArray::isShared() const noexcept {
    return m_references > 1 || m_elements.use_count() > 1;
}

bool operator==(const vqArray& a, const vqArray& b) {
    if (a.m_rows != b.m_rows || a.m_columns != b.m_columns)
        return false;
    if (a.m_elements == b.m_elements)
        return true;
    const auto* cells = a.getIf<vqArray::Cells>();
    const auto* others = b.getIf<vqArray::Cells>();
    if (cells != nullptr && others != nullptr)
        return std::ranges::equal(*cells, *others, isEqualCell);
    return *a.m_elements == *b.m_elements;
}

std::size_t vqArray::getNumberOfLiveArrays() noexcept {
    return liveArrays;
}

void intrusive_ptr_add_ref(const vqArray* array) noexcept {
    ++array->m_references;
}

void intrusive_ptr_release(const vqArray* array) noexcept {
    if (--array->m_references == 0)
        delete array;
}
