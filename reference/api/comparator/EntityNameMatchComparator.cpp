#include "reference/api/comparator/EntityNameMatchComparator.hpp"

#include <algorithm>
#include <utility>

#include "reference/api/comparator/matching.hpp"
#include "reference/api/hostNames.hpp"
#include "reference/utils/enumerationProperty.hpp"

namespace reference::api::comparator {

EntityNameMatchComparator::EntityNameMatchComparator() = default;

EntityNameMatchComparator::EntityNameMatchComparator(std::u16string entityName,
                                                     EntityCaseSensitivity::Value caseSensitivity)
    : m_entityName(std::move(entityName)), m_entityCaseSensitivity(caseSensitivity) {
    generateCompareName();
}

bool EntityNameMatchComparator::operator()(const ReferenceData& a, const ReferenceData& b) const {
    return matchGoesFirst(a, b, [this](const ReferenceData& data) { return isMatch(data); });
}

bool EntityNameMatchComparator::isMatch(const ReferenceData& data) const {
    return std::ranges::any_of(data.getRefItem().getRefEntities(), [this](const auto& entity) {
        return isComparedName(entity.getName(), m_compareName, m_entityCaseSensitivity);
    });
}

void EntityNameMatchComparator::generateCompareName() {
    m_compareName = comparedForm(m_entityName, m_entityCaseSensitivity);
}

void EntityNameMatchComparator::setEntityNameProperty(const std::u16string* entityName) {
    if (entityName == nullptr)
        return;
    auto taken = *this;  // nothing is changed before all is derived
    utils::setStringProperty(taken.m_entityName, entityName);
    taken.generateCompareName();
    *this = std::move(taken);
}

void EntityNameMatchComparator::setEntityCaseSensitivity(EntityCaseSensitivity::Value value) {
    m_entityCaseSensitivity = value;
    generateCompareName();
}

const vqArray* EntityNameMatchComparator::getEntityCaseSensitivityProperty() const {
    return utils::getEnumerationProperty(m_entityCaseSensitivityCache, m_entityCaseSensitivity);
}

void EntityNameMatchComparator::setEntityCaseSensitivityProperty(const vqArray* value) {
    auto taken = *this;  // nothing is changed before all is derived
    if (!utils::setEnumerationProperty(value, taken.m_entityCaseSensitivityCache,
                                       taken.m_entityCaseSensitivity))
        return;
    taken.generateCompareName();
    *this = std::move(taken);
}

const char* EntityNameMatchComparator::getZORBClassName() noexcept {
    return "EntityNameMatchComparator";
}

const char* EntityNameMatchComparator::getZORBPackageName() noexcept {
    return comparatorPackageName;
}

}  // namespace reference::api::comparator
