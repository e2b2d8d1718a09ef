#include "reference/api/comparator/ProductMatchComparator.hpp"

#include <utility>

#include "reference/api/comparator/matching.hpp"
#include "reference/api/hostNames.hpp"
#include "refutils/hostTexts.hpp"

namespace reference::api::comparator {

ProductMatchComparator::ProductMatchComparator() = default;

ProductMatchComparator::ProductMatchComparator(std::u16string productName)
    : m_productName(std::move(productName)) {}

bool ProductMatchComparator::operator()(const ReferenceData& a, const ReferenceData& b) const {
    return matchGoesFirst(a, b, [this](const ReferenceData& data) { return isMatch(data); });
}

bool ProductMatchComparator::isMatch(const ReferenceData& data) const {
    return data.getHeaderInfo().getHelpFolder() == m_productName;
}

void ProductMatchComparator::setProductNameProperty(const std::u16string* productName) {
    utils::setStringProperty(m_productName, productName);
}

const char* ProductMatchComparator::getZORBClassName() noexcept {
    return "ProductMatchComparator";
}

const char* ProductMatchComparator::getZORBPackageName() noexcept {
    return comparatorPackageName;
}

}  // namespace reference::api::comparator
