#include "docimage/NameTable.hpp"

#include <algorithm>
#include <bit>
#include <xxhash.h>

namespace reference::docimage {
namespace {

constexpr unsigned hashBits = 32;

// About two entries a bucket. At least two buckets, so that the shift is below the hash's width.
unsigned bucketBits(std::size_t entries) {
    return std::clamp(static_cast<unsigned>(std::bit_width(entries / 2)), 1U, 24U);
}

}  // namespace

std::uint32_t nameHash(std::string_view form) noexcept {
    return static_cast<std::uint32_t>(XXH3_64bits(form.data(), form.size()));
}

NameTable::NameTable(const Image& image, std::uint32_t firstSection)
    : m_starts(image, firstSection),
      m_entries(image, firstSection + 1),
      m_shift(hashBits - bucketBits(m_entries.size())) {}

void NameTable::write(const std::vector<Entry>& entries, ImageWriter& writer,
                      std::uint32_t firstSection) {
    const unsigned bits = bucketBits(entries.size());
    const unsigned shift = hashBits - bits;
    std::vector<std::uint32_t> starts((std::size_t{1} << bits) + 1);
    for (const Entry& entry : entries)
        ++starts[(entry.hash >> shift) + 1];
    for (std::size_t bucket = 1; bucket < starts.size(); ++bucket)
        starts[bucket] += starts[bucket - 1];
    std::vector<Entry> sorted(entries.size());
    std::vector<std::uint32_t> next(starts.begin(), starts.end() - 1);
    for (const Entry& entry : entries)
        sorted[next[entry.hash >> shift]++] = entry;
    writer.addArray(firstSection, starts);
    writer.addArray(firstSection + 1, sorted);
}

}  // namespace reference::docimage
