#include "vref/DisplayText.hpp"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <new>
#include <stdexcept>

#include <unicode/brkiter.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include "fl/i18n/utf.hpp"

namespace reference::tools {
namespace {

std::size_t columnsOf(UChar32 character) {
    const int category = u_charType(character);
    if (category == U_NON_SPACING_MARK || category == U_ENCLOSING_MARK ||
        category == U_CONTROL_CHAR || category == U_FORMAT_CHAR)
        return 0;
    const int width = u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

icu::UnicodeString toUnicode(std::string_view text) {
    return icu::UnicodeString::fromUTF8(
        icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
}

std::string toUtf8(const icu::UnicodeString& text) {
    std::string utf8;
    return text.toUTF8String(utf8);
}

std::size_t widthOf(const icu::UnicodeString& text) {
    std::size_t width = 0;
    for (std::int32_t at = 0; at < text.length(); at = text.moveIndex32(at, 1))
        width += columnsOf(text.char32At(at));
    return width;
}

icu::UnicodeString trimmedAtEnd(icu::UnicodeString text) {
    std::int32_t length = text.length();
    while (length > 0 && u_isUWhiteSpace(text.char32At(length - 1)) != 0)
        --length;
    text.truncate(length);
    return text;
}

// Breaks one line of a text.
void wrapLine(const icu::UnicodeString& line, std::size_t width, icu::BreakIterator& breaks,
              std::vector<std::string>& lines) {
    breaks.setText(line);
    icu::UnicodeString current;
    std::int32_t start = breaks.first();
    for (std::int32_t end = breaks.next(); end != icu::BreakIterator::DONE; end = breaks.next()) {
        const icu::UnicodeString piece = line.tempSubStringBetween(start, end);
        start = end;
        if (!current.isEmpty() && widthOf(current) + widthOf(trimmedAtEnd(piece)) > width) {
            lines.push_back(toUtf8(trimmedAtEnd(current)));
            current.remove();
        }
        current.append(piece);
    }
    lines.push_back(toUtf8(trimmedAtEnd(current)));
}

}  // namespace

std::size_t displayWidth(std::string_view text) {
    return widthOf(toUnicode(text));
}

std::string cutToWidth(std::string_view text, std::size_t width) {
    const icu::UnicodeString whole = toUnicode(text);
    if (widthOf(whole) <= width)
        return std::string(text);
    icu::UnicodeString kept;
    std::size_t used = 1;  // the ellipsis
    for (std::int32_t at = 0; at < whole.length(); at = whole.moveIndex32(at, 1)) {
        const UChar32 character = whole.char32At(at);
        used += columnsOf(character);
        if (used > width)
            break;
        kept.append(character);
    }
    return toUtf8(trimmedAtEnd(kept)) + (width > 0 ? "…" : "");
}

std::string padToWidth(std::string_view text, std::size_t width) {
    const std::size_t used = displayWidth(text);
    return std::string(text) + std::string(used < width ? width - used : 0, ' ');
}

void prepareDefaultLocale() {
    UErrorCode error = U_ZERO_ERROR;
    icu::Locale::setDefault(icu::Locale("en"), error);
    if (U_FAILURE(error))
        throw std::bad_alloc();
}

std::vector<std::string> wrapToWidth(std::string_view text, std::size_t width) {
    std::vector<std::string> lines;
    if (text.empty())
        return lines;
    UErrorCode error = U_ZERO_ERROR;
    const std::unique_ptr<icu::BreakIterator> breaks(
        icu::BreakIterator::createLineInstance(icu::Locale("root"), error));
    // The rules are part of ICU: they are missing only where there is no memory for them.
    if (U_FAILURE(error))
        throw std::bad_alloc();
    const icu::UnicodeString whole = toUnicode(text);
    std::int32_t start = 0;
    while (start <= whole.length()) {
        std::int32_t end = whole.indexOf(u'\n', start);
        if (end < 0)
            end = whole.length();
        const icu::UnicodeString line = whole.tempSubStringBetween(start, end);
        wrapLine(line, width, *breaks, lines);
        start = end + 1;
    }
    return lines;
}

bool controlsTerminal(char32_t character) noexcept {
    return u_charType(static_cast<UChar32>(character)) == U_CONTROL_CHAR || character == 0x2028 ||
           character == 0x2029 || (character >= 0x202A && character <= 0x202E) ||
           (character >= 0x2066 && character <= 0x2069);
}

std::string withoutControls(std::string_view text) {
    const icu::UnicodeString whole = toUnicode(text);
    icu::UnicodeString kept;
    for (std::int32_t at = 0; at < whole.length(); at = whole.moveIndex32(at, 1)) {
        const UChar32 character = whole.char32At(at);
        if (character == u'\n' || character == u'\t' ||
            !controlsTerminal(static_cast<char32_t>(character)))
            kept.append(character);
    }
    return toUtf8(kept);
}

std::string wellFormed(const std::string& text) {
    try {
        static_cast<void>(fl::i18n::toUtf16(text));
        return text;
    } catch (const std::invalid_argument&) {
        std::string plain = text;
        std::ranges::replace_if(
            plain, [](char byte) { return static_cast<unsigned char>(byte) >= 0x80; }, '?');
        return plain;
    }
}

std::string printable(const std::string& text) {
    return withoutControls(wellFormed(text));
}

std::string printableLine(const std::string& text) {
    std::string line = printable(text);
    std::ranges::replace_if(
        line, [](char byte) { return byte == '\n' || byte == '\t'; }, ' ');
    return line;
}

std::string shown(const std::u16string& text) {
    return withoutControls(fl::i18n::toUtf8(text));
}

std::string shownLine(const std::u16string& text) {
    return printableLine(fl::i18n::toUtf8(text));
}

}  // namespace reference::tools
