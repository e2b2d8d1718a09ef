// A product's lookup records in the form that they are searched in.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "docimage/Aliases.hpp"
#include "docimage/Image.hpp"
#include "docimage/Lexicon.hpp"
#include "docimage/NameTable.hpp"
#include "docimage/TextTable.hpp"
#include "foundation/core/Once.hpp"
#include "foundation/core/export.hpp"
#include "property/RefItemLookup.hpp"

namespace reference::docimage {

// By what a name can be looked up: all of it, its last component, or the last two. The name is that
// of the entity, of its class (the key without its last component), or an href.
enum class NameKind : std::uint32_t {
    KeyWhole,
    KeyLast,
    KeyLastTwo,
    ClassWhole,
    ClassLast,
    ClassLastTwo,
    HrefWhole,
    HrefLast,
    HrefLastTwo,
};
inline constexpr std::size_t nameKinds = 9;

[[nodiscard]] constexpr bool isOfHrefs(NameKind kind) {
    return kind >= NameKind::HrefWhole;
}

// One lookup record; `href` is the number of its href.
struct StoredRecord {
    std::uint32_t type;
    std::uint32_t functionType;
    std::uint32_t href;
    std::uint32_t key;
};

// Keys, records and hrefs are numbered from 0: keys and hrefs in their order as texts, records by
// key and, under one key, as the documentation has them. Texts are bytes (see unitBytes.hpp).
//
// What is only needed to search (the tables of names and the lexicon of names and purposes) is made
// when it is first asked for, unless the image has it. Immutable apart from that; any thread. Views
// live as long as the object. Every operation throws DamagedImage where the image is damaged.
class VELTRA_HOST_API LookupImage {
  public:
    using Entities = std::map<std::u16string, std::vector<property::RefItemLookup>>;

    // Builds the image of these records in memory, with what the product's examples call modules.
    // Throws std::length_error for more than 4 GiB of text.
    explicit LookupImage(const Entities& entities, const Aliases& aliases = {});

    // An image that write() wrote.
    explicit LookupImage(std::shared_ptr<const Image> image);

    LookupImage(const LookupImage&) = delete;  // shared by pointer
    LookupImage& operator=(const LookupImage&) = delete;
    ~LookupImage();

    // All sections of an image of these records and aliases.
    static void write(const Entities& entities, const Aliases& aliases, ImageWriter& writer);

    [[nodiscard]] std::size_t keyCount() const noexcept { return m_keys.size(); }
    [[nodiscard]] std::string_view key(std::size_t number) const { return m_keys[number]; }
    // The number of the key with these bytes.
    [[nodiscard]] std::optional<std::uint32_t> findKey(std::string_view bytes) const;
    // The first record of the key, and the one after its last.
    [[nodiscard]] std::pair<std::uint32_t, std::uint32_t> recordsOfKey(std::size_t number) const {
        const auto bounds = m_firstRecords.range(number, 2);
        return {bounds[0], bounds[1]};
    }

    [[nodiscard]] std::size_t recordCount() const noexcept { return m_records.size(); }
    [[nodiscard]] const StoredRecord& record(std::size_t number) const { return m_records[number]; }
    [[nodiscard]] std::string_view purpose(std::size_t record) const { return m_purposes[record]; }

    [[nodiscard]] std::size_t hrefCount() const noexcept { return m_hrefs.size(); }
    [[nodiscard]] const TextTable& hrefs() const noexcept { return m_hrefs; }
    // The same as PageImage::hrefsHash() exactly if both have the same hrefs.
    [[nodiscard]] std::uint64_t hrefsHash() const { return m_hrefsHash[0]; }
    [[nodiscard]] std::span<const std::uint32_t> recordsOfHref(std::size_t number) const {
        const auto bounds = m_hrefStarts.range(number, 2);
        return m_hrefRecords.range(bounds[0], bounds[1] - bounds[0]);
    }

    // Numbers of keys or hrefs by the hash of a part of their search form.
    [[nodiscard]] const NameTable& names(NameKind kind) const {
        m_namesOnce.call([this] { makeNames(); });
        return m_names[static_cast<std::size_t>(kind)];
    }

    // The words of records: those of the key and of the purpose, each in its search form.
    [[nodiscard]] const Lexicon& words() const {
        m_wordsOnce.call([this] { makeWords(); });
        return m_words;
    }

    // The records, and the aliases, in the shape in which the documentation has them.
    [[nodiscard]] Entities entities() const;
    [[nodiscard]] Aliases aliases() const;

  private:
    void makeNames() const;
    void makeWords() const;

    std::shared_ptr<const Image> m_image;
    TextTable m_keys;
    ImageArray<std::uint32_t> m_firstRecords;
    ImageArray<StoredRecord> m_records;
    TextTable m_purposes;
    TextTable m_hrefs;
    ImageArray<std::uint64_t> m_hrefsHash;
    ImageArray<std::uint32_t> m_hrefStarts;
    ImageArray<std::uint32_t> m_hrefRecords;
    TextTable m_aliases;
    TextTable m_aliasNames;
    ImageArray<std::uint32_t> m_aliasCounts;

    // Each is made once.
    mutable foundation::core::Once m_namesOnce;
    mutable std::shared_ptr<const Image> m_namesImage;
    mutable std::array<NameTable, nameKinds> m_names;
    mutable foundation::core::Once m_wordsOnce;
    mutable std::shared_ptr<const Image> m_wordsImage;
    mutable Lexicon m_words;
};

}  // namespace reference::docimage
