#include "reference/api/comparator/EntityMatchComparator.hpp"

#include <algorithm>
#include <utility>

#include "reference/api/comparator/matching.hpp"
#include "reference/api/hostNames.hpp"
#include "reference/utils/enumerationProperty.hpp"

namespace reference::api::comparator {

EntityMatchComparator::EntityMatchComparator() = default;

EntityMatchComparator::EntityMatchComparator(std::u16string entityName,
                                             property::RefEntityType::Value type,
                                             EntityCaseSensitivity::Value caseSensitivity)
    : m_entityName(std::move(entityName)),
      m_refEntityType(type),
      m_entityCaseSensitivity(caseSensitivity) {
    generateCompareName();
}

bool EntityMatchComparator::operator()(const ReferenceData& a, const ReferenceData& b) const {
    return matchGoesFirst(a, b, [this](const ReferenceData& data) { return isMatch(data); });
}

bool EntityMatchComparator::isMatch(const ReferenceData& data) const {
    return std::ranges::any_of(data.getRefItem().getRefEntities(), [this](const auto& entity) {
        return entity.getRefEntityType() == m_refEntityType &&
               isComparedName(entity.getName(), m_compareName, m_entityCaseSensitivity);
    });
}

void EntityMatchComparator::generateCompareName() {
    m_compareName = comparedForm(m_entityName, m_entityCaseSensitivity);
}

void EntityMatchComparator::setEntityNameProperty(const std::u16string* entityName) {
    if (entityName == nullptr)
        return;
    auto taken = *this;  // nothing is changed before all is derived
    utils::setStringProperty(taken.m_entityName, entityName);
    taken.generateCompareName();
    *this = std::move(taken);
}

void EntityMatchComparator::setEntityCaseSensitivity(EntityCaseSensitivity::Value value) {
    m_entityCaseSensitivity = value;
    generateCompareName();
}

const vqArray* EntityMatchComparator::getRefEntityTypeProperty() const {
    return utils::getEnumerationProperty(m_refEntityTypeCache, m_refEntityType);
}

void EntityMatchComparator::setRefEntityTypeProperty(const vqArray* value) {
    utils::setEnumerationProperty(value, m_refEntityTypeCache, m_refEntityType);
}

const vqArray* EntityMatchComparator::getEntityCaseSensitivityProperty() const {
    return utils::getEnumerationProperty(m_entityCaseSensitivityCache, m_entityCaseSensitivity);
}

void EntityMatchComparator::setEntityCaseSensitivityProperty(const vqArray* value) {
    auto taken = *this;  // nothing is changed before all is derived
    if (!utils::setEnumerationProperty(value, taken.m_entityCaseSensitivityCache,
                                       taken.m_entityCaseSensitivity))
        return;
    taken.generateCompareName();
    *this = std::move(taken);
}

const char* EntityMatchComparator::getZORBClassName() noexcept {
    return "EntityMatchComparator";
}

const char* EntityMatchComparator::getZORBPackageName() noexcept {
    return comparatorPackageName;
}

}  // namespace reference::api::comparator
