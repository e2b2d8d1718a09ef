#include "fl/i18n/utf.hpp"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <stdexcept>

#include <unicode/ustring.h>
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

std::size_t firstIllFormedByte(std::string_view utf8) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(utf8.data());
    const auto length = static_cast<std::int32_t>(utf8.size());
    std::int32_t at = 0;
    while (at < length) {
        const std::int32_t start = at;
        UChar32 character = 0;
// The macro's own arithmetic narrows from int.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
        U8_NEXT(bytes, at, length, character);
#pragma GCC diagnostic pop
        if (character < 0)
            return static_cast<std::size_t>(start);
    }
    return utf8.size();
}

}  // namespace

std::u16string toUtf16(std::string_view utf8) {
    const std::int32_t length = icuLength(utf8.size());
    std::u16string utf16(utf8.size(), u'\0');  // UTF-16 never has more units than UTF-8 has bytes
    std::int32_t written = 0;
    UErrorCode error = U_ZERO_ERROR;
    u_strFromUTF8(utf16.data(), length, &written, utf8.data(), length, &error);
    if (U_FAILURE(error))
        throw std::invalid_argument("The text is not well-formed UTF-8 at byte " +
                                    std::to_string(firstIllFormedByte(utf8)) + ".");
    utf16.resize(static_cast<std::size_t>(written));
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
