#include "reference/search/ReferenceRequestExt.hpp"

#include <algorithm>
#include <array>

#include "fl/i18n/contains.hpp"
#include "reference/utils/toLowerCopy.hpp"
#include "refutils/matchUnqualifiedString.hpp"

namespace reference::search {
namespace {

using fl::i18n::contains;
using property::FunctionType;
using property::RefEntityType;

constexpr std::array s_classLikeTypes = {RefEntityType::Class, RefEntityType::Enumeration,
                                         RefEntityType::Interface};

// The kinds of entity that may be asked for without their package. The others (commands, options,
// pages and the like) have names in which a dot does not separate components.
constexpr std::array s_unqualifiedMatchTypes = {
    RefEntityType::Function,    RefEntityType::Class,       RefEntityType::Package,
    RefEntityType::Method,      RefEntityType::Property,    RefEntityType::Event,
    RefEntityType::Enumeration, RefEntityType::Constructor, RefEntityType::Interface,
    RefEntityType::Constant,    RefEntityType::Operator,    RefEntityType::TypeAlias,
    RefEntityType::Macro};

bool isLead(char16_t unit) {
    return (unit & 0xFC00U) == 0xD800U;
}
bool isTrail(char16_t unit) {
    return (unit & 0xFC00U) == 0xDC00U;
}

// Without what may be the half of a surrogate pair in the texts that are searched.
std::u16string_view withoutHalves(std::u16string_view text) {
    if (!text.empty() && isTrail(text.front()))
        text.remove_prefix(1);
    if (!text.empty() && isLead(text.back()))
        text.remove_suffix(1);
    return text;
}

// A list of one empty name comes from callers that pass on an unset option: it restricts nothing.
std::span<const std::u16string> withoutUnset(std::span<const std::u16string> products) {
    const bool isUnset = products.size() == 1 && products.front().empty();
    return isUnset ? std::span<const std::u16string>() : products;
}

}  // namespace

bool isClassLikeType(std::uint32_t type) noexcept {
    return std::ranges::find(s_classLikeTypes, type) != s_classLikeTypes.end();
}

bool isNameAndPurposeContentMatch(std::u16string_view searchText, std::u16string_view name,
                                  std::u16string_view purpose, bool caseSensitive) {
    if (searchText.empty())
        return false;
    return contains(name, searchText) ||
           contains(caseSensitive ? purpose : utils::LowerCased(purpose).view(), searchText);
}

ReferenceRequestExt::ReferenceRequestExt(const Request& request)
    : m_isAllTextMatch(request.isAllTextMatch),
      m_isCaseSensitive(request.isCaseSensitive),
      m_isExactMatch(request.isExactMatch),
      m_hasType3(std::ranges::find(request.types, RefEntityType::Method) != request.types.end()),
      m_text(request.text),
      m_types(request.types),
      m_products(withoutUnset(request.products)),
      m_folded(request.isCaseSensitive ? std::u16string() : utils::toLowerCopy(request.text)),
      m_componentCount(static_cast<std::size_t>(std::ranges::count(searchText(), u'.')) + 1) {
    docimage::assignSearchForm(searchText(), m_nameForm);
    const std::u16string_view whole = withoutHalves(searchText());
    m_hasHalves = whole.size() != searchText().size();
    if (m_hasHalves)
        docimage::assignSearchForm(whole, m_partForm);
}

bool ReferenceRequestExt::isTypeMatch(std::uint32_t type) const noexcept {
    return m_types.empty() || std::ranges::find(m_types, type) != m_types.end();
}

bool ReferenceRequestExt::isTypeAccepted(std::uint32_t type,
                                         std::uint32_t functionType) const noexcept {
    return isTypeMatch(type) ||
           (m_hasType3 && type == RefEntityType::Function && functionType == FunctionType::Method);
}

bool ReferenceRequestExt::isEntityNameMatch(std::u16string_view candidate,
                                            std::uint32_t type) const {
    if (m_isAllTextMatch)
        return true;
    const bool qualified = m_isExactMatch || std::ranges::find(s_unqualifiedMatchTypes, type) ==
                                                 s_unqualifiedMatchTypes.end();
    return utils::matchUnqualifiedString(searchText(), m_componentCount, candidate, qualified);
}

bool ReferenceRequestExt::isNameMatch(std::u16string_view candidate) const {
    return utils::matchUnqualifiedString(searchText(), m_componentCount, candidate, m_isExactMatch);
}

bool ReferenceRequestExt::isNameAndPurposeMatch(std::u16string_view name,
                                                std::u16string_view purpose) const {
    return isNameAndPurposeContentMatch(searchText(), name, purpose, m_isCaseSensitive);
}

bool ReferenceRequestExt::isTextMatch(std::u16string_view text) const {
    if (searchText().empty())
        return true;
    return m_isCaseSensitive ? contains(text, m_text)
                             : contains(utils::LowerCased(text).view(), m_folded);
}

}  // namespace reference::search
