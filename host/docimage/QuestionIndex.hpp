// What loosely put questions are answered from: the names of several products by their parts, their
// purposes by the stems of their words, and what their examples call modules.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "docimage/Image.hpp"
#include "docimage/Lexicon.hpp"
#include "docimage/LookupImage.hpp"
#include "foundation/core/export.hpp"

namespace reference::docimage {

// What hits are ordered by, so that most are ordered without a look at their names.
struct KeyFacts {
    static constexpr std::uint32_t otherTypes = 1U << 31U;

    // A bit for each entity type of the key's records; one bit for all types above 30.
    std::uint32_t types;
    // The smallest entity type, and the function type of that record: the preferred order.
    std::uint16_t kind;
    // Of the key: its components, and its bytes. Numbers that do not fit are the largest that does.
    std::uint8_t depth;
    std::uint8_t length;
    // Of the last component: its parts, and the bytes of all of them in a row.
    std::uint8_t lastParts;
    std::uint8_t lastLength;
    // The words of the purpose's first sentence that are no stop words.
    std::uint8_t purposeWords;
    // Pages that document the key.
    std::uint8_t entries;
};

[[nodiscard]] constexpr std::uint32_t typeBit(std::uint32_t type) noexcept {
    constexpr std::uint32_t firstOther = 31;
    return type < firstOther ? 1U << type : KeyFacts::otherTypes;
}

// Keys are numbered through all products, as JoinedNames numbers them. Immutable; any thread.
// Throws DamagedImage where the image is damaged. Views live as long as the object.
class VELTRA_HOST_API QuestionIndex {
  public:
    // The sections that write() wrote with the same number.
    QuestionIndex(std::shared_ptr<const Image> image, std::uint32_t firstSection);
    QuestionIndex(const QuestionIndex&) = delete;  // shared by pointer
    QuestionIndex& operator=(const QuestionIndex&) = delete;
    ~QuestionIndex();

    static void write(std::span<const LookupImage* const> products, ImageWriter& writer,
                      std::uint32_t firstSection);

    // The number of each product's first key, and after them the number of all keys.
    [[nodiscard]] const std::vector<std::uint32_t>& firstKeys() const noexcept {
        return m_firstKeys;
    }
    [[nodiscard]] std::size_t keyCount() const noexcept { return m_facts.size(); }
    // The number of the product that a key belongs to. Lexicons give keys that have not been
    // checked; this throws DamagedImage for one that there is not.
    [[nodiscard]] std::uint32_t productOf(std::uint32_t key) const;
    [[nodiscard]] const KeyFacts& facts(std::uint32_t key) const { return m_facts[key]; }
    [[nodiscard]] std::span<const KeyFacts> allFacts() const {
        return m_facts.range(0, m_facts.size());
    }

    // Keys by the search form of their first component; of the keys of a product that have the same
    // first component, the one that is nothing else, and the first that goes on from it.
    [[nodiscard]] const Lexicon& firstNames() const noexcept { return m_firstNames; }
    // Keys by their last component with its parts in a row: "readcsv".
    [[nodiscard]] const Lexicon& lastNames() const noexcept { return m_lastNames; }
    // Keys by each run of parts (see forEachRun) of the last component, and of those before it.
    [[nodiscard]] const Lexicon& lastParts() const noexcept { return m_lastParts; }
    [[nodiscard]] const Lexicon& outerParts() const noexcept { return m_outerParts; }
    // Keys by the stems of their purposes, without stop words.
    [[nodiscard]] const Lexicon& purposes() const noexcept { return m_purposes; }
    // The numbers in partWords() of the parts that have a stem.
    [[nodiscard]] const Lexicon& partStems() const noexcept { return m_partStems; }
    [[nodiscard]] const TextTable& partWords() const noexcept { return m_partWords; }
    // The numbers of the parts in the order of their bytes from the last to the first. They have
    // not been checked.
    [[nodiscard]] std::span<const std::uint32_t> partsByEnds() const {
        return m_partsByEnds.range(0, m_partsByEnds.size());
    }

    // The full names (as bytes) that an alias stands for in the examples of all products; those
    // that are seen more often go first, then those whose text does.
    [[nodiscard]] std::vector<std::string_view> namesOfAlias(std::string_view alias) const;

  private:
    const std::shared_ptr<const Image> m_image;
    std::vector<std::uint32_t> m_firstKeys;
    ImageArray<KeyFacts> m_facts;
    Lexicon m_firstNames;
    Lexicon m_lastNames;
    Lexicon m_lastParts;
    Lexicon m_outerParts;
    Lexicon m_purposes;
    Lexicon m_partStems;
    TextTable m_partWords;  // sorted
    ImageArray<std::uint32_t> m_partsByEnds;
    TextTable m_aliases;  // sorted, once for each name
    TextTable m_aliasNames;
};

}  // namespace reference::docimage
