#include "docimage/PageImage.hpp"

#include "docimage/ItemRecord.hpp"
#include "docimage/Stemmer.hpp"
#include "docimage/searchedTexts.hpp"
#include "docimage/unitBytes.hpp"

namespace reference::docimage {
namespace {

using property::RefItem;

// The sections of a product, counted from its first.
enum PageSection : std::uint32_t {
    PageHrefs = 0,  // 2 sections
    PageFirstItems = 2,
    PageItems = 3,  // 2 sections
    PagePagesOfItems = 5,
    PageWords = 6,  // 8 sections
    PageHrefsHash = 14,
    PageWordStems = 15,  // 8 sections
};

}  // namespace

// An item whose record is in an image. What has been read of it is checked.
class PageImage::StoredItem final : public property::SharedItem {
  public:
    StoredItem(std::shared_ptr<const PageImage> image, std::string_view record)
        : SharedItem(readItemHead(record)), m_image(std::move(image)), m_record(record) {}

    [[nodiscard]] boost::intrusive_ptr<const property::WholeItem> whole() const override {
        return readItem(m_record);
    }

  private:
    const std::shared_ptr<const PageImage> m_image;
    const std::string_view m_record;
};

PageImage::PageImage(std::shared_ptr<const Image> image, std::uint32_t firstSection)
    : m_image(std::move(image)),
      m_hrefs(*m_image, firstSection + PageHrefs),
      m_hrefsHash(*m_image, firstSection + PageHrefsHash),
      m_firstItems(*m_image, firstSection + PageFirstItems),
      m_items(*m_image, firstSection + PageItems),
      m_pagesOfItems(*m_image, firstSection + PagePagesOfItems),
      m_words(*m_image, firstSection + PageWords),
      m_wordStems(*m_image, firstSection + PageWordStems) {}

PageImage::~PageImage() = default;

void PageImage::write(const Pages& pages, ImageWriter& writer, std::uint32_t firstSection) {
    TextTableBuilder hrefs;
    TextTableBuilder records;
    std::vector<std::uint32_t> firstItems;
    std::vector<std::uint32_t> pagesOfItems;
    LexiconBuilder words;
    for (const auto& [href, items] : pages) {
        const std::uint32_t page = toOffset(hrefs.add(toUnitBytes(href)));
        firstItems.push_back(toOffset(pagesOfItems.size()));
        for (const RefItem& item : items) {
            const std::uint32_t number = toOffset(records.add(toItemRecord(item)));
            pagesOfItems.push_back(page);
            addWords(item, number, words);
        }
    }
    firstItems.push_back(toOffset(pagesOfItems.size()));
    hrefs.writeTo(writer, firstSection + PageHrefs);
    writer.addArray(firstSection + PageHrefsHash, std::vector<std::uint64_t>{hrefs.hash()});
    writer.addArray(firstSection + PageFirstItems, firstItems);
    records.writeTo(writer, firstSection + PageItems);
    writer.addArray(firstSection + PagePagesOfItems, pagesOfItems);
    ImageWriter aside;
    words.writeTo(aside, PageWords);
    const auto lexicon = aside.finish();
    writer.addSectionsOf(*lexicon, firstSection);
    writeStems(Lexicon(*lexicon, PageWords), writer, firstSection + PageWordStems);
}

std::pair<std::uint32_t, std::uint32_t> PageImage::itemsOfPage(std::size_t page) const {
    const auto bounds = m_firstItems.range(page, 2);
    return {bounds[0], bounds[1]};
}

boost::intrusive_ptr<const property::SharedItem> PageImage::item(std::size_t number) const {
    return new StoredItem(shared_from_this(), m_items[number]);
}

bool PageImage::hasProperties(std::size_t item) const {
    return docimage::hasProperties(m_items[item]);
}

bool PageImage::anySearchedText(std::size_t item,
                                const std::function<bool(std::string_view)>& visit) const {
    return docimage::anySearchedText(m_items[item], visit);
}

PageImage::Pages PageImage::pages() const {
    Pages pages;
    for (std::size_t page = 0; page < pageCount(); ++page) {
        std::vector<RefItem> items;
        const auto [first, last] = itemsOfPage(page);
        for (std::uint32_t number = first; number < last; ++number)
            items.emplace_back(item(number));
        pages.emplace_hint(pages.end(), fromUnitBytes(m_hrefs[page]), std::move(items));
    }
    return pages;
}

std::size_t sizeOfRecord(const RefItem& item) {
    return toItemRecord(item).size();
}

void addWords(const RefItem& item, std::uint32_t number, LexiconBuilder& words) {
    anySearchedText(item, [&](const std::u16string& text) {
        words.addText(text, number);
        return false;
    });
}

}  // namespace reference::docimage
