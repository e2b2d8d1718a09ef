#include "reference/search/ProductPages.hpp"

#include <algorithm>

#include "docimage/Stemmer.hpp"
#include "docimage/searchForm.hpp"
#include "docimage/unitBytes.hpp"
#include "fl/i18n/contains.hpp"
#include "foundation/core/NeverDestroyed.hpp"
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
using property::SharedItem;

namespace {

// An item that documents the property alone, and points back to the page of its class.
RefItem createPropertyEntity(const RefItem& item, const std::u16string& groupTitle,
                             const ClassProperty& property, const std::u16string& qualifiedName,
                             const std::u16string& entityName) {
    // A class's entity usually has its package in its name; if not, the package is added.
    const std::u16string& package = item.getPackageName();
    const bool holdsPackage = fl::i18n::contains(qualifiedName, package);
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

// What items without properties share.
const foundation::core::NeverDestroyed<ClassExpansion> noProperties;

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
                std::string form = docimage::searchForm(qualifiedName);
                const std::size_t nameLength = form.size();
                form += '\n' + docimage::searchForm(property.getPurpose());
                expansion.properties.push_back({.entity = entity,
                                                .qualifiedName = std::move(qualifiedName),
                                                .form = std::move(form),
                                                .nameLength = nameLength,
                                                .item = std::move(made)});
            }
    return expansion;
}

ProductPages::ProductPages(std::shared_ptr<const ReferenceResource> resource)
    : m_resource(std::move(resource)), m_image(m_resource->getImage().get()) {
    if (m_image != nullptr) {
        m_imageItems = std::vector<std::atomic<const SharedItem*>>(m_image->itemCount());
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
    for (auto& slot : m_imageItems)
        if (const SharedItem* made = slot.load(std::memory_order_relaxed))
            intrusive_ptr_release(made);
    for (auto& slot : m_expansions)
        if (const ClassExpansion* made = slot.load(std::memory_order_relaxed);
            made != &*noProperties)
            delete made;
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

// Numbers of items come from an image, too.
void ProductPages::requireItem(std::size_t number) const {
    if (number >= itemCount())
        throw docimage::DamagedImage("An image refers to an item that it does not have.");
}

// Items of an image are kept, so that the next result that has one shares it.
RefItem ProductPages::item(std::size_t number) const {
    if (m_image == nullptr)
        return *m_items[number];
    requireItem(number);
    std::atomic<const SharedItem*>& slot = m_imageItems[number];
    const SharedItem* known = slot.load(std::memory_order_acquire);
    if (known == nullptr) {
        auto made = m_image->item(number);
        // Two threads may make it at once; what the first of them stores is kept.
        if (slot.compare_exchange_strong(known, made.get(), std::memory_order_acq_rel))
            known = made.detach();
    }
    return RefItem(boost::intrusive_ptr<const SharedItem>(known));
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

std::size_t ProductPages::sizeOfItem(std::size_t number) const {
    requireItem(number);
    return m_image != nullptr ? m_image->records()[number].size()
                              : docimage::sizeOfRecord(*m_items[number]);
}

// Most items have no properties; all of them share one expansion.
const ClassExpansion& ProductPages::expansion(std::size_t number) const {
    requireItem(number);
    std::atomic<const ClassExpansion*>& slot = m_expansions[number];
    const ClassExpansion* known = slot.load(std::memory_order_acquire);
    if (known != nullptr)
        return *known;
    auto made = hasProperties(number)
                    ? std::make_unique<const ClassExpansion>(expandClass(item(number)))
                    : nullptr;
    const ClassExpansion& wanted = made ? *made : *noProperties;
    if (!slot.compare_exchange_strong(known, &wanted, std::memory_order_acq_rel))
        return *known;
    static_cast<void>(made.release());
    return wanted;
}

const Lexicon& ProductPages::words() const {
    if (m_image != nullptr)
        return m_image->words();
    m_wordsMade.call([this] {
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

const Lexicon& ProductPages::wordStems() const {
    if (m_image != nullptr)
        return m_image->wordStems();
    m_stemsMade.call([this] {
        docimage::ImageWriter writer;
        constexpr std::uint32_t firstSection = 0;
        docimage::writeStems(words(), writer, firstSection);
        m_stemsImage = writer.finish();
        m_wordStems = Lexicon(*m_stemsImage, firstSection);
    });
    return m_wordStems;
}

// Both are in the order of their texts.
JoinedPages::JoinedPages(const LookupImage& lookup, std::shared_ptr<const ProductPages> pages)
    : m_pages(std::move(pages)) {
    const auto& image = m_pages->resource().getImage();
    m_isSame = image != nullptr && image->hrefsHash() == lookup.hrefsHash();
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
