#include "reference/api/comparator/ComparedName.hpp"

#include <utility>

#include "reference/utils/toLowerCopy.hpp"

namespace reference::api::comparator {

ComparedName::ComparedName(std::u16string text, EntityCaseSensitivity::Value caseSensitivity,
                           std::u16string_view ending)
    : m_ending(ending) {
    set(std::move(text), CaseSensitivity(caseSensitivity));
}

// Everything that may fail comes before the first change.
void ComparedName::set(std::u16string text, CaseSensitivity caseSensitivity) {
    const bool isSensitive = caseSensitivity.get() == EntityCaseSensitivity::Sensitive;
    std::u16string form = isSensitive ? text : utils::toLowerCopy(text);
    form += m_ending;
    m_text = std::move(text);
    m_form = std::move(form);
    m_caseSensitivity = std::move(caseSensitivity);
}

void ComparedName::setText(const std::u16string* text) {
    if (text != nullptr)
        set(*text, m_caseSensitivity);
}

void ComparedName::setCaseSensitivity(EntityCaseSensitivity::Value value) {
    CaseSensitivity changed = m_caseSensitivity;
    changed.set(value);
    set(m_text, std::move(changed));
}

const vqArray* ComparedName::getCaseSensitivityProperty() const {
    return m_caseSensitivity.getProperty();
}

void ComparedName::setCaseSensitivityProperty(const vqArray* value) {
    CaseSensitivity changed = m_caseSensitivity;
    if (changed.setProperty(value))
        set(m_text, std::move(changed));
}

bool ComparedName::isNameOf(std::u16string_view name) const {
    return isCaseSensitive() ? name == m_form : utils::LowerCased(name).view() == m_form;
}

}  // namespace reference::api::comparator
