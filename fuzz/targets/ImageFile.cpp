// The file of an image, changed by lines: "byte AT VALUE", "long AT VALUE" (64 bits, in units of 8
// bytes), "size SIZE" and "hashes", which makes all hashes right again, so that what is behind them
// is reached. Without that line, whatever can be read is what was written.
#include "docimage/ImageFile.hpp"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "FuzzTarget.hpp"
#include "FuzzTexts.hpp"

namespace reference::fuzz {
namespace VELTRA_TEST_FILE {

using namespace docimage;

// Where the form of the file has what; see ImageFile.cpp.
constexpr std::size_t headerSize = 80;
constexpr std::size_t entrySize = 24;
constexpr std::size_t sectionsAt = 20;
constexpr std::size_t dataOffsetAt = 24;
constexpr std::size_t dataSizeAt = 32;
constexpr std::size_t hashOfHashesAt = 64;
constexpr std::size_t hashOfHeaderAt = 72;

const std::string& soundFile() {
    static const std::string content = [] {
        ImageWriter writer;
        std::string text;
        for (int line = 0; line < 800; ++line)
            text += "line " + std::to_string(line) + '\n';
        writer.add(3, text);
        writer.addArray(7, std::vector<std::uint32_t>{1, 2, 3});
        writer.add(9, "");
        return toImageFile(writer, ImageKind::Lookup,
                           {.stamp = {.size = 12, .modified = 34}, .hash = 56});
    }();
    return content;
}

template <typename T>
T valueAt(const std::string& bytes, std::size_t at) {
    T value{};
    std::memcpy(&value, bytes.data() + at, sizeof(T));
    return value;
}
void put(std::string& bytes, std::size_t at, std::uint64_t value) {
    std::memcpy(bytes.data() + at, &value, sizeof(value));
}

// As far as the header says where things are, and they are there.
void makeHashesRight(std::string& bytes) {
    if (bytes.size() < headerSize)
        return;
    const auto offset = valueAt<std::uint64_t>(bytes, dataOffsetAt);
    const auto size = valueAt<std::uint64_t>(bytes, dataSizeAt);
    const std::uint64_t blocks = size / Image::blockSize + (size % Image::blockSize == 0 ? 0 : 1);
    const std::uint64_t hashesAt = (offset + size + 7) / 8 * 8;
    if (hashesAt <= bytes.size() && blocks <= (bytes.size() - hashesAt) / 8) {
        if (offset <= bytes.size() && size <= bytes.size() - offset)
            for (std::uint64_t block = 0; block < blocks; ++block) {
                const auto start = offset + block * Image::blockSize;
                const auto length =
                    std::min<std::uint64_t>(Image::blockSize, offset + size - start);
                put(bytes, hashesAt + block * 8,
                    Image::hashOf(std::string_view(bytes).substr(start, length)));
            }
        put(bytes, hashOfHashesAt,
            Image::hashOf(std::string_view(bytes).substr(hashesAt, blocks * 8)));
    }
    const std::uint64_t tableSize =
        std::uint64_t{valueAt<std::uint32_t>(bytes, sectionsAt)} * entrySize;
    if (tableSize > bytes.size() - headerSize)
        return;
    put(bytes, hashOfHeaderAt, 0);
    put(bytes, hashOfHeaderAt,
        Image::hashOf(std::string_view(bytes).substr(0, headerSize + tableSize)));
}

// Returns whether it made hashes right.
bool change(std::string& bytes, std::string_view line) {
    const auto what = takeWord(line);
    const std::size_t at = numberOf(takeWord(line));
    const auto word = takeWord(line);
    std::uint64_t value = 0;
    std::from_chars(word.data(), word.data() + word.size(), value);
    if (what == "byte" && at < bytes.size())
        bytes[at] = static_cast<char>(value);
    else if (what == "long" && at < bytes.size() / 8)
        put(bytes, at * 8, value);
    else if (what == "size")
        bytes.resize(std::min(bytes.size(), at));
    else if (what == "hashes")
        makeHashesRight(bytes);
    return what == "hashes";
}

void readAll(const Image& image, const Image* sound) {
    for (const auto& [number, section] : image.sections()) {
        const auto bytes = image.view(section, 0, section.size);
        // Each byte is looked at, so that a sanitizer sees those that are not there.
        static_cast<void>(std::count(bytes.begin(), bytes.end(), 'l'));
        const ImageArray<std::uint64_t> longs(image, number);
        std::uint64_t sum = 0;
        for (const std::uint64_t each : longs.range(0, longs.size()))
            sum += each;
        static_cast<void>(sum);
        if (sound != nullptr) {
            const auto original = sound->section(number);
            require(bytes == sound->view(original, 0, original.size),
                    "What can be read is what was written");
        }
    }
}

void run(std::string_view input) {
    static const auto sound = std::make_shared<const std::string>(soundFile());
    static const OpenedImage whole = openImageFile(sound, *sound, ImageKind::Lookup, "sound");
    std::string bytes = *sound;
    bool isForged = false;
    for (const auto line : linesOf(input))
        isForged = change(bytes, line) || isForged;
    // Aligned as a mapped file is, and of just this size.
    const auto content = std::make_shared<std::vector<std::uint64_t>>((bytes.size() + 7) / 8);
    if (!bytes.empty())
        std::memcpy(content->data(), bytes.data(), bytes.size());
    try {
        const OpenedImage opened =
            openImageFile(content, {reinterpret_cast<const char*>(content->data()), bytes.size()},
                          ImageKind::Lookup, "damaged");
        require(isForged || opened.source == whole.source, "The head is what was written");
        readAll(*opened.image, isForged ? nullptr : whole.image.get());
    } catch (const DamagedImage&) {
        require(bytes != *sound, "A sound file is read");
    }
}

const FuzzTarget target("ImageFile", &run);

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::fuzz
