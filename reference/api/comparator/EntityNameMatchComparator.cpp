#include "reference/api/comparator/EntityNameMatchComparator.hpp"

#include <algorithm>
#include <utility>

#include "reference/api/comparator/matching.hpp"
#include "reference/api/hostNames.hpp"

namespace reference::api::comparator {

EntityNameMatchComparator::EntityNameMatchComparator() = default;

EntityNameMatchComparator::EntityNameMatchComparator(std::u16string entityName,
                                                     EntityCaseSensitivity::Value caseSensitivity)
    : m_name(std::move(entityName), caseSensitivity) {}

bool EntityNameMatchComparator::operator()(const ReferenceData& a, const ReferenceData& b) const {
    return matchGoesFirst(a, b, [this](const ReferenceData& data) { return isMatch(data); });
}

bool EntityNameMatchComparator::isMatch(const ReferenceData& data) const {
    return std::ranges::any_of(data.getRefItem().getRefEntities(), [this](const auto& entity) {
        return m_name.isNameOf(entity.getName());
    });
}

const char* EntityNameMatchComparator::getZORBClassName() noexcept {
    return "EntityNameMatchComparator";
}

const char* EntityNameMatchComparator::getZORBPackageName() noexcept {
    return comparatorPackageName;
}

}  // namespace reference::api::comparator
