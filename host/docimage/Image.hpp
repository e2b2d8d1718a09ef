// The bytes of an image and the sections in them.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "foundation/core/export.hpp"

namespace reference::docimage {

// An image holds what no writer writes. what() says which image and where.
class VELTRA_HOST_API DamagedImage : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
    ~DamagedImage() override;
};

// An image is not there any more, or is not the one that was listed: the documentation has been
// changed meanwhile, and is to be read anew.
class VELTRA_HOST_API ReplacedImage : public DamagedImage {
  public:
    using DamagedImage::DamagedImage;
    ~ReplacedImage() override;
};

// A block of memory that is divided into numbered sections. Immutable; any thread. Everything that
// is read of it goes through view(), which refuses what lies outside, and what is not what was
// written: an image that lies in a file has a hash for each block of it, and a block is hashed when
// it is first looked at.
class VELTRA_HOST_API Image {
  public:
    struct Section {
        std::size_t offset = 0;
        std::size_t size = 0;
    };
    using Sections = std::vector<std::pair<std::uint32_t, Section>>;

    static constexpr std::size_t blockSize = 4096;

    // An image in memory.
    Image(const std::shared_ptr<const std::string>& bytes, Sections sections);

    // An image whose bytes `owner` keeps alive. `blockHashes` has one for each begun block, and
    // lives as long; `name` is for messages. The sections must lie within the bytes.
    Image(std::shared_ptr<const void> owner, std::string_view bytes, Sections sections,
          std::span<const std::uint64_t> blockHashes, std::string name);

    Image(const Image&) = delete;  // shared by pointer
    Image& operator=(const Image&) = delete;
    ~Image();

    [[nodiscard]] static std::uint64_t hashOf(std::string_view bytes) noexcept;

    // An empty section where the image has none of the number.
    [[nodiscard]] Section section(std::uint32_t number) const noexcept;
    [[nodiscard]] bool has(std::uint32_t number) const noexcept;
    [[nodiscard]] const Sections& sections() const noexcept { return m_sections; }

    // The bytes from `at` on in a section; valid as long as the image. Throws DamagedImage where
    // they are not all within it, or are not what was written.
    [[nodiscard]] std::string_view view(const Section& section, std::size_t at,
                                        std::size_t size) const {
        if (at > section.size || size > section.size - at)
            failOutside();
        if (!m_blockHashes.empty() && size > 0) {
            const std::size_t first = (section.offset + at) / blockSize;
            const std::size_t last = (section.offset + at + size - 1) / blockSize;
            if (first != last || !isKnownSound(first))
                requireSound(first, last);
        }
        return m_bytes.substr(section.offset + at, size);
    }

    [[noreturn]] void failOutside() const;

  private:
    static constexpr std::size_t bitsPerWord = 64;

    [[nodiscard]] bool isKnownSound(std::size_t block) const noexcept {
        return (m_soundBlocks[block / bitsPerWord].load(std::memory_order_relaxed) >>
                    (block % bitsPerWord) &
                1U) != 0;
    }
    void requireSound(std::size_t first, std::size_t last) const;

    const std::shared_ptr<const void> m_owner;
    const std::string_view m_bytes;
    const Sections m_sections;
    const std::span<const std::uint64_t> m_blockHashes;
    const std::string m_name;
    // A bit for each block that was found sound. Every view asks it, for a block that is known to
    // be within the image: that is not checked again.
    const std::unique_ptr<std::atomic<std::uint64_t>[]> m_soundBlocks;
};

// A section as an array of T, a type without padding or pointers.
template <typename T>
class ImageArray {
  public:
    ImageArray() = default;
    ImageArray(const Image& image, std::uint32_t number)
        : m_image(&image), m_section(image.section(number)) {}

    [[nodiscard]] std::size_t size() const noexcept { return m_section.size / sizeof(T); }

    // References are valid as long as the image. Throws DamagedImage outside of the array.
    [[nodiscard]] const T& operator[](std::size_t at) const { return *range(at, 1).data(); }

    [[nodiscard]] std::span<const T> range(std::size_t first, std::size_t count) const {
        if (first > size() || count > size() - first)
            m_image->failOutside();
        const auto bytes = m_image->view(m_section, first * sizeof(T), count * sizeof(T));
        // Sections begin at multiples of 8.
        return {reinterpret_cast<const T*>(bytes.data()), count};
    }

  private:
    const Image* m_image = nullptr;
    Image::Section m_section;
};

// Puts an image together in memory.
class VELTRA_HOST_API ImageWriter {
  public:
    // Adds a section; each number once.
    void add(std::uint32_t number, std::string_view bytes);

    template <typename T>
    void addArray(std::uint32_t number, const std::vector<T>& elements) {
        add(number, {reinterpret_cast<const char*>(elements.data()), elements.size() * sizeof(T)});
    }

    // Adds all sections of an image, with `offset` added to their numbers.
    void addSectionsOf(const Image& image, std::uint32_t offset);

    // The image. Nothing may be added afterwards.
    [[nodiscard]] std::shared_ptr<const Image> finish();

    // What was added so far.
    [[nodiscard]] const std::string& bytes() const noexcept { return m_bytes; }
    [[nodiscard]] const Image::Sections& sections() const noexcept { return m_sections; }

  private:
    std::string m_bytes;
    Image::Sections m_sections;
};

// A number of 32 bits; throws std::length_error where it is larger, because offsets in an image
// have 32 bits.
[[nodiscard]] VELTRA_HOST_API std::uint32_t toOffset(std::size_t number);

}  // namespace reference::docimage
