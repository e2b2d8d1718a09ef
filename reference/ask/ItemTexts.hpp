// What the texts of items say of a question's words. Internal: no public header includes it.
#pragma once

#include <cstddef>
#include <cstdint>
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
    // What one item says.
    struct Said {
        PassageFinder::Texts texts;
        std::size_t size = 0;  // of the texts
    };

    // The arguments must outlive the object.
    ItemTexts(const search::Snapshot& snapshot, StemKeys& stems);

    // The names of the items whose texts have most of the stems.
    [[nodiscard]] std::vector<std::uint32_t> likeliestKeys(std::size_t count);

    // What the item that documents the name says; nothing where it has none of its own, as a
    // property of a class.
    [[nodiscard]] Said read(std::uint32_t key);

    // How often the texts of its product mention the name, in powers of ten: what everybody uses is
    // mentioned often. Names with the same last component share its mentions.
    [[nodiscard]] float prominenceOf(std::uint32_t key) const;

  private:
    struct Item {
        std::uint32_t product;
        std::uint32_t number;
        float score;
    };
    [[nodiscard]] std::vector<Item> likeliestItems(std::size_t count);
    [[nodiscard]] const search::JoinedPages* pagesOf(std::uint32_t product) const;
    [[nodiscard]] std::optional<std::uint32_t> keyOfItem(const Item& item) const;
    [[nodiscard]] std::optional<std::uint32_t> itemOfKey(std::uint32_t key) const;
    void readProduct(std::uint32_t product);

    const search::Snapshot& m_snapshot;
    const search::LookupIndex& m_index;
    const docimage::QuestionIndex& m_questions;
    StemKeys& m_stems;
    // Looks at the texts of one product.
    std::optional<std::uint32_t> m_product;
    PassageFinder m_finder;
};

}  // namespace reference::ask
