#include "reference/api/comparator/CompoundReferenceComparator.hpp"

#include <cstddef>
#include <utility>

#include "reference/api/hostNames.hpp"
#include "reference/utils/errors.hpp"
#include "reference/utils/getComparatorFromVq.hpp"
#include "refutils/hostTexts.hpp"
#include "vq/CellArray.hpp"

namespace reference::api::comparator {

CompoundReferenceComparator::CompoundReferenceComparator() = default;

CompoundReferenceComparator::CompoundReferenceComparator(
    std::vector<RefRequestComparator> comparators)
    : m_comparators(std::move(comparators)) {}

// The reverse question comes first. For a well-formed comparator the order makes no difference. If
// a broken one says yes both ways, the answer is no, so that the chain never puts both a before b
// and b before a.
bool CompoundReferenceComparator::operator()(const ReferenceData& a, const ReferenceData& b) const {
    for (const auto& comparator : m_comparators) {
        if (comparator(b, a))
            return false;
        if (comparator(a, b))
            return true;
    }
    return false;
}

void CompoundReferenceComparator::setComparatorsProperty(const vqArray* value) {
    if (value == nullptr)
        return;
    if (value->getClass() != vqClass::Cell)
        throw utils::ExpectedComparatorCellArrayError();
    const CellArray cells(value);
    std::vector<RefRequestComparator> comparators;
    comparators.reserve(cells.size());
    for (std::size_t i = 0; i < cells.size(); ++i)
        comparators.push_back(utils::getComparatorFromVq(cells.read(i).get()));
    m_comparatorsCache = utils::copyVqArrayToSharedVqArrayPtr(value);
    m_comparators = std::move(comparators);
}

const char* CompoundReferenceComparator::getZORBClassName() noexcept {
    return "CompoundReferenceComparator";
}

const char* CompoundReferenceComparator::getZORBPackageName() noexcept {
    return comparatorPackageName;
}

}  // namespace reference::api::comparator
