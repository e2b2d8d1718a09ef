// What the texts of items say of a question's words. Internal: no public header includes it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "reference/ask/StemKeys.hpp"
#include "reference/ask/passages.hpp"
#include "reference/search/LookupIndex.hpp"
#include "reference/search/ReferenceStore.hpp"

namespace reference::ask {

// Products whose pages cannot be read have nothing. One thread.
class ItemTexts {
  public:
    // The arguments must outlive the object.
    ItemTexts(const search::Snapshot& snapshot, StemKeys& stems);

    // A name, and the item that documents it, if it has one of its own, unlike a property of a
    // class.
    struct Entry {
        std::uint32_t key;
        std::optional<std::uint32_t> item;
        WordBits words;  // that the texts have anywhere
        std::size_t size = 0;
    };
    // The items of these names, and those whose texts have most of the stems, as far as they have a
    // name; each name once, in order. `names` are in order.
    [[nodiscard]] std::vector<Entry> entriesOf(const std::vector<std::uint32_t>& names,
                                               std::size_t likeliest);

    // The words of the passage of the entry's texts that has most of them.
    [[nodiscard]] WordBits passageOf(const Entry& entry);

    // How many items of its product have the last component of a name as a word: about as many as
    // the bytes that tell which.
    [[nodiscard]] std::size_t mentionsOf(std::uint32_t key) const;

  private:
    struct Item {
        std::uint32_t number;
        float score;
        WordBits words;
        std::uint32_t product;
    };
    [[nodiscard]] const search::JoinedPages* pagesOf(std::uint32_t product) const;
    [[nodiscard]] std::optional<std::uint32_t> keyOfItem(const Item& item) const;
    [[nodiscard]] std::optional<std::uint32_t> itemOfKey(std::uint32_t key) const;
    [[nodiscard]] PassageFinder& finderFor(std::uint32_t product);

    const search::Snapshot& m_snapshot;
    const search::LookupIndex& m_index;
    const docimage::QuestionIndex& m_questions;
    StemKeys& m_stems;
    std::map<std::uint32_t, PassageFinder> m_finders;  // by product
    // By product, as far as they were asked for: what cannot be read is not tried again.
    mutable std::vector<std::optional<const search::JoinedPages*>> m_pages;
};

}  // namespace reference::ask
