// The items of one product, by number. Internal: no public header includes it.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "docimage/Lexicon.hpp"
#include "docimage/LookupImage.hpp"
#include "docimage/PageImage.hpp"
#include "docparser/DocResource.hpp"
#include "foundation/core/Once.hpp"
#include "property/RefItem.hpp"

namespace reference::search {

using ReferenceResource = docparser::DocResource<property::RefItem>;

// A class's item as the items of its properties: one synthetic item for each entity of the class
// and each property, entity by entity and in the order of the page.
struct ClassExpansion {
    struct Property {
        // The number of the entity in the class's item.
        std::size_t entity;
        // The entity's name, a dot and the property's name.
        std::u16string qualifiedName;
        // Name and purpose in search form: a text that occurs in neither has no form that occurs
        // here. The form of a matching name ends with that of the text.
        std::string form;
        std::size_t nameLength;
        property::RefItem item;
    };
    std::vector<Property> properties;
};

// The expansion of an item; empty for one without properties.
[[nodiscard]] ClassExpansion expandClass(const property::RefItem& item);

// A frozen view of a parsed resource: its pages in the order of their hrefs, and their items, page
// by page, numbered from 0. What is costly to make is made once, when it is first asked for. Any
// thread.
class ProductPages {
  public:
    // `resource` must not be null. What comes from an image throws DamagedImage.
    explicit ProductPages(std::shared_ptr<const ReferenceResource> resource);
    ProductPages(const ProductPages&) = delete;  // shared by pointer
    ProductPages& operator=(const ProductPages&) = delete;
    ~ProductPages();

    [[nodiscard]] const ReferenceResource& resource() const noexcept { return *m_resource; }

    [[nodiscard]] std::size_t pageCount() const noexcept;
    // As bytes; see docimage/unitBytes.hpp.
    [[nodiscard]] std::string href(std::size_t page) const;
    // The first item of the page, and the one after its last.
    [[nodiscard]] std::pair<std::uint32_t, std::uint32_t> itemsOfPage(std::size_t page) const;

    [[nodiscard]] std::size_t itemCount() const noexcept;
    [[nodiscard]] property::RefItem item(std::size_t number) const;
    [[nodiscard]] std::uint32_t pageOfItem(std::size_t number) const;

    // A measure of how much the item says: the bytes of its record in an image.
    [[nodiscard]] std::size_t sizeOfItem(std::size_t number) const;

    // The item's properties; without any for an item that has none.
    [[nodiscard]] const ClassExpansion& expansion(std::size_t number) const;

    // The image that the pages come from; null where they come from a map.
    [[nodiscard]] const docimage::PageImage* image() const noexcept { return m_image; }

    // The words of the texts that a search of all texts looks at, by item.
    [[nodiscard]] const docimage::Lexicon& words() const;
    // The numbers of these words by their stems.
    [[nodiscard]] const docimage::Lexicon& wordStems() const;

  private:
    [[nodiscard]] bool hasProperties(std::size_t item) const;
    void requireItem(std::size_t number) const;

    std::shared_ptr<const ReferenceResource> m_resource;
    // What the pages come from: an image, or else the resource's map, whose elements are numbered.
    const docimage::PageImage* m_image;
    std::vector<const std::u16string*> m_hrefs;
    std::vector<std::uint32_t> m_firstItems;
    std::vector<const property::RefItem*> m_items;
    std::vector<std::uint32_t> m_pagesOfItems;

    // Owned; null until they are first asked for.
    mutable std::vector<std::atomic<const property::SharedItem*>> m_imageItems;
    mutable std::vector<std::atomic<const ClassExpansion*>> m_expansions;
    mutable foundation::core::Once m_wordsMade;
    mutable std::shared_ptr<const docimage::Image> m_wordsImage;
    mutable docimage::Lexicon m_words;
    mutable foundation::core::Once m_stemsMade;
    mutable std::shared_ptr<const docimage::Image> m_stemsImage;
    mutable docimage::Lexicon m_wordStems;
};

// A product's pages as its lookup records refer to them.
class JoinedPages {
  public:
    static constexpr std::uint32_t none = UINT32_MAX;

    JoinedPages(const docimage::LookupImage& lookup, std::shared_ptr<const ProductPages> pages);

    [[nodiscard]] const ProductPages& pages() const noexcept { return *m_pages; }

    // The page of a lookup href, and the lookup href of a page; `none` where there is none.
    [[nodiscard]] std::uint32_t pageOfHref(std::uint32_t href) const {
        if (m_isSame)
            return href;
        return href < m_pagesOfHrefs.size() ? m_pagesOfHrefs[href] : none;
    }
    [[nodiscard]] std::uint32_t hrefOfPage(std::uint32_t page) const {
        if (m_isSame)
            return page;
        return page < m_hrefsOfPages.size() ? m_hrefsOfPages[page] : none;
    }

  private:
    std::shared_ptr<const ProductPages> m_pages;
    // Whether both have the same hrefs, as they mostly do.
    bool m_isSame = false;
    std::vector<std::uint32_t> m_pagesOfHrefs;
    std::vector<std::uint32_t> m_hrefsOfPages;
};

}  // namespace reference::search
