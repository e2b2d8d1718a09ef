// Finds names by their hash.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "docimage/Image.hpp"

namespace reference::docimage {

// The hash of a name in its search form.
[[nodiscard]] VELTRA_HOST_API std::uint32_t nameHash(std::string_view form) noexcept;

// Numbers by the hash of a name: one probe gives all numbers whose names may be the wanted one.
// Numbers of equal hash are in ascending order. Two sections: where each bucket begins, and the
// entries bucket by bucket.
class VELTRA_HOST_API NameTable {
  public:
    static constexpr std::uint32_t sections = 2;

    struct Entry {
        std::uint32_t hash;
        std::uint32_t number;
    };

    NameTable() = default;
    NameTable(const Image& image, std::uint32_t firstSection);

    [[nodiscard]] std::size_t size() const noexcept { return m_entries.size(); }

    // Calls `visit(number)`, in ascending order, for each entry of the hash. Throws DamagedImage.
    template <typename Visit>
    void find(std::uint32_t hash, Visit visit) const {
        if (m_entries.size() == 0)
            return;
        const auto bounds = m_starts.range(bucketOf(hash), 2);
        for (const Entry& entry : m_entries.range(bounds[0], bounds[1] - bounds[0]))
            if (entry.hash == hash)
                visit(entry.number);
    }

    [[nodiscard]] std::span<const Entry> entries() const {
        return m_entries.range(0, m_entries.size());
    }

    // Consumes entries whose numbers ascend among those of one hash.
    static void write(const std::vector<Entry>& entries, ImageWriter& writer,
                      std::uint32_t firstSection);

  private:
    [[nodiscard]] std::size_t bucketOf(std::uint32_t hash) const noexcept {
        return hash >> m_shift;
    }

    ImageArray<std::uint32_t> m_starts;
    ImageArray<Entry> m_entries;
    unsigned m_shift = 0;
};

}  // namespace reference::docimage
