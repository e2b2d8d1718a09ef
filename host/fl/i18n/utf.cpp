#include "fl/i18n/utf.hpp"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <span>
#include <stdexcept>

#include <unicode/ustring.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

namespace fl::i18n {
namespace {

// ICU counts in 32-bit signed integers; no text of a documentation set comes near the limit.
std::int32_t icuLength(std::size_t length) {
    if (length > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max() / 3))
        throw std::length_error("A text of " + std::to_string(length) +
                                " units is too long to be converted.");
    return static_cast<std::int32_t>(length);
}

bool isAscii(std::uint8_t byte) {
    return byte < 0x80;
}

// Copies the ASCII at the beginning of `utf8` to `utf16`; returns how long it is. Most texts are
// nothing else, so eight bytes are looked at and copied at a time.
std::size_t copyAscii(char16_t* utf16, std::span<const std::uint8_t> utf8) {
    constexpr std::uint64_t highBits = 0x8080808080808080;
    std::uint64_t block = 0;
    std::size_t at = 0;
    for (; at + sizeof(block) <= utf8.size(); at += sizeof(block)) {
        std::memcpy(&block, utf8.data() + at, sizeof(block));
        if ((block & highBits) != 0)
            break;
        for (std::size_t byte = at; byte < at + sizeof(block); ++byte)
            utf16[byte] = utf8[byte];
    }
    for (; at < utf8.size() && isAscii(utf8[at]); ++at)
        utf16[at] = utf8[at];
    return at;
}

}  // namespace

std::u16string toUtf16(std::string_view utf8) {
    const std::span bytes(reinterpret_cast<const std::uint8_t*>(utf8.data()), utf8.size());
    std::u16string utf16(bytes.size(), u'\0');  // UTF-16 never has more units than UTF-8 has bytes
    std::size_t written = 0;
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t ascii = copyAscii(utf16.data() + written, bytes.subspan(at));
        written += ascii;
        at += ascii;
        while (at < bytes.size() && !isAscii(bytes[at])) {
            const std::size_t start = at;
            UChar32 character = 0;
// The macros' own arithmetic narrows from int.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
            U8_NEXT(bytes, at, bytes.size(), character);
            if (character < 0)
                throw std::invalid_argument("The text is not well-formed UTF-8 at byte " +
                                            std::to_string(start) + ".");
            U16_APPEND_UNSAFE(utf16, written, character);
#pragma GCC diagnostic pop
        }
    }
    utf16.resize(written);
    return utf16;
}

std::string toUtf8(std::u16string_view utf16) {
    const std::int32_t length = icuLength(utf16.size());
    std::string utf8(utf16.size() * 3, '\0');  // a UTF-16 unit never takes more than three bytes
    std::int32_t written = 0;
    constexpr UChar32 replacement = 0xFFFD;
    UErrorCode error = U_ZERO_ERROR;
    u_strToUTF8WithSub(utf8.data(), static_cast<std::int32_t>(utf8.size()), &written, utf16.data(),
                       length, replacement, nullptr, &error);
    if (U_FAILURE(error))
        throw std::runtime_error(std::string("The text could not be converted to UTF-8: ") +
                                 u_errorName(error));
    utf8.resize(static_cast<std::size_t>(written));
    return utf8;
}

}  // namespace fl::i18n
