#include "reference/api/comparator/EntityMatchComparator.hpp"

#include <algorithm>
#include <utility>

#include "reference/api/comparator/matching.hpp"
#include "reference/api/hostNames.hpp"

namespace reference::api::comparator {

EntityMatchComparator::EntityMatchComparator() = default;

EntityMatchComparator::EntityMatchComparator(std::u16string entityName,
                                             property::RefEntityType::Value type,
                                             EntityCaseSensitivity::Value caseSensitivity)
    : m_name(std::move(entityName), caseSensitivity), m_refEntityType(type) {}

bool EntityMatchComparator::operator()(const ReferenceData& a, const ReferenceData& b) const {
    return matchGoesFirst(a, b, [this](const ReferenceData& data) { return isMatch(data); });
}

bool EntityMatchComparator::isMatch(const ReferenceData& data) const {
    return std::ranges::any_of(data.getRefItem().getRefEntities(), [this](const auto& entity) {
        return entity.getRefEntityType() == m_refEntityType.get() &&
               m_name.isNameOf(entity.getName());
    });
}

const vqArray* EntityMatchComparator::getRefEntityTypeProperty() const {
    return m_refEntityType.getProperty();
}

void EntityMatchComparator::setRefEntityTypeProperty(const vqArray* value) {
    m_refEntityType.setProperty(value);
}

const char* EntityMatchComparator::getZORBClassName() noexcept {
    return "EntityMatchComparator";
}

const char* EntityMatchComparator::getZORBPackageName() noexcept {
    return comparatorPackageName;
}

}  // namespace reference::api::comparator
