#include "reference/search/ProductPages.hpp"

#include <algorithm>

#include "docimage/unitBytes.hpp"
#include "property/FunctionType.hpp"
#include "property/RefEntityType.hpp"

namespace reference::search {

using docimage::Lexicon;
using docimage::LookupImage;
using property::ClassProperty;
using property::ClassPropertyGroup;
using property::FunctionType;
using property::RefEntity;
using property::RefEntityType;
using property::RefItem;
using property::SeeAlso;

namespace {

// An item that documents the property alone, and points back to the page of its class.
RefItem createPropertyEntity(const RefItem& item, const std::u16string& groupTitle,
                             const ClassProperty& property, const std::u16string& qualifiedName,
                             const std::u16string& entityName) {
    // A class's entity usually has its package in its name; if not, the package is added.
    const std::u16string& package = item.getPackageName();
    const bool holdsPackage = qualifiedName.find(package) != std::u16string::npos;
    std::u16string fullName = holdsPackage ? qualifiedName : package + u"." + qualifiedName;

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

// Makes what a slot holds when it is first asked for. Two threads may make it at once; what the
// first of them stores is kept.
template <typename T, typename Make>
const T& madeOnce(std::atomic<const T*>& slot, Make make) {
    const T* known = slot.load(std::memory_order_acquire);
    if (known != nullptr)
        return *known;
    auto made = std::make_unique<const T>(make());
    if (slot.compare_exchange_strong(known, made.get(), std::memory_order_acq_rel))
        return *made.release();
    return *known;
}

template <typename T>
void deleteAll(std::vector<std::atomic<const T*>>& slots) {
    for (const auto& slot : slots)
        delete slot.load(std::memory_order_relaxed);
}

}  // namespace

ClassExpansion expandClass(const RefItem& item) {
    ClassExpansion expansion;
    const auto& entities = item.getRefEntities();
    for (std::size_t entity = 0; entity < entities.size(); ++entity)
        for (const ClassPropertyGroup& group : item.getClassPropertyGroups())
            for (const ClassProperty& property : group.getClassProperties()) {
                const std::u16string& name = entities[entity].getName();
                std::u16string qualifiedName = name + u"." + property.getName();
                RefItem made =
                    createPropertyEntity(item, group.getTitle(), property, qualifiedName, name);
                expansion.properties.push_back({.entity = entity,
                                                .qualifiedName = std::move(qualifiedName),
                                                .item = std::move(made)});
            }
    return expansion;
}

ProductPages::ProductPages(std::shared_ptr<const ReferenceResource> resource)
    : m_resource(std::move(resource)), m_image(m_resource->getImage().get()) {
    if (m_image != nullptr) {
        m_imageItems = std::vector<std::atomic<const RefItem*>>(m_image->itemCount());
        m_expansions = std::vector<std::atomic<const ClassExpansion*>>(m_image->itemCount());
        return;
    }
    for (const auto& [href, items] : m_resource->getItems()) {
        const std::uint32_t page = docimage::toOffset(m_hrefs.size());
        m_hrefs.push_back(&href);
        m_firstItems.push_back(docimage::toOffset(m_items.size()));
        for (const RefItem& item : items) {
            m_items.push_back(&item);
            m_pagesOfItems.push_back(page);
        }
    }
    m_firstItems.push_back(docimage::toOffset(m_items.size()));
    m_expansions = std::vector<std::atomic<const ClassExpansion*>>(m_items.size());
}

ProductPages::~ProductPages() {
    deleteAll(m_imageItems);
    deleteAll(m_expansions);
}

std::size_t ProductPages::pageCount() const noexcept {
    return m_image != nullptr ? m_image->pageCount() : m_hrefs.size();
}

std::string ProductPages::href(std::size_t page) const {
    return m_image != nullptr ? std::string(m_image->hrefs()[page])
                              : docimage::toUnitBytes(*m_hrefs[page]);
}

std::pair<std::uint32_t, std::uint32_t> ProductPages::itemsOfPage(std::size_t page) const {
    return m_image != nullptr ? m_image->itemsOfPage(page)
                              : std::pair(m_firstItems[page], m_firstItems[page + 1]);
}

std::size_t ProductPages::itemCount() const noexcept {
    return m_image != nullptr ? m_image->itemCount() : m_items.size();
}

// Items of an image are kept, so that the next result that has one shares it.
const RefItem& ProductPages::item(std::size_t number) const {
    if (m_image == nullptr)
        return *m_items[number];
    return madeOnce(m_imageItems[number], [&] { return m_image->item(number); });
}

std::uint32_t ProductPages::pageOfItem(std::size_t number) const {
    return m_image != nullptr ? m_image->pageOfItem(number) : m_pagesOfItems[number];
}

bool ProductPages::hasProperties(std::size_t item) const {
    if (m_image != nullptr)
        return m_image->hasProperties(item);
    return std::ranges::any_of(m_items[item]->getClassPropertyGroups(), [](const auto& group) {
        return !group.getClassProperties().empty();
    });
}

// From a copy of the item, whose body goes with it.
const ClassExpansion* ProductPages::expansion(std::size_t number) const {
    if (!hasProperties(number))
        return nullptr;
    return &madeOnce(m_expansions[number], [&] { return expandClass(item(number).copy()); });
}

const Lexicon& ProductPages::words() const {
    if (m_image != nullptr)
        return m_image->words();
    std::call_once(m_wordsMade, [this] {
        docimage::LexiconBuilder builder;
        for (std::size_t number = 0; number < itemCount(); ++number)
            docimage::addWords(item(number), static_cast<std::uint32_t>(number), builder);
        docimage::ImageWriter writer;
        constexpr std::uint32_t firstSection = 0;
        builder.writeTo(writer, firstSection);
        m_wordsImage = writer.finish();
        m_words = Lexicon(*m_wordsImage, firstSection);
    });
    return m_words;
}

// Both are in the order of their texts.
JoinedPages::JoinedPages(const LookupImage& lookup, std::shared_ptr<const ProductPages> pages)
    : m_pages(std::move(pages)) {
    const auto& image = m_pages->resource().getImage();
    m_isSame = image != nullptr && image->hrefs() == lookup.hrefs();
    if (m_isSame)
        return;
    m_pagesOfHrefs.assign(lookup.hrefCount(), none);
    m_hrefsOfPages.assign(m_pages->pageCount(), none);
    std::uint32_t page = 0;
    std::string text = page < m_pages->pageCount() ? m_pages->href(page) : std::string();
    for (std::uint32_t href = 0; href < lookup.hrefCount(); ++href) {
        const std::string_view wanted = lookup.hrefs()[href];
        while (page < m_pages->pageCount() && text < wanted)
            if (++page < m_pages->pageCount())
                text = m_pages->href(page);
        if (page < m_pages->pageCount() && text == wanted) {
            m_pagesOfHrefs[href] = page;
            m_hrefsOfPages[page] = href;
        }
    }
}

}  // namespace reference::search
