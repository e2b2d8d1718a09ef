// The tables of names of several products as one.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "docimage/Image.hpp"
#include "docimage/LookupImage.hpp"
#include "docimage/NameTable.hpp"
#include "foundation/core/export.hpp"

namespace reference::docimage {

// All kinds of names of several products, with keys and hrefs numbered through: one probe finds a
// name in all products. Immutable; any thread. Throws DamagedImage where the image is damaged.
class VELTRA_HOST_API JoinedNames {
  public:
    // The sections that write() wrote with the same number.
    JoinedNames(std::shared_ptr<const Image> image, std::uint32_t firstSection);
    JoinedNames(const JoinedNames&) = delete;  // shared by pointer
    JoinedNames& operator=(const JoinedNames&) = delete;
    ~JoinedNames();

    // The names of these products; the numbers of the sections begin with `firstSection`. Throws
    // std::length_error where there are more than 2^32 keys or hrefs.
    static void write(std::span<const std::shared_ptr<const LookupImage>> products,
                      ImageWriter& writer, std::uint32_t firstSection);

    // The entries of one kind of name, ready for NameTable::write().
    [[nodiscard]] static std::vector<NameTable::Entry> join(
        std::span<const LookupImage* const> products, NameKind kind,
        std::span<const std::uint32_t> firstNumbers);

    // The number of each product's first key, and of its first href.
    [[nodiscard]] const std::vector<std::uint32_t>& firstKeys() const noexcept {
        return m_firstKeys;
    }
    [[nodiscard]] const std::vector<std::uint32_t>& firstHrefs() const noexcept {
        return m_firstHrefs;
    }

    [[nodiscard]] const NameTable& names(NameKind kind) const noexcept {
        return m_names[static_cast<std::size_t>(kind)];
    }

  private:
    const std::shared_ptr<const Image> m_image;
    std::vector<std::uint32_t> m_firstKeys;
    std::vector<std::uint32_t> m_firstHrefs;
    std::array<NameTable, nameKinds> m_names;
};

}  // namespace reference::docimage
