// Any UTF-16 text, in the bytes of its units: its lower case, its UTF-8 and its search form,
// against ICU.
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

#include <unicode/ustring.h>
#include <unicode/utf16.h>

#include "FuzzTarget.hpp"
#include "docimage/searchForm.hpp"
#include "docimage/unitBytes.hpp"
#include "fl/i18n/transform.hpp"
#include "fl/i18n/utf.hpp"
#include "support/LookupModel.hpp"

namespace reference::fuzz {
namespace VELTRA_TEST_FILE {

using fl::i18n::toUtf16;
using fl::i18n::toUtf8;

// The library's lower case into a buffer of `capacity` units; with U+FFFF where nothing was
// written.
std::u16string loweredInto(const std::u16string& text, std::size_t capacity, std::size_t& length) {
    constexpr char16_t untouched = 0xFFFF;
    std::u16string buffer(capacity, untouched);
    length = fl::i18n::detail::transform(buffer.data(), capacity, text.data(), text.size(),
                                         fl::i18n::to_lower());
    return buffer;
}

void checkLowerCase(const std::u16string& text, bool isWellFormed) {
    std::size_t length = 0;
    try {
        static_cast<void>(loweredInto(text, 0, length));
    } catch (const std::invalid_argument&) {
        require(!isWellFormed, "Text that is well-formed has a lower case");
        return;
    }
    require(isWellFormed, "Text that is ill-formed has no lower case");
    std::size_t again = 0;
    const auto lowered = loweredInto(text, length, again);
    require(again == length, "The length does not depend on the buffer");
    require(lowered == tests::modelLowerCase(text), "The lower case is that of ICU", toUtf8(text));
    // A buffer that is too small gets the beginning.
    const auto half = loweredInto(text, length / 2, again);
    require(again == length && lowered.starts_with(half), "A small buffer gets the beginning");
}

void checkUtf8(const std::u16string& text, bool isWellFormed) {
    const std::string bytes = toUtf8(text);
    const std::u16string back = toUtf16(bytes);
    require((back == text) == isWellFormed, "UTF-8 keeps exactly what is well-formed");
    require(docimage::isWellFormed(back), "UTF-8 is well-formed");
    require(docimage::fromUnitBytes(docimage::toUnitBytes(text)) == text, "Unit bytes keep all");
    require(docimage::areUnitBytesOf(docimage::toUnitBytes(text), text), "Unit bytes are known");
}

// What a text holds, its form holds, unless a surrogate pair is divided; and the form of a text is
// that of its lower case.
void checkSearchForm(const std::u16string& text) {
    const std::string form = docimage::searchForm(text);
    std::size_t middle = text.size() / 2;
    if (middle > 0 && U16_IS_LEAD(text[middle - 1]) && U16_IS_TRAIL(text[middle]))
        --middle;
    require(
        docimage::searchForm(text.substr(0, middle)) + docimage::searchForm(text.substr(middle)) ==
            form,
        "The search form goes unit by unit", toUtf8(text));
    require(docimage::searchForm(tests::modelLowerCase(text)) == form,
            "The search form is that of the lower case", toUtf8(text));
    docimage::FormBuffer buffer;
    docimage::assignSearchForm(text, buffer);
    require(std::string_view(buffer.data(), buffer.size()) == form, "Both functions agree");
}

bool isUnicode(const std::u16string& text) {
    UErrorCode error = U_ZERO_ERROR;
    std::int32_t length = 0;
    u_strToUTF8(nullptr, 0, &length, text.data(), static_cast<std::int32_t>(text.size()), &error);
    return error == U_BUFFER_OVERFLOW_ERROR || U_SUCCESS(error) != 0;
}

void run(std::string_view input) {
    std::u16string text(input.size() / 2, u'\0');
    if (!text.empty())
        std::memcpy(text.data(), input.data(), text.size() * sizeof(char16_t));
    const bool isWellFormed = isUnicode(text);
    require(docimage::isWellFormed(text) == isWellFormed, "It is known what is well-formed");
    checkLowerCase(text, isWellFormed);
    checkUtf8(text, isWellFormed);
    checkSearchForm(text);
    // And bytes that may not be UTF-8.
    try {
        require(toUtf8(toUtf16(input)) == input, "What is UTF-8 stays the same");
    } catch (const std::invalid_argument&) {
        UErrorCode error = U_ZERO_ERROR;
        std::int32_t length = 0;
        u_strFromUTF8(nullptr, 0, &length, input.data(), static_cast<std::int32_t>(input.size()),
                      &error);
        require(error == U_INVALID_CHAR_FOUND, "What is not UTF-8 is refused");
    }
}

const FuzzTarget target("LowerCase", &run);

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::fuzz
