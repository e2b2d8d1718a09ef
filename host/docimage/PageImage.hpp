// A product's pages in the form that they are searched in.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include "docimage/Image.hpp"
#include "docimage/Lexicon.hpp"
#include "docimage/TextTable.hpp"
#include "foundation/core/export.hpp"
#include "property/RefItem.hpp"

namespace reference::docimage {

// Pages are numbered in the order of their hrefs, items page by page. Texts are bytes (see
// unitBytes.hpp). Immutable; any thread. Views live as long as the object. Every operation throws
// DamagedImage where the image is damaged.
class VELTRA_HOST_API PageImage : public std::enable_shared_from_this<PageImage> {
  public:
    using Pages = std::map<std::u16string, std::vector<property::RefItem>>;

    // The sections that write() wrote with the same number.
    PageImage(std::shared_ptr<const Image> image, std::uint32_t firstSection);
    PageImage(const PageImage&) = delete;  // shared by pointer
    PageImage& operator=(const PageImage&) = delete;
    ~PageImage();

    // All sections of an image of these pages; their numbers begin with `firstSection`.
    static void write(const Pages& pages, ImageWriter& writer, std::uint32_t firstSection);

    [[nodiscard]] std::size_t pageCount() const noexcept { return m_hrefs.size(); }
    [[nodiscard]] const TextTable& hrefs() const noexcept { return m_hrefs; }
    [[nodiscard]] std::uint64_t hrefsHash() const { return m_hrefsHash[0]; }
    // The first item of the page, and the one after its last.
    [[nodiscard]] std::pair<std::uint32_t, std::uint32_t> itemsOfPage(std::size_t page) const;

    [[nodiscard]] std::size_t itemCount() const noexcept { return m_items.size(); }
    [[nodiscard]] std::uint32_t pageOfItem(std::size_t item) const { return m_pagesOfItems[item]; }

    // The item, whose body is read when it is asked for. It keeps this object alive.
    [[nodiscard]] boost::intrusive_ptr<const property::SharedItem> item(std::size_t number) const;
    [[nodiscard]] bool hasProperties(std::size_t item) const;

    // The records of the items, as bytes that hold all their texts.
    [[nodiscard]] const TextTable& records() const noexcept { return m_items; }
    // Calls `visit(text)` with the bytes of each text that a search of all texts looks at, until it
    // returns true; returns whether it did.
    [[nodiscard]] bool anySearchedText(std::size_t item,
                                       const std::function<bool(std::string_view)>& visit) const;

    // The words of the texts that a search of all texts looks at, by item.
    [[nodiscard]] const Lexicon& words() const noexcept { return m_words; }

    // The numbers of these words by their stems.
    [[nodiscard]] const Lexicon& wordStems() const noexcept { return m_wordStems; }

    // The pages in the shape in which the documentation has them.
    [[nodiscard]] Pages pages() const;

  private:
    class StoredItem;

    std::shared_ptr<const Image> m_image;
    TextTable m_hrefs;
    ImageArray<std::uint64_t> m_hrefsHash;
    ImageArray<std::uint32_t> m_firstItems;
    TextTable m_items;
    ImageArray<std::uint32_t> m_pagesOfItems;
    Lexicon m_words;
    Lexicon m_wordStems;
};

// The size of the record that an image has of the item.
[[nodiscard]] VELTRA_HOST_API std::size_t sizeOfRecord(const property::RefItem& item);

// Adds the words of the texts that a search of all texts looks at.
VELTRA_HOST_API void addWords(const property::RefItem& item, std::uint32_t number,
                              LexiconBuilder& words);

}  // namespace reference::docimage
