#include "docimage/unitBytes.hpp"

#include <algorithm>
#include <cstddef>

namespace reference::docimage {
namespace {

constexpr char byteOf(unsigned value) {
    return static_cast<char>(static_cast<unsigned char>(value));
}

constexpr bool isAscii(char byte) {
    return static_cast<unsigned char>(byte) < 0x80;
}

}  // namespace

std::string toUnitBytes(std::u16string_view text) {
    std::string bytes;
    appendUnitBytes(text, bytes);
    return bytes;
}

void appendUnitBytes(std::u16string_view text, std::string& bytes) {
    const std::size_t before = bytes.size();
    const auto firstOther = std::ranges::find_if(text, [](char16_t unit) { return unit >= 0x80; });
    const auto asciiCount = static_cast<std::size_t>(firstOther - text.begin());
    bytes.resize(before + asciiCount);
    std::transform(text.begin(), firstOther, bytes.begin() + static_cast<std::ptrdiff_t>(before),
                   [](char16_t unit) { return byteOf(unit); });
    for (const char16_t unit : text.substr(asciiCount)) {
        if (unit < 0x80) {
            bytes += byteOf(unit);
        } else if (unit < 0x800) {
            bytes += byteOf(0xC0U | (unit >> 6U));
            bytes += byteOf(0x80U | (unit & 0x3FU));
        } else {
            bytes += byteOf(0xE0U | (unit >> 12U));
            bytes += byteOf(0x80U | ((unit >> 6U) & 0x3FU));
            bytes += byteOf(0x80U | (unit & 0x3FU));
        }
    }
}

std::u16string fromUnitBytes(std::string_view bytes) {
    std::u16string text;
    assignUnitBytes(bytes, text);
    return text;
}

void assignUnitBytes(std::string_view bytes, std::u16string& text) {
    text.resize(bytes.size());  // there are never more units than bytes
    char16_t* out = text.data();
    const auto valueAt = [&](std::size_t at) {
        return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0U;
    };
    for (std::size_t at = 0; at < bytes.size();) {
        const auto firstOther =
            std::find_if_not(bytes.begin() + static_cast<std::ptrdiff_t>(at), bytes.end(), isAscii);
        const auto end = static_cast<std::size_t>(firstOther - bytes.begin());
        out = std::transform(bytes.begin() + static_cast<std::ptrdiff_t>(at), firstOther, out,
                             [](char byte) { return static_cast<char16_t>(byte); });
        at = end;
        if (at == bytes.size())
            break;
        const unsigned lead = valueAt(at);
        if (lead < 0xE0) {
            *out++ = static_cast<char16_t>(((lead & 0x1FU) << 6U) | (valueAt(at + 1) & 0x3FU));
            at += 2;
        } else {
            *out++ =
                static_cast<char16_t>(((lead & 0x0FU) << 12U) | ((valueAt(at + 1) & 0x3FU) << 6U) |
                                      (valueAt(at + 2) & 0x3FU));
            at += 3;
        }
    }
    text.resize(static_cast<std::size_t>(out - text.data()));
}

}  // namespace reference::docimage
