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
    if (takeText(m_entityName, entityName))
        generateCompareName();
}

void EntityNameMatchComparator::setEntityCaseSensitivity(EntityCaseSensitivity::Value value) {
    m_entityCaseSensitivity = value;
    generateCompareName();
}

const vqArray* EntityNameMatchComparator::getEntityCaseSensitivityProperty() const {
    return utils::getEnumerationProperty(m_entityCaseSensitivityCache, m_entityCaseSensitivity);
}

void EntityNameMatchComparator::setEntityCaseSensitivityProperty(const vqArray* value) {
    if (utils::setEnumerationProperty(value, m_entityCaseSensitivityCache, m_entityCaseSensitivity))
        generateCompareName();
}

const char* EntityNameMatchComparator::getZORBClassName() noexcept {
    return "EntityNameMatchComparator";
}

const char* EntityNameMatchComparator::getZORBPackageName() noexcept {
    return comparatorPackageName;
}

}  // namespace reference::api::comparator
