#include "docimage/unitBytes.hpp"

#include <algorithm>
#include <cstddef>

namespace reference::docimage {
namespace {

constexpr char byteOf(unsigned value) {
    return static_cast<char>(static_cast<unsigned char>(value));
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
    // Most texts are ASCII. One pass without a branch widens them many units at a time.
    unsigned char all = 0;
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        const auto byte = static_cast<unsigned char>(bytes[at]);
        all |= byte;
        out[at] = byte;
    }
    if (all < 0x80)
        return;
    const auto valueAt = [&](std::size_t at) {
        return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0U;
    };
    for (std::size_t at = 0; at < bytes.size();) {
        const unsigned lead = valueAt(at);
        if (lead < 0x80) {
            *out++ = static_cast<char16_t>(lead);
            ++at;
        } else if (lead < 0xE0) {
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

bool areUnitBytesOf(std::string_view bytes, std::u16string_view text) noexcept {
    // Only ASCII has as many bytes as units.
    if (bytes.size() == text.size()) {
        unsigned difference = 0;
        for (std::size_t at = 0; at < text.size(); ++at)
            difference |=
                (static_cast<unsigned char>(bytes[at]) ^ unsigned{text[at]}) | (text[at] & ~0x7FU);
        return difference == 0;
    }
    std::size_t at = 0;
    const auto isNext = [&](unsigned value) {
        return at < bytes.size() && static_cast<unsigned char>(bytes[at++]) == value;
    };
    for (const char16_t unit : text) {
        const bool isSame = unit < 0x80 ? isNext(unit)
                            : unit < 0x800
                                ? isNext(0xC0U | (unit >> 6U)) && isNext(0x80U | (unit & 0x3FU))
                                : isNext(0xE0U | (unit >> 12U)) &&
                                      isNext(0x80U | ((unit >> 6U) & 0x3FU)) &&
                                      isNext(0x80U | (unit & 0x3FU));
        if (!isSame)
            return false;
    }
    return at == bytes.size();
}

}  // namespace reference::docimage
