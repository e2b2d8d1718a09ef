#include "support/HostValues.hpp"

#include <ostream>
#include <stdexcept>

#include "foundation/core/except/IMsgIDException.hpp"

namespace reference::tests {

vqArrayPtr asColumn(const vqArrayPtr& row) {
    const std::size_t count = row->getNumberOfElements();
    if (const auto* texts = row->getIf<vqArray::Strings>())
        return vqArrayPtr(new vqArray(count, 1, *texts));
    if (const auto* members = row->getIf<vqArray::Enumeration>())
        return vqArrayPtr(new vqArray(count, 1, *members));
    throw std::logic_error("asColumn() takes texts and enumeration members.");
}

vqArrayPtr objects(const std::vector<vqArrayPtr>& scalars) {
    std::vector<COSInterfacePtr> all;
    for (const auto& scalar : scalars)
        all.push_back(omGetArrayElement(scalar.get(), 0));
    return matrix::createObjectRow(std::move(all));
}

vqArrayPtr construct(zorb::Interned classId) {
    return matrix::from_veltra(
        omConstructObjectWithClient(classId, 0, nullptr, COSGetPublicClient()));
}

std::string outcomeOf(const std::function<void()>& operation) {
    try {
        operation();
        return {};
    } catch (const foundation::core::except::IMsgIDException& error) {
        return error.getIdentifier();
    } catch (const std::invalid_argument& error) {
        return std::string("invalid argument: ") + error.what();
    } catch (const std::out_of_range& error) {
        return std::string("out of range: ") + error.what();
    } catch (const std::exception& error) {
        return error.what();
    }
}

std::vector<std::uint32_t> numbersOf(const vqArray* value) {
    const vqArrayPtr underlying = omGetUnderlyingArray(value);
    std::vector<std::uint32_t> numbers;
    for (std::size_t i = 0; i < omGetNumberOfElementsInUnderlyingArray(value); ++i)
        numbers.push_back(omGetUInt32(underlying.get(), i));
    return numbers;
}

void PrintTo(const LiveCounts& counts, std::ostream* out) {
    *out << counts.arrays << " arrays, " << counts.objects << " objects";
}

}  // namespace reference::tests
