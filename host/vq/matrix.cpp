#include "vq/matrix.hpp"

#include <stdexcept>
#include <utility>

namespace matrix {
namespace {

template <typename Kind>
vqArrayPtr createRow(Kind elements) {
    const std::size_t size = elements.size();
    return vqArrayPtr(new vqArray(1, size, std::move(elements)));
}

}  // namespace

vqArrayPtr from_veltra(vqArray* array) noexcept {
    return vqArrayPtr(array);
}

void destroyArray(vqArray* array) noexcept {
    // Nobody else owns it, so this pointer destroys it.
    const vqArrayPtr owner(array);
}

vqArray* detail::do_create_uninitnumeric(std::size_t rows, std::size_t columns,
                                         vqClass numericClass) {
    switch (numericClass) {
        case vqClass::UInt32:
            return new vqArray(rows, columns, vqArray::Numbers(rows * columns));
        case vqClass::Double:
            return new vqArray(rows, columns, vqArray::Doubles(rows * columns));
        case vqClass::String:
        case vqClass::Cell:
        case vqClass::Object:
        case vqClass::Enumeration:
            break;
    }
    throw std::invalid_argument("The class of a numeric array must be numeric.");
}

vqArrayPtr createNumber(std::uint32_t number) {
    return createRow(vqArray::Numbers{number});
}

vqArrayPtr createDouble(double number) {
    return createRow(vqArray::Doubles{number});
}

vqArrayPtr createString(std::u16string text) {
    return createRow(vqArray::Strings{std::move(text)});
}

vqArrayPtr createNumberRow(std::vector<std::uint32_t> numbers) {
    return createRow(std::move(numbers));
}

vqArrayPtr createDoubleRow(std::vector<double> numbers) {
    return createRow(std::move(numbers));
}

vqArrayPtr createEnumerationRow(zorb::Interned classId, std::vector<std::uint32_t> numbers) {
    const std::size_t size = numbers.size();
    return vqArrayPtr(new vqArray(
        1, size, vqArray::Enumeration{.classId = classId, .numbers = std::move(numbers)}));
}

vqArrayPtr createStringRow(std::vector<std::u16string> texts) {
    return createRow(std::move(texts));
}

vqArrayPtr createCellRow(std::vector<vqArrayPtr> cells) {
    return createRow(std::move(cells));
}

vqArrayPtr createObjectRow(std::vector<COSInterfacePtr> objects) {
    return createRow(std::move(objects));
}

}  // namespace matrix
