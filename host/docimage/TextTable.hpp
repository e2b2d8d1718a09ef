// A list of texts in an image.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "docimage/Image.hpp"

namespace reference::docimage {

// Two sections: where each text begins and the last one ends, and the bytes of all of them. Views
// are valid as long as the image. Throws DamagedImage.
class TextTable {
  public:
    static constexpr std::uint32_t sections = 2;

    TextTable() = default;
    TextTable(const Image& image, std::uint32_t firstSection)
        : m_starts(image, firstSection), m_bytes(image, firstSection + 1) {}

    [[nodiscard]] std::size_t size() const noexcept {
        return m_starts.size() == 0 ? 0 : m_starts.size() - 1;
    }

    [[nodiscard]] std::string_view operator[](std::size_t at) const {
        const std::uint32_t* const bounds = m_starts.range(at, 2).data();
        return textOf(m_bytes.range(bounds[0], bounds[1] - bounds[0]));
    }

    // All texts, one after the other, and the number of the text that the byte at `at` belongs to.
    [[nodiscard]] std::string_view bytes() const {
        return textOf(m_bytes.range(0, m_bytes.size()));
    }
    [[nodiscard]] std::size_t textAt(std::size_t at) const {
        const auto starts = m_starts.range(0, m_starts.size());
        return static_cast<std::size_t>(std::ranges::upper_bound(starts, at) - starts.begin()) - 1;
    }
    [[nodiscard]] std::size_t startOf(std::size_t text) const { return m_starts[text]; }

    // In a sorted table: the first text that does not go before `text`.
    [[nodiscard]] std::size_t lowerBound(std::string_view text) const {
        std::size_t low = 0;
        std::size_t high = size();
        while (low < high) {
            const std::size_t middle = low + (high - low) / 2;
            if ((*this)[middle] < text)
                low = middle + 1;
            else
                high = middle;
        }
        return low;
    }

  private:
    static std::string_view textOf(std::span<const char> bytes) {
        return {bytes.data(), bytes.size()};
    }

    ImageArray<std::uint32_t> m_starts;
    ImageArray<char> m_bytes;
};

class TextTableBuilder {
  public:
    // Returns the number of the text.
    std::size_t add(std::string_view text) {
        m_bytes += text;
        m_starts.push_back(toOffset(m_bytes.size()));
        return m_starts.size() - 2;
    }

    // A hash of all texts, by which two tables are known to hold the same.
    [[nodiscard]] std::uint64_t hash() const {
        std::string all = m_bytes;
        all.append(reinterpret_cast<const char*>(m_starts.data()),
                   m_starts.size() * sizeof(m_starts.front()));
        return Image::hashOf(all);
    }

    void writeTo(ImageWriter& writer, std::uint32_t firstSection) const {
        writer.addArray(firstSection, m_starts);
        writer.add(firstSection + 1, m_bytes);
    }

  private:
    std::vector<std::uint32_t> m_starts{0};
    std::string m_bytes;
};

}  // namespace reference::docimage
