#include "vref/DisplayText.hpp"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>

#include <unicode/brkiter.h>
#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/ustring.h>
#include <unicode/utf16.h>

#include "fl/i18n/utf.hpp"

namespace reference::tools {
namespace {

using fl::i18n::toUtf8;

std::size_t columnsOf(UChar32 character) {
    const int category = u_charType(character);
    if (category == U_NON_SPACING_MARK || category == U_ENCLOSING_MARK ||
        category == U_CONTROL_CHAR || category == U_FORMAT_CHAR)
        return 0;
    const int width = u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

// Not icu::UnicodeString, which is empty where there is no memory for a text, without a word. What
// is not well-formed becomes U+FFFD.
std::u16string toUnits(std::string_view utf8) {
    std::u16string units(utf8.size(), u' ');  // no character has more units than bytes
    std::int32_t length = 0;
    UErrorCode error = U_ZERO_ERROR;
    u_strFromUTF8WithSub(units.data(), static_cast<std::int32_t>(units.size()), &length,
                         utf8.data(), static_cast<std::int32_t>(utf8.size()), 0xFFFD, nullptr,
                         &error);
    units.resize(static_cast<std::size_t>(length));
    return units;
}

// The text in the shape that ICU takes. Not a copy, so that it needs no memory.
icu::UnicodeString aliasOf(std::u16string_view text) {
    return {false, text.data(), static_cast<std::int32_t>(text.size())};
}

// The character that begins at `at`, which is moved behind it.
UChar32 nextCharacter(const icu::UnicodeString& text, std::int32_t& at) {
    const UChar32 character = text.char32At(at);
    at += U16_LENGTH(character);
    return character;
}

std::size_t widthOf(std::u16string_view text) {
    std::size_t width = 0;
    const icu::UnicodeString alias = aliasOf(text);
    for (std::int32_t at = 0; at < alias.length();)
        width += columnsOf(nextCharacter(alias, at));
    return width;
}

// No white space is beyond the Basic Multilingual Plane.
std::u16string_view trimmedAtEnd(std::u16string_view text) {
    while (!text.empty() && u_isUWhiteSpace(text.back()) != 0)
        text.remove_suffix(1);
    return text;
}

// Breaks one line of a text.
void wrapLine(std::u16string_view line, std::size_t width, icu::BreakIterator& breaks,
              std::vector<std::string>& lines) {
    const icu::UnicodeString alias = aliasOf(line);
    breaks.setText(alias);
    std::u16string current;
    std::int32_t start = breaks.first();
    for (std::int32_t end = breaks.next(); end != icu::BreakIterator::DONE; end = breaks.next()) {
        const auto piece =
            line.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(end - start));
        start = end;
        if (!current.empty() && widthOf(current) + widthOf(trimmedAtEnd(piece)) > width) {
            lines.push_back(toUtf8(trimmedAtEnd(current)));
            current.clear();
        }
        current += piece;
    }
    lines.push_back(toUtf8(trimmedAtEnd(current)));
}

}  // namespace

std::size_t displayWidth(std::string_view text) {
    return widthOf(toUnits(text));
}

std::string cutToWidth(std::string_view text, std::size_t width) {
    const std::u16string whole = toUnits(text);
    if (widthOf(whole) <= width)
        return std::string(text);
    const icu::UnicodeString alias = aliasOf(whole);
    std::int32_t kept = 0;
    std::size_t used = 1;  // the ellipsis
    for (std::int32_t at = 0; at < alias.length(); kept = at) {
        used += columnsOf(nextCharacter(alias, at));
        if (used > width)
            break;
    }
    const auto beginning = std::u16string_view(whole).substr(0, static_cast<std::size_t>(kept));
    return toUtf8(trimmedAtEnd(beginning)) + (width > 0 ? "…" : "");
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
    const std::u16string whole = toUnits(text);
    for (std::size_t start = 0; start <= whole.size();) {
        const std::size_t end = std::min(whole.find(u'\n', start), whole.size());
        wrapLine(std::u16string_view(whole).substr(start, end - start), width, *breaks, lines);
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
    const std::u16string whole = toUnits(text);
    const icu::UnicodeString alias = aliasOf(whole);
    std::u16string kept;
    for (std::int32_t begin = 0, end = 0; begin < alias.length(); begin = end) {
        const UChar32 character = nextCharacter(alias, end);
        if (character == u'\n' || character == u'\t' ||
            !controlsTerminal(static_cast<char32_t>(character)))
            kept.append(whole, static_cast<std::size_t>(begin),
                        static_cast<std::size_t>(end - begin));
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
