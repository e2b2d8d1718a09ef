#include "reference/api/comparator/EntityTypeMatchComparator.hpp"

#include <algorithm>

#include "reference/api/comparator/matching.hpp"
#include "reference/api/hostNames.hpp"

namespace reference::api::comparator {

EntityTypeMatchComparator::EntityTypeMatchComparator() = default;

EntityTypeMatchComparator::EntityTypeMatchComparator(property::RefEntityType::Value type)
    : m_refEntityType(type) {}

bool EntityTypeMatchComparator::operator()(const ReferenceData& a, const ReferenceData& b) const {
    return matchGoesFirst(a, b, [this](const ReferenceData& data) { return isMatch(data); });
}

bool EntityTypeMatchComparator::isMatch(const ReferenceData& data) const {
    return std::ranges::any_of(data.getRefItem().getRefEntities(), [this](const auto& entity) {
        return entity.getRefEntityType() == m_refEntityType.get();
    });
}

const vqArray* EntityTypeMatchComparator::getRefEntityTypeProperty() const {
    return m_refEntityType.getProperty();
}

void EntityTypeMatchComparator::setRefEntityTypeProperty(const vqArray* value) {
    m_refEntityType.setProperty(value);
}

const char* EntityTypeMatchComparator::getZORBClassName() noexcept {
    return "EntityTypeMatchComparator";
}

const char* EntityTypeMatchComparator::getZORBPackageName() noexcept {
    return comparatorPackageName;
}

}  // namespace reference::api::comparator
