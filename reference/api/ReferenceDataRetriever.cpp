#include "reference/api/ReferenceDataRetriever.hpp"

#include <algorithm>
#include <iterator>
#include <typeinfo>
#include <utility>

#include "docimage/unitBytes.hpp"
#include "docparser/DocParserException.hpp"
#include "foundation/core/NeverDestroyed.hpp"
#include "reference/api/ClassEntityDataRetriever.hpp"
#include "reference/api/EntityPurposeDataRetriever.hpp"
#include "reference/api/PageNameDataRetriever.hpp"
#include "reference/api/cache_manager/referenceStore.hpp"
#include "reference/api/comparator/sortResults.hpp"
#include "reference/api/hostNames.hpp"
#include "reference/search/EntitySearch.hpp"
#include "reference/search/ProductPages.hpp"
#include "reference/utils/errors.hpp"
#include "reference/utils/toLowerCopy.hpp"
#include "zorb/ClassDescription.hpp"
#include "zorb/om.hpp"

namespace reference::api {

using cache_manager::ReferenceCacheManager;
using docparser::DocParserException;
using property::ClassProperty;
using property::HeaderInfo;
using property::RefEntity;
using property::RefEntityType;
using property::RefItem;
using search::ClassExpansion;
using search::JoinedPages;
using search::ReferenceRequestExt;
using search::Snapshot;

struct ReferenceDataRetriever::Prepared {
    explicit Prepared(ReferenceRequest given)
        : request(std::move(given)), ext(cache_manager::toExt(request)) {}

    const ReferenceRequest request;
    const ReferenceRequestExt ext;
};

ReferenceDataRetriever::ReferenceDataRetriever() = default;

ReferenceDataRetriever::ReferenceDataRetriever(ReferenceRequest request)
    : m_prepared(std::make_shared<const Prepared>(std::move(request))) {
    setupRetriever();
}

ReferenceDataRetriever::ReferenceDataRetriever(ReferenceDataRetriever&& other) noexcept = default;
ReferenceDataRetriever& ReferenceDataRetriever::operator=(ReferenceDataRetriever&& other) noexcept =
    default;
ReferenceDataRetriever::~ReferenceDataRetriever() = default;

void ReferenceDataRetriever::setupRetriever() {
    m_isPropertySearch = isTypeMatch(RefEntityType::Property);
}

const ReferenceDataRetriever::Prepared& ReferenceDataRetriever::prepared() const noexcept {
    static const foundation::core::NeverDestroyed<Prepared> none{ReferenceRequest()};
    return m_prepared ? *m_prepared : *none;
}

const ReferenceRequestExt& ReferenceDataRetriever::ext() const noexcept {
    return prepared().ext;
}

bool ReferenceDataRetriever::isAllTextMatch() const noexcept {
    return ext().isAllTextMatch();
}

bool ReferenceDataRetriever::isCaseSensitive() const noexcept {
    return ext().isCaseSensitive();
}

bool ReferenceDataRetriever::isExactMatch() const noexcept {
    return ext().isExactMatch();
}

const std::u16string& ReferenceDataRetriever::getSearchedText() const noexcept {
    return ext().searchText();
}

// One snapshot for the whole answer, because the caches may be cleared, or the language changed,
// meanwhile.
std::vector<ReferenceData> ReferenceDataRetriever::getReferenceData() const {
    auto results = cache_manager::referenceStore().answer([this](const Snapshot& snapshot) {
        std::vector<ReferenceData> found;
        if (snapshot.index() != nullptr)
            findReferenceData(snapshot, found);
        return found;
    });
    comparator::sortResults(results, prepared().request.getRefRequestComparator());
    return results;
}

void ReferenceDataRetriever::findReferenceData(const Snapshot& snapshot,
                                               std::vector<ReferenceData>& results) const {
    const search::LookupIndex& index = *snapshot.index();
    const bool passesHrefs = overridesFilter();
    const auto add = [&](std::uint32_t product, std::span<const std::uint32_t> matches) {
        try {
            const JoinedPages* const joined = snapshot.pagesOf(product);
            // The product's lookup file names a reference file that does not contain the product.
            if (joined == nullptr)
                return;
            if (!passesHrefs) {
                addPages(*joined, matches, results);
                return;
            }
            const auto& stored = index.lookup(product).hrefs();
            std::set<std::u16string> hrefs;
            for (const std::uint32_t href : matches)
                hrefs.insert(docimage::fromUnitBytes(stored[href]));
            auto found = filterReferenceData(joined->pages().resource(), hrefs);
            std::ranges::move(found, std::back_inserter(results));
        } catch (const DocParserException&) {
            // The other products are still searched. Nothing of this one has been added: its file
            // is read first, and what a filter of another class throws comes before its results.
        }
    };
    search::EntitySearch(index, ext(), cache_manager::toSearchMethod(getSearchMethod())).run(add);
}

// Whether the object may be of a class that is not the library's own.
bool ReferenceDataRetriever::overridesFilter() const {
    const std::type_info& type = typeid(*this);
    return type != typeid(ReferenceDataRetriever) && type != typeid(ClassEntityDataRetriever) &&
           type != typeid(EntityPurposeDataRetriever) && type != typeid(PageNameDataRetriever);
}

const vqArray* ReferenceDataRetriever::getReferenceRequestProperty() const {
    if (!m_requestCache)
        m_requestCache = zorb::wrap(prepared().request);
    return m_requestCache.get();
}

// Keeps a new object, not the given one: if a script goes on changing its request, it must not see
// those changes here, where they have no effect.
void ReferenceDataRetriever::setReferenceRequestProperty(const vqArray* value) {
    if (value == nullptr)
        return;
    if (omGetNumberOfElementsInUnderlyingArray(value) == 0)
        throw utils::ExpectedRequestError();
    ReferenceDataRetriever other(omGetNative<ReferenceRequest>(omGetArrayElement(value, 0)).copy());
    other.m_requestCache = zorb::wrap(other.prepared().request);
    // Nothing can fail from here on.
    ReferenceDataRetriever::operator=(std::move(other));
}

bool ReferenceDataRetriever::isTypeMatch(RefEntityType::Value type) const {
    return ext().isTypeMatch(type);
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
            const ClassExpansion expansion =
                m_isPropertySearch ? search::expandClass(item) : ClassExpansion();
            addItem(resource.getHeaderInfo(), item, expansion, result);
        }
    }
    return result;
}

void ReferenceDataRetriever::addPages(const JoinedPages& joined,
                                      std::span<const std::uint32_t> hrefs,
                                      std::vector<ReferenceData>& results) const {
    const search::ProductPages& pages = joined.pages();
    const HeaderInfo& header = pages.resource().getHeaderInfo();
    if (results.empty())
        results.reserve(hrefs.size());
    for (const std::uint32_t href : hrefs) {
        const std::uint32_t page = joined.pageOfHref(href);
        if (page == JoinedPages::none)
            continue;
        const auto [first, last] = pages.itemsOfPage(page);
        for (std::uint32_t number = first; number < last; ++number) {
            if (m_isPropertySearch)
                addItem(header, pages.item(number), pages.expansion(number), results);
            else
                results.emplace_back(header, pages.item(number));
        }
    }
}

// Adds a class as the items of its matching properties, and anything else as it is. The entities of
// an item are names of the same thing, so the first of them that has a matching property decides.
void ReferenceDataRetriever::addItem(const HeaderInfo& header, const RefItem& item,
                                     const ClassExpansion& expansion,
                                     std::vector<ReferenceData>& results) const {
    const auto& properties = expansion.properties;
    if (properties.empty()) {
        results.emplace_back(header, item);
        return;
    }
    const bool isAllMatch = isAllTextMatch();
    const std::type_info& type = typeid(*this);
    const bool looksForName = type == typeid(ReferenceDataRetriever);
    const bool looksForPart = type == typeid(EntityPurposeDataRetriever);
    const std::string_view nameForm = ext().nameForm();
    const std::string_view partForm = ext().partForm();
    // Forms are compared before names are folded. Other classes decide by rules of their own.
    const auto mayMatch = [&](const ClassExpansion::Property& property) {
        const std::string_view form = property.form;
        if (looksForName)
            return form.substr(0, property.nameLength).ends_with(nameForm);
        return !looksForPart || form.find(partForm) != std::string_view::npos;
    };
    const auto isMatch = [&](const ClassExpansion::Property& property) {
        if (isAllMatch)
            return true;
        return mayMatch(property) &&
               isPropertyContentMatch(
                   property.qualifiedName,
                   property.item.getClassPropertyGroups().front().getClassProperties().front());
    };
    auto property = std::ranges::find_if(properties, isMatch);
    if (property == properties.end()) {
        results.emplace_back(header, item);
        return;
    }
    const bool addsParent = std::ranges::any_of(
        item.getRefEntities(),
        [&](const RefEntity& entity) { return shouldAddParentEntity(entity, item); });
    if (addsParent)
        results.emplace_back(header, item);
    const std::size_t entity = property->entity;
    results.emplace_back(header, property->item);
    for (++property; property != properties.end() && property->entity == entity; ++property)
        if (isMatch(*property))
            results.emplace_back(header, property->item);
}

bool ReferenceDataRetriever::isPropertyContentMatch(const std::u16string& qualifiedName,
                                                    const ClassProperty& /*property*/) const {
    const ReferenceRequestExt& wanted = ext();
    return wanted.isCaseSensitive() ? wanted.isNameMatch(qualifiedName)
                                    : wanted.isNameMatch(utils::LowerCased(qualifiedName).view());
}

const char* ReferenceDataRetriever::getZORBClassName() noexcept {
    return "ReferenceDataRetriever";
}

const char* ReferenceDataRetriever::getZORBPackageName() noexcept {
    return apiPackageName;
}

}  // namespace reference::api
