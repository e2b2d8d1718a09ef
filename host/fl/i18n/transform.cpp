#include "fl/i18n/transform.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

#include <unicode/ustring.h>
#include <unicode/utf16.h>

namespace fl::i18n::detail {
namespace {

constexpr bool isAscii(char16_t unit) {
    return unit < 0x80;
}

constexpr char16_t asciiToLower(char16_t unit) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + (u'a' - u'A')) : unit;
}

void requireWellFormed(std::u16string_view text) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (!U16_IS_SURROGATE(text[at]))
            continue;
        const bool pair =
            U16_IS_LEAD(text[at]) && at + 1 < text.size() && U16_IS_TRAIL(text[at + 1]);
        if (!pair)
            throw std::invalid_argument("The text is not well-formed UTF-16: unit " +
                                        std::to_string(at) + " is an unpaired surrogate.");
        ++at;
    }
}

// Fills `out` from its beginning with ICU's mapping of `in`; returns the length of all of it.
std::size_t lowerCase(std::span<char16_t> out, std::u16string_view in) {
    UErrorCode error = U_ZERO_ERROR;
    const std::int32_t needed =
        u_strToLower(out.data(), static_cast<std::int32_t>(out.size()), in.data(),
                     static_cast<std::int32_t>(in.size()), "", &error);
    if (U_FAILURE(error) && error != U_BUFFER_OVERFLOW_ERROR)
        throw std::runtime_error(std::string("The text could not be lower-cased: ") +
                                 u_errorName(error));
    return static_cast<std::size_t>(needed);
}

}  // namespace

std::size_t transform(char16_t* out, std::size_t capacity, const char16_t* in, std::size_t length,
                      const to_lower& /*rule*/) {
    const std::u16string_view text(in, length);
    const auto firstOther = std::ranges::find_if_not(text, isAscii);
    if (firstOther == text.end()) {
        // The full mapping leaves ASCII in place and changes A to Z alone.
        std::transform(text.begin(),
                       text.begin() + static_cast<std::ptrdiff_t>(std::min(length, capacity)), out,
                       asciiToLower);
        return length;
    }

    requireWellFormed(text);
    constexpr std::size_t maxLength = std::numeric_limits<std::int32_t>::max();
    if (length > maxLength)
        throw std::length_error("A text of " + std::to_string(length) +
                                " units is too long to be lower-cased.");
    // Into a buffer of its own, which is then cut: ICU itself leaves out a character whose mapping
    // does not fit whole, and puts a terminator where there is room for one. Names and most texts
    // fit the stack, so that folding them allocates nothing.
    std::array<char16_t, 1024> buffer;
    if (length <= buffer.size())
        if (const std::size_t needed = lowerCase(buffer, text); needed <= buffer.size()) {
            std::copy_n(buffer.begin(), std::min(needed, capacity), out);
            return needed;
        }
    std::u16string lowered(std::min(length + 8, maxLength), u'\0');
    std::size_t needed = lowerCase(lowered, text);
    if (needed > lowered.size()) {
        lowered.resize(needed);
        needed = lowerCase(lowered, text);
    }
    std::copy_n(lowered.begin(), std::min(needed, capacity), out);
    return needed;
}

}  // namespace fl::i18n::detail
