#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "grow/Vocabulary.hpp"
#include "property/RefItem.hpp"

namespace reference::bench {

// Turns real documentation into that of one made-up product, by spelling words as that product
// does. Letter case and everything that is no word stay as they are. One thread at a time.
class Renamer {
  public:
    // All hrefs begin with `folder`. The vocabulary must outlive this.
    Renamer(const Vocabulary& vocabulary, std::uint32_t product, std::u16string folder)
        : m_vocabulary(&vocabulary), m_product(product), m_folder(std::move(folder)) {}

    [[nodiscard]] std::u16string text(std::u16string_view text);

    // The name of an entity: its first word is the product's own, so that products share parts of
    // names but no whole names.
    [[nodiscard]] std::u16string entityName(std::u16string_view name);

    [[nodiscard]] std::u16string href(std::u16string_view href);

    [[nodiscard]] property::RefItem item(const property::RefItem& item);

  private:
    const std::string& spellingOf(const std::string& word);

    const Vocabulary* m_vocabulary;
    std::uint32_t m_product;
    std::u16string m_folder;
    std::unordered_map<std::string, std::string> m_spellings;
};

}  // namespace reference::bench
