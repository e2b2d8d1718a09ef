// The bytes of an image and the sections in them.
#pragma once

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

// A block of memory that is divided into numbered sections. Immutable; any thread. Everything that
// is read of it goes through view(), which refuses what lies outside.
class VELTRA_HOST_API Image {
  public:
    struct Section {
        std::size_t offset = 0;
        std::size_t size = 0;
    };

    // Takes the sections of an ImageWriter.
    Image(std::string bytes, std::vector<std::pair<std::uint32_t, Section>> sections);
    Image(const Image&) = delete;  // shared by pointer
    Image& operator=(const Image&) = delete;
    ~Image();

    // An empty section where the image has none of the number.
    [[nodiscard]] Section section(std::uint32_t number) const noexcept;
    [[nodiscard]] bool has(std::uint32_t number) const noexcept;

    // The bytes from `at` on in a section; valid as long as the image. Throws DamagedImage where
    // they are not all within it.
    [[nodiscard]] std::string_view view(const Section& section, std::size_t at,
                                        std::size_t size) const {
        if (at > section.size || size > section.size - at)
            failOutside();
        return {m_data + section.offset + at, size};
    }

    [[noreturn]] void failOutside() const;

  private:
    const std::string m_bytes;
    const char* m_data;
    const std::vector<std::pair<std::uint32_t, Section>> m_sections;
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
    [[nodiscard]] const T& operator[](std::size_t at) const { return range(at, 1).front(); }

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

    // The image. Nothing may be added afterwards.
    [[nodiscard]] std::shared_ptr<const Image> finish();

  private:
    std::string m_bytes;
    std::vector<std::pair<std::uint32_t, Image::Section>> m_sections;
};

// A number of 32 bits; throws std::length_error where it is larger, because offsets in an image
// have 32 bits.
[[nodiscard]] VELTRA_HOST_API std::uint32_t toOffset(std::size_t number);

}  // namespace reference::docimage
