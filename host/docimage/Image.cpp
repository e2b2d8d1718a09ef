#include "docimage/Image.hpp"

#include <algorithm>
#include <limits>
#include <xxhash.h>

namespace reference::docimage {
namespace {

constexpr std::size_t sectionAlignment = 8;

}  // namespace

DamagedImage::~DamagedImage() = default;
ReplacedImage::~ReplacedImage() = default;

Image::Image(const std::shared_ptr<const std::string>& bytes, Sections sections)
    : Image(bytes, *bytes, std::move(sections), {}, {}) {}

Image::Image(std::shared_ptr<const void> owner, std::string_view bytes, Sections sections,
             std::span<const std::uint64_t> blockHashes, std::string name)
    : m_owner(std::move(owner)),
      m_bytes(bytes),
      m_sections(std::move(sections)),
      m_blockHashes(blockHashes),
      m_name(std::move(name)),
      m_soundBlocks(std::make_unique<std::atomic<std::uint64_t>[]>(
          (blockHashes.size() + bitsPerWord - 1) / bitsPerWord)) {}

Image::~Image() = default;

Image::Section Image::section(std::uint32_t number) const noexcept {
    for (const auto& [known, section] : m_sections)
        if (known == number)
            return section;
    return {};
}

bool Image::has(std::uint32_t number) const noexcept {
    return std::ranges::any_of(m_sections,
                               [number](const auto& entry) { return entry.first == number; });
}

void Image::failOutside() const {
    throw DamagedImage(m_name + ": The image refers to something that lies outside of it.");
}

std::uint64_t Image::hashOf(std::string_view bytes) noexcept {
    return XXH3_64bits(bytes.data(), bytes.size());
}

void Image::requireSound(std::size_t first, std::size_t last) const {
    for (std::size_t block = first; block <= last; ++block) {
        if (isKnownSound(block))
            continue;
        if (hashOf(m_bytes.substr(block * blockSize, blockSize)) != m_blockHashes[block])
            throw DamagedImage(m_name + ": The image is damaged in its block " +
                               std::to_string(block) + ".");
        m_soundBlocks[block / bitsPerWord].fetch_or(std::uint64_t{1} << (block % bitsPerWord),
                                                    std::memory_order_relaxed);
    }
}

void ImageWriter::add(std::uint32_t number, std::string_view bytes) {
    m_bytes.resize((m_bytes.size() + sectionAlignment - 1) / sectionAlignment * sectionAlignment);
    m_sections.emplace_back(number, Image::Section{.offset = m_bytes.size(), .size = bytes.size()});
    m_bytes += bytes;
}

void ImageWriter::addSectionsOf(const Image& image, std::uint32_t offset) {
    for (const auto& [number, section] : image.sections())
        add(number + offset, image.view(section, 0, section.size));
}

std::shared_ptr<const Image> ImageWriter::finish() {
    return std::make_shared<const Image>(std::make_shared<const std::string>(std::move(m_bytes)),
                                         std::move(m_sections));
}

std::uint32_t toOffset(std::size_t number) {
    if (number > std::numeric_limits<std::uint32_t>::max())
        throw std::length_error(
            "The documentation of a product is too large to be indexed: more "
            "than 4 GiB of text.");
    return static_cast<std::uint32_t>(number);
}

}  // namespace reference::docimage
