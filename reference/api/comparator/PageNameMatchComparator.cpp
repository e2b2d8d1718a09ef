#include "reference/api/comparator/PageNameMatchComparator.hpp"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

#include "reference/api/comparator/matching.hpp"
#include "reference/api/hostNames.hpp"
#include "reference/utils/enumerationProperty.hpp"

namespace reference::api::comparator {
namespace {

// The fold looks at this many units of a file name and cuts a longer one to them.
constexpr std::size_t foldedUnits = 1024;

// Everything after the last '/', a fragment included.
std::u16string_view fileNameOf(std::u16string_view href) {
    const auto slash = href.rfind(u'/');
    return slash == std::u16string_view::npos ? href : href.substr(slash + 1);
}

constexpr char16_t toLowerAscii(char16_t unit) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + (u'a' - u'A')) : unit;
}

// Whether a file name, folded, is `compareName`. This is deliberately not the fold that the page
// name goes through when it is set: file names of pages are ASCII, so that only ASCII letters are
// folded, within the first 1,024 units, to which the name is cut. With any other character among
// those, the name is compared whole and unfolded; it then matches only if it stands in the very
// form that the full fold gives the page name.
bool isFoldedFileName(std::u16string_view fileName, std::u16string_view compareName) {
    const std::u16string_view head = fileName.substr(0, foldedUnits);
    if (std::ranges::any_of(head, [](char16_t unit) { return unit > 0x7F; }))
        return fileName == compareName;
    return std::ranges::equal(head, compareName, {}, toLowerAscii);
}

}  // namespace

PageNameMatchComparator::PageNameMatchComparator() = default;

PageNameMatchComparator::PageNameMatchComparator(std::u16string pageName,
                                                 EntityCaseSensitivity::Value caseSensitivity)
    : m_pageName(std::move(pageName)), m_entityCaseSensitivity(caseSensitivity) {
    generateCompareName();
}

bool PageNameMatchComparator::operator()(const ReferenceData& a, const ReferenceData& b) const {
    return matchGoesFirst(a, b, [this](const ReferenceData& data) { return isMatch(data); });
}

bool PageNameMatchComparator::isMatch(const ReferenceData& data) const {
    const std::u16string_view fileName = fileNameOf(data.getRefItem().getHref());
    if (isCaseSensitive(m_entityCaseSensitivity))
        return fileName == m_compareName;
    return isFoldedFileName(fileName, m_compareName);
}

void PageNameMatchComparator::generateCompareName() {
    m_compareName = comparedForm(m_pageName, m_entityCaseSensitivity) + u".html";
}

void PageNameMatchComparator::setPageNameProperty(const std::u16string* pageName) {
    if (pageName == nullptr)
        return;
    auto taken = *this;  // nothing is changed before all is derived
    utils::setStringProperty(taken.m_pageName, pageName);
    taken.generateCompareName();
    *this = std::move(taken);
}

void PageNameMatchComparator::setEntityCaseSensitivity(EntityCaseSensitivity::Value value) {
    m_entityCaseSensitivity = value;
    generateCompareName();
}

const vqArray* PageNameMatchComparator::getEntityCaseSensitivityProperty() const {
    return utils::getEnumerationProperty(m_entityCaseSensitivityCache, m_entityCaseSensitivity);
}

void PageNameMatchComparator::setEntityCaseSensitivityProperty(const vqArray* value) {
    auto taken = *this;  // nothing is changed before all is derived
    if (!utils::setEnumerationProperty(value, taken.m_entityCaseSensitivityCache,
                                       taken.m_entityCaseSensitivity))
        return;
    taken.generateCompareName();
    *this = std::move(taken);
}

const char* PageNameMatchComparator::getZORBClassName() noexcept {
    return "PageNameMatchComparator";
}

const char* PageNameMatchComparator::getZORBPackageName() noexcept {
    return comparatorPackageName;
}

}  // namespace reference::api::comparator
