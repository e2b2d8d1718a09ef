#include "reference/api/cache_manager/EntitySearch.hpp"

#include <algorithm>
#include <initializer_list>
#include <unordered_set>

#include "foundation/core/NeverDestroyed.hpp"
#include "property/FunctionType.hpp"
#include "property/RefEntityType.hpp"
#include "reference/utils/toLowerCopy.hpp"
#include "refutils/matchUnqualifiedString.hpp"

namespace reference::cache_manager {
namespace {

using foundation::core::NeverDestroyed;
using property::FunctionType;
using property::RefEntityType;
using utils::toLowerCopy;
using enum ReferenceCacheManager::SearchMethod;

// The kinds of entity that may be asked for without their package. The others (commands, options,
// pages and the like) have names in which a dot does not separate components.
const NeverDestroyed<std::unordered_set<RefEntityType::Value>> s_unqualifiedMatchTypes(
    std::initializer_list<RefEntityType::Value>{
        RefEntityType::Function, RefEntityType::Class, RefEntityType::Package,
        RefEntityType::Method, RefEntityType::Property, RefEntityType::Event,
        RefEntityType::Enumeration, RefEntityType::Constructor, RefEntityType::Interface,
        RefEntityType::Constant, RefEntityType::Operator, RefEntityType::TypeAlias,
        RefEntityType::Macro});

bool contains(const std::u16string& text, const std::u16string& part) {
    return text.find(part) != std::u16string::npos;
}

}  // namespace

EntitySearch::EntitySearch(const api::ReferenceRequest& request,
                           ReferenceCacheManager::SearchMethod method)
    : m_request(request),
      m_method(method),
      m_searchText(request.isCaseSensitive() ? request.getEntityText()
                                             : toLowerCopy(request.getEntityText())),
      m_componentCount(static_cast<std::size_t>(std::ranges::count(m_searchText, u'.')) + 1),
      m_admitsMethods(std::ranges::find(request.getTypes(), RefEntityType::Method) !=
                      request.getTypes().end()) {}

std::map<std::u16string, ProductMatchData> EntitySearch::run(
    const ReferenceCacheManager::LookupCache& lookup) const {
    std::map<std::u16string, ProductMatchData> matches;
    const auto searchProduct = [&](const ReferenceCacheManager::LookupCache::value_type& product) {
        const auto& [name, resource] = product;
        if (matches.contains(name))
            return;
        if (Hrefs hrefs = searchResource(resource); !hrefs.empty())
            matches.emplace(name, ProductMatchData{resource.getHeaderInfo().getReferenceFileName(),
                                                   std::move(hrefs)});
    };

    if (coversAllProducts()) {
        std::ranges::for_each(lookup, searchProduct);
        return matches;
    }
    for (const auto& name : m_request.getProducts())
        if (const auto product = lookup.find(name); product != lookup.end())
            searchProduct(*product);
    return matches;
}

// A list of one empty name comes from callers that pass on an unset option: it restricts nothing.
bool EntitySearch::coversAllProducts() const {
    const auto& products = m_request.getProducts();
    return products.empty() || (products.size() == 1 && products.front().empty());
}

EntitySearch::Hrefs EntitySearch::searchResource(const LookupResource& resource) const {
    const bool asksForExactKey = !m_request.isAllTextMatch() && m_method == ReferenceSearch &&
                                 m_request.isCaseSensitive() && m_request.isExactMatch();
    return asksForExactKey ? findExactEntries(resource) : searchLookupEntries(resource);
}

EntitySearch::Hrefs EntitySearch::findExactEntries(const LookupResource& resource) const {
    Hrefs hrefs;
    const auto entry = resource.getItems().find(m_searchText);
    if (entry != resource.getItems().end())
        for (const Record& record : entry->second)
            insertIf(true, record, hrefs);
    return hrefs;
}

EntitySearch::Hrefs EntitySearch::searchLookupEntries(const LookupResource& resource) const {
    // Full-text and page searches do not look at the key, so it need not be folded for them.
    const bool foldsKeys =
        !m_request.isCaseSensitive() && m_method != AllTextSearch && m_method != PageNameSearch;
    Hrefs hrefs;
    std::u16string folded;
    for (const auto& [name, records] : resource.getItems()) {
        NameMemo memo;
        if (foldsKeys)
            folded = toLowerCopy(name);
        for (const Record& record : records)
            visit(foldsKeys ? folded : name, record, memo, hrefs);
    }
    return hrefs;
}

void EntitySearch::visit(const std::u16string& key, const Record& record, NameMemo& memo,
                         Hrefs& hrefs) const {
    switch (m_method) {
        case ClassEntitySearch:
            visitByClass(key, record, memo, hrefs);
            return;
        case NameAndPurposeSearch:
            insertIf(m_request.isAllTextMatch() ||
                         isNameOrPurposePart(m_searchText, key, record.getPurpose(),
                                             m_request.isCaseSensitive()),
                     record, hrefs);
            return;
        case AllTextSearch:
            insertIf(true, record, hrefs);
            return;
        case PageNameSearch: {
            const std::u16string href =
                m_request.isCaseSensitive() ? record.getHref() : toLowerCopy(record.getHref());
            insertIf(isEntityNameMatch(href, record), record, hrefs);
            return;
        }
        case ReferenceSearch:
            break;
    }
    visitByName(key, record, memo, hrefs);
}

// The name is tested once per key, for its first record of an accepted type, and the answer holds
// for the key's other records, even for types that would give another answer: the records of one
// key document one name, and are found together or not at all.
void EntitySearch::visitByName(const std::u16string& name, const Record& record, NameMemo& memo,
                               Hrefs& hrefs) const {
    if (!isTypeAccepted(record))
        return;
    if (!memo)
        memo = isEntityNameMatch(name, record);
    if (*memo)
        hrefs.insert(record.getHref());
}

// 1. A type that has members is found by its own name, whatever the memo says.
// 2. Anything else is a member, found by the name of its class: the key without its last component.
//    A key without a class, or no longer than the text, cannot be a member of what is asked for.
// 3. Once the memo holds an answer for the key, or when everything matches, the name is not asked.
void EntitySearch::visitByClass(const std::u16string& key, const Record& record, NameMemo& memo,
                                Hrefs& hrefs) const {
    if (ReferenceCacheManager::IsClassLikeType(record.getType()) &&
        isEntityNameMatch(key, record)) {
        insertIf(true, record, hrefs);
        return;
    }
    if (m_request.isAllTextMatch() || memo) {
        visitByName(key, record, memo, hrefs);
        return;
    }
    const auto lastDot = key.rfind(u'.');
    if (lastDot == std::u16string::npos || m_searchText.size() >= key.size())
        return;
    visitByName(key.substr(0, lastDot), record, memo, hrefs);
}

void EntitySearch::insertIf(bool isMatch, const Record& record, Hrefs& hrefs) const {
    if (isMatch && isTypeAccepted(record))
        hrefs.insert(record.getHref());
}

bool EntitySearch::isTypeAccepted(const Record& record) const {
    const auto& types = m_request.getTypes();
    if (types.empty())
        return true;
    // Some products file their methods as functions that are called like methods.
    if (m_admitsMethods && record.getType() == RefEntityType::Function &&
        record.getFunctionType() == FunctionType::Method)
        return true;
    return std::ranges::find(types, record.getType()) != types.end();
}

bool EntitySearch::isEntityNameMatch(const std::u16string& candidate, const Record& record) const {
    if (m_request.isAllTextMatch())
        return true;
    const bool qualified =
        m_request.isExactMatch() || !s_unqualifiedMatchTypes->contains(record.getType());
    return utils::matchUnqualifiedString(m_searchText, m_componentCount, candidate, qualified);
}

bool isNameOrPurposePart(const std::u16string& searchText, const std::u16string& name,
                         const std::u16string& purpose, bool caseSensitive) {
    if (searchText.empty())
        return false;
    return contains(name, searchText) ||
           contains(caseSensitive ? purpose : toLowerCopy(purpose), searchText);
}

}  // namespace reference::cache_manager
