#include "docimage/ImageFile.hpp"

#include <array>
#include <cstddef>
#include <cstring>
#include <limits>
#include <type_traits>
#include <utility>
#include <vector>

namespace reference::docimage {
namespace {

constexpr std::array<char, 8> magic = {'V', 'L', 'T', 'R', 'A', 'I', 'M', 'G'};
constexpr std::uint32_t ownByteOrder = 0x01020304;

struct Header {
    std::array<char, 8> mark;
    std::uint32_t byteOrder;
    std::uint32_t formatVersion;
    std::uint32_t kind;
    std::uint32_t sections;
    std::uint64_t dataOffset;
    std::uint64_t dataSize;
    std::uint64_t sourceSize;
    std::int64_t sourceModified;
    std::uint64_t sourceHash;
    std::uint64_t hashOfHashes;
    std::uint64_t hashOfHeader;  // of the header, with 0 here, and the list of sections
};
struct SectionEntry {
    std::uint64_t number;
    std::uint64_t offset;  // from the beginning of the data
    std::uint64_t size;
};
static_assert(std::is_trivially_copyable_v<Header> && sizeof(Header) == 80);
static_assert(std::is_trivially_copyable_v<SectionEntry> && sizeof(SectionEntry) == 24);

constexpr std::size_t hashSize = sizeof(std::uint64_t);

std::size_t roundedUp(std::size_t size, std::size_t unit) {
    return (size + unit - 1) / unit * unit;
}

template <typename T>
void append(const T& value, std::string& bytes) {
    bytes.append(reinterpret_cast<const char*>(&value), sizeof(T));
}

std::uint64_t headerHash(Header header, std::string_view sections) {
    header.hashOfHeader = 0;
    std::string bytes;
    append(header, bytes);
    bytes += sections;
    return Image::hashOf(bytes);
}

}  // namespace

std::string toImageFile(const ImageWriter& image, ImageKind kind, const ImageSource& source) {
    const std::string_view data = image.bytes();
    std::string sections;
    for (const auto& [number, section] : image.sections())
        append(SectionEntry{.number = number, .offset = section.offset, .size = section.size},
               sections);
    std::string hashes;
    for (std::size_t at = 0; at < data.size(); at += Image::blockSize)
        append(Image::hashOf(data.substr(at, Image::blockSize)), hashes);

    Header header{.mark = magic,
                  .byteOrder = ownByteOrder,
                  .formatVersion = imageFormatVersion,
                  .kind = static_cast<std::uint32_t>(kind),
                  .sections = static_cast<std::uint32_t>(image.sections().size()),
                  .dataOffset = roundedUp(sizeof(Header) + sections.size(), Image::blockSize),
                  .dataSize = data.size(),
                  .sourceSize = source.stamp.size,
                  .sourceModified = source.stamp.modified,
                  .sourceHash = source.hash,
                  .hashOfHashes = Image::hashOf(hashes),
                  .hashOfHeader = 0};
    header.hashOfHeader = headerHash(header, sections);

    std::string content;
    content.reserve(header.dataOffset + roundedUp(data.size(), hashSize) + hashes.size());
    append(header, content);
    content += sections;
    content.resize(header.dataOffset);
    content += data;
    content.resize(roundedUp(content.size(), hashSize));
    return content + hashes;
}

OpenedImage openImageFile(std::shared_ptr<const void> owner, std::string_view content,
                          ImageKind kind, std::string name) {
    const auto fail = [&name](const char* reason) { throw DamagedImage(name + ": " + reason); };
    Header header{};
    if (content.size() < sizeof(Header))
        fail("The file is too short for an image.");
    std::memcpy(&header, content.data(), sizeof(Header));
    if (header.mark != magic)
        fail("The file is not an image.");
    if (header.byteOrder != ownByteOrder)
        fail("The image is from a machine with another byte order.");
    if (header.formatVersion != imageFormatVersion)
        fail("The image is of another version of the form.");
    if (header.kind != static_cast<std::uint32_t>(kind))
        fail("The image is of another kind of file.");

    // Sizes are compared before they are added, so that nothing overflows.
    const std::size_t tableSize = std::size_t{header.sections} * sizeof(SectionEntry);
    if (tableSize > content.size() - sizeof(Header))
        fail("The image is not whole.");
    const std::string_view table = content.substr(sizeof(Header), tableSize);
    if (headerHash(header, table) != header.hashOfHeader)
        fail("The image's header is damaged.");
    if (header.dataOffset > content.size() || header.dataSize > content.size() - header.dataOffset)
        fail("The image is not whole.");
    if (header.dataOffset % hashSize != 0)
        fail("The image's data begin in the middle of a word.");
    const std::size_t blocks =
        header.dataSize / Image::blockSize + (header.dataSize % Image::blockSize == 0 ? 0 : 1);
    const std::size_t hashesAt = roundedUp(header.dataOffset + header.dataSize, hashSize);
    if (content.size() != hashesAt + blocks * hashSize)
        fail("The image is not whole.");
    const std::string_view hashes = content.substr(hashesAt);
    if (Image::hashOf(hashes) != header.hashOfHashes)
        fail("The image's hashes are damaged.");

    Image::Sections sections;
    for (std::uint32_t at = 0; at < header.sections; ++at) {
        SectionEntry entry{};
        std::memcpy(&entry, table.data() + at * sizeof(SectionEntry), sizeof(SectionEntry));
        if (entry.offset > header.dataSize || entry.size > header.dataSize - entry.offset ||
            entry.offset % hashSize != 0)
            fail("The image has a section outside of it.");
        sections.emplace_back(static_cast<std::uint32_t>(entry.number),
                              Image::Section{.offset = entry.offset, .size = entry.size});
    }
    const std::span<const std::uint64_t> blockHashes(
        reinterpret_cast<const std::uint64_t*>(hashes.data()), blocks);
    return {.image = std::make_shared<const Image>(
                std::move(owner), content.substr(header.dataOffset, header.dataSize),
                std::move(sections), blockHashes, std::move(name)),
            .source = {.stamp = {.size = header.sourceSize, .modified = header.sourceModified},
                       .hash = header.sourceHash}};
}

}  // namespace reference::docimage
