#include "reference/api/ReferenceDataRetriever.hpp"

#include <algorithm>
#include <iterator>
#include <utility>

#include "docparser/DocParserException.hpp"
#include "reference/api/cache_manager/LookupSnapshot.hpp"
#include "reference/api/hostNames.hpp"
#include "reference/utils/errors.hpp"
#include "reference/utils/toLowerCopy.hpp"
#include "refutils/matchUnqualifiedString.hpp"
#include "zorb/ClassDescription.hpp"
#include "zorb/om.hpp"

namespace reference::api {

using cache_manager::ReferenceCacheManager;
using docparser::DocParserException;
using property::ClassProperty;
using property::ClassPropertyGroup;
using property::FunctionType;
using property::HeaderInfo;
using property::RefEntity;
using property::RefEntityType;
using property::RefItem;
using property::SeeAlso;

ReferenceDataRetriever::ReferenceDataRetriever() = default;

ReferenceDataRetriever::ReferenceDataRetriever(ReferenceRequest request)
    : m_request(std::move(request)) {
    setupRetriever();
}

ReferenceDataRetriever::ReferenceDataRetriever(ReferenceDataRetriever&& other) noexcept = default;
ReferenceDataRetriever& ReferenceDataRetriever::operator=(ReferenceDataRetriever&& other) noexcept =
    default;
ReferenceDataRetriever::~ReferenceDataRetriever() = default;

void ReferenceDataRetriever::setupRetriever() {
    const std::u16string& text = m_request.getEntityText();
    m_searchedText = m_request.isCaseSensitive() ? text : utils::toLowerCopy(text);
    m_isPropertySearch = isTypeMatch(RefEntityType::Property);
    m_componentCount = static_cast<std::size_t>(std::ranges::count(m_searchedText, u'.')) + 1;
}

std::vector<ReferenceData> ReferenceDataRetriever::getReferenceData() const {
    // One snapshot for the whole answer, because the caches may be cleared, or the language
    // changed, meanwhile.
    const cache_manager::LookupSnapshot lookup;
    const auto products = lookup.productsWithEntity(m_request, getSearchMethod());
    std::vector<ReferenceData> results;
    if (products.empty())
        return results;

    for (const auto& [product, matches] : products) {
        try {
            const auto resource = lookup.resourceOf(product, matches.referenceFileName);
            // The product's lookup file names a reference file that does not contain the product.
            if (!resource)
                continue;
            auto found = filterReferenceData(*resource, matches.hrefs);
            results.insert(results.end(), std::make_move_iterator(found.begin()),
                           std::make_move_iterator(found.end()));
        } catch (const DocParserException&) {
            // The other products are still searched.
        }
    }

    const RefRequestComparator comparator = m_request.getRefRequestComparator();
    std::stable_sort(results.begin(), results.end(), comparator);
    return results;
}

const vqArray* ReferenceDataRetriever::getReferenceRequestProperty() const {
    if (!m_requestCache)
        m_requestCache = zorb::wrap(m_request);
    return m_requestCache.get();
}

// Keeps a new object, not the given one: if a script goes on changing its request, it must not see
// those changes here, where they have no effect.
void ReferenceDataRetriever::setReferenceRequestProperty(const vqArray* value) {
    if (value == nullptr)
        return;
    if (omGetNumberOfElementsInUnderlyingArray(value) == 0)
        throw utils::ExpectedRequestError();
    ReferenceDataRetriever prepared(
        omGetNative<ReferenceRequest>(omGetArrayElement(value, 0)).copy());
    prepared.m_requestCache = zorb::wrap(prepared.m_request);
    // Nothing can fail from here on.
    ReferenceDataRetriever::operator=(std::move(prepared));
}

bool ReferenceDataRetriever::isTypeMatch(RefEntityType::Value type) const {
    const auto& types = m_request.getTypes();
    return types.empty() || std::ranges::find(types, type) != types.end();
}

bool ReferenceDataRetriever::shouldAddParentEntity(const RefEntity& entity,
                                                   const RefItem& /*item*/) const {
    return isTypeMatch(entity.getRefEntityType()) && isAllTextMatch();
}

ReferenceCacheManager::SearchMethod ReferenceDataRetriever::getSearchMethod() const {
    return ReferenceCacheManager::ReferenceSearch;
}

std::vector<ReferenceData> ReferenceDataRetriever::filterReferenceData(
    const Resource& resource, const std::set<std::u16string>& hrefs) const {
    std::vector<ReferenceData> result;
    result.reserve(hrefs.size());
    const auto& pages = resource.getItems();
    for (const auto& href : hrefs) {
        const auto page = pages.find(href);
        if (page == pages.end())
            continue;
        for (const RefItem& item : page->second) {
            if (m_isPropertySearch && isPropertyMatch(item))
                addPropertyMatches(resource.getHeaderInfo(), item, result);
            else
                result.emplace_back(resource.getHeaderInfo().copy(), item.copy());
        }
    }
    return result;
}

bool ReferenceDataRetriever::isPropertyMatch(const RefItem& item) const {
    return std::ranges::any_of(item.getRefEntities(), [&](const RefEntity& entity) {
        return findPropertyEntities(entity, item);
    });
}

// Makes the synthetic items of an entity's matching properties, and keeps them if there are any.
bool ReferenceDataRetriever::findPropertyEntities(const RefEntity& entity,
                                                  const RefItem& item) const {
    std::vector<RefItem> found;
    for (const ClassPropertyGroup& group : item.getClassPropertyGroups())
        for (const ClassProperty& property : group.getClassProperties()) {
            const std::u16string qualifiedName = entity.getName() + u"." + property.getName();
            if (isAllTextMatch() || isPropertyContentMatch(qualifiedName, property))
                found.push_back(createPropertyEntity(item, group.getTitle(), property,
                                                     qualifiedName, entity.getName()));
        }
    if (found.empty())
        return false;
    m_pendingPropertyEntities = std::move(found);
    return true;
}

bool ReferenceDataRetriever::isPropertyContentMatch(const std::u16string& qualifiedName,
                                                    const ClassProperty& /*property*/) const {
    const std::u16string name =
        isCaseSensitive() ? qualifiedName : utils::toLowerCopy(qualifiedName);
    return utils::matchUnqualifiedString(m_searchedText, m_componentCount, name, isExactMatch());
}

void ReferenceDataRetriever::addPropertyMatches(const HeaderInfo& header, const RefItem& item,
                                                std::vector<ReferenceData>& result) const {
    const bool addsParent = std::ranges::any_of(
        item.getRefEntities(),
        [&](const RefEntity& entity) { return shouldAddParentEntity(entity, item); });
    if (addsParent)
        result.emplace_back(header.copy(), item.copy());
    if (!m_pendingPropertyEntities)
        return;
    for (RefItem& property : *m_pendingPropertyEntities)
        result.emplace_back(header.copy(), std::move(property));
    m_pendingPropertyEntities.reset();
}

RefItem ReferenceDataRetriever::createPropertyEntity(const RefItem& item,
                                                     const std::u16string& groupTitle,
                                                     const ClassProperty& property,
                                                     const std::u16string& qualifiedName,
                                                     const std::u16string& entityName) const {
    // A class's entity usually has its package in its name; if not, the package is added.
    const std::u16string& package = item.getPackageName();
    const bool holdsPackage = qualifiedName.find(package) != std::u16string::npos;
    std::u16string fullName = holdsPackage ? qualifiedName : package + u"." + qualifiedName;

    // From the property back to the page of its class.
    const std::u16string& href = item.getHref();
    const auto slash = href.rfind(u'/');
    std::u16string page = slash == std::u16string::npos ? href : href.substr(slash + 1);

    return {property.getHref(),
            {RefEntity(RefEntityType::Property, std::move(fullName), FunctionType::Property)},
            package,
            property.getPurpose(),
            item.getIntroduced(),
            {},  // description: the property has its purpose
            {},  // app thumbnail
            item.getDeprecationStatus(),
            {},  // syntax groups
            {},  // inputs
            {},  // input groups
            {},  // outputs
            {ClassPropertyGroup(groupTitle, {property.copy()})},
            {SeeAlso(std::move(page), entityName)},
            {},   // examples
            {}};  // parameters
}

const char* ReferenceDataRetriever::getZORBClassName() noexcept {
    return "ReferenceDataRetriever";
}

const char* ReferenceDataRetriever::getZORBPackageName() noexcept {
    return apiPackageName;
}

}  // namespace reference::api
