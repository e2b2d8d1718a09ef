#include "reference/api/comparator/PageNameMatchComparator.hpp"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

#include "reference/api/comparator/matching.hpp"
#include "reference/api/hostNames.hpp"

namespace reference::api::comparator {
namespace {

constexpr std::u16string_view pageEnding = u".html";

// The fold looks at this many units of a file name and cuts a longer one to them.
constexpr std::size_t maxFoldedUnits = 1024;

// Everything after the last '/', a fragment included.
std::u16string_view fileNameOf(std::u16string_view href) {
    const auto slash = href.rfind(u'/');
    return slash == std::u16string_view::npos ? href : href.substr(slash + 1);
}

constexpr char16_t toLowerAscii(char16_t unit) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + (u'a' - u'A')) : unit;
}

// Whether a file name, folded, is `compareName`. This is deliberately not the fold of the page
// name. File names of pages are ASCII, so only ASCII letters are folded, and the name is cut to its
// first 1,024 units. If one of those is not ASCII, the whole name is compared unfolded: it matches
// only if it is what the full fold makes of the page name.
bool isFoldedFileName(std::u16string_view fileName, std::u16string_view compareName) {
    const std::u16string_view head = fileName.substr(0, maxFoldedUnits);
    if (std::ranges::any_of(head, [](char16_t unit) { return unit > 0x7F; }))
        return fileName == compareName;
    return std::ranges::equal(head, compareName, {}, toLowerAscii);
}

}  // namespace

PageNameMatchComparator::PageNameMatchComparator() : m_name(pageEnding) {}

PageNameMatchComparator::PageNameMatchComparator(std::u16string pageName,
                                                 EntityCaseSensitivity::Value caseSensitivity)
    : m_name(std::move(pageName), caseSensitivity, pageEnding) {}

bool PageNameMatchComparator::operator()(const ReferenceData& a, const ReferenceData& b) const {
    return matchGoesFirst(a, b, [this](const ReferenceData& data) { return isMatch(data); });
}

bool PageNameMatchComparator::isMatch(const ReferenceData& data) const {
    const std::u16string_view fileName = fileNameOf(data.getRefItem().getHref());
    return m_name.isCaseSensitive() ? fileName == m_name.getForm()
                                    : isFoldedFileName(fileName, m_name.getForm());
}

const char* PageNameMatchComparator::getZORBClassName() noexcept {
    return "PageNameMatchComparator";
}

const char* PageNameMatchComparator::getZORBPackageName() noexcept {
    return comparatorPackageName;
}

}  // namespace reference::api::comparator
