#include "reference/search/ProductPages.hpp"

#include <algorithm>

#include "docimage/searchedTexts.hpp"
#include "docimage/unitBytes.hpp"
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

namespace {

// Stands for an item without properties.
const foundation::core::NeverDestroyed<ClassExpansion> noProperties;

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

bool hasProperties(const RefItem& item) {
    return std::ranges::any_of(item.getClassPropertyGroups(), [](const auto& group) {
        return !group.getClassProperties().empty();
    });
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
    : m_resource(std::move(resource)) {
    for (const auto& [href, items] : m_resource->getItems()) {
        const auto page = static_cast<std::uint32_t>(m_hrefs.size());
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
    for (const auto& expansion : m_expansions)
        if (const ClassExpansion* made = expansion.load(); made != &*noProperties)
            delete made;
}

const ClassExpansion* ProductPages::expansion(std::size_t number) const {
    std::atomic<const ClassExpansion*>& slot = m_expansions[number];
    const ClassExpansion* known = slot.load(std::memory_order_acquire);
    if (known == nullptr) {
        // Two threads may make it at once; one of the two is kept.
        auto made = hasProperties(item(number))
                        ? std::make_unique<const ClassExpansion>(expandClass(item(number)))
                        : nullptr;
        const ClassExpansion* const kept = made ? made.get() : &*noProperties;
        if (slot.compare_exchange_strong(known, kept, std::memory_order_acq_rel)) {
            static_cast<void>(made.release());
            known = kept;
        }
    }
    return known == &*noProperties ? nullptr : known;
}

const Lexicon& ProductPages::words() const {
    std::call_once(m_wordsMade, [this] {
        docimage::LexiconBuilder builder;
        for (std::size_t number = 0; number < itemCount(); ++number)
            docimage::anySearchedText(item(number), [&](const std::u16string& text) {
                builder.addText(text, static_cast<std::uint32_t>(number));
                return false;
            });
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
    : m_pages(std::move(pages)),
      m_pagesOfHrefs(lookup.hrefCount(), none),
      m_hrefsOfPages(m_pages->pageCount(), none) {
    std::u16string text;
    std::uint32_t page = 0;
    for (std::uint32_t href = 0; href < lookup.hrefCount(); ++href) {
        docimage::assignUnitBytes(lookup.hrefs()[href], text);
        while (page < m_pages->pageCount() && m_pages->href(page) < text)
            ++page;
        if (page < m_pages->pageCount() && m_pages->href(page) == text) {
            m_pagesOfHrefs[href] = page;
            m_hrefsOfPages[page] = href;
        }
    }
}

}  // namespace reference::search
