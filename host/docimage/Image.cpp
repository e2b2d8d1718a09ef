#include "docimage/Image.hpp"

#include <algorithm>
#include <limits>

namespace reference::docimage {
namespace {

constexpr std::size_t sectionAlignment = 8;

}  // namespace

DamagedImage::~DamagedImage() = default;

Image::Image(std::string bytes, std::vector<std::pair<std::uint32_t, Section>> sections)
    : m_bytes(std::move(bytes)), m_data(m_bytes.data()), m_sections(std::move(sections)) {}

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
    throw DamagedImage("An image refers to something that lies outside of it.");
}

void ImageWriter::add(std::uint32_t number, std::string_view bytes) {
    m_bytes.resize((m_bytes.size() + sectionAlignment - 1) / sectionAlignment * sectionAlignment);
    m_sections.emplace_back(number, Image::Section{.offset = m_bytes.size(), .size = bytes.size()});
    m_bytes += bytes;
}

std::shared_ptr<const Image> ImageWriter::finish() {
    return std::make_shared<const Image>(std::move(m_bytes), std::move(m_sections));
}

std::uint32_t toOffset(std::size_t number) {
    if (number > std::numeric_limits<std::uint32_t>::max())
        throw std::length_error(
            "The documentation of a product is too large to be indexed: more "
            "than 4 GiB of text.");
    return static_cast<std::uint32_t>(number);
}

}  // namespace reference::docimage
