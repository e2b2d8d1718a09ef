#include "sphinx/Text.hpp"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <utility>

#include <unicode/ustring.h>
#include <unicode/utf8.h>

#include "fl/i18n/utf.hpp"

namespace reference::importers::sphinx {
namespace {

constexpr std::string_view noBreakSpace = "\xC2\xA0";
constexpr std::string_view zeroWidthSpace = "\xE2\x80\x8B";

constexpr bool isAsciiSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

// How many bytes of white space `text` begins with.
std::size_t leadingSpace(std::string_view text) {
    if (text.empty())
        return 0;
    if (isAsciiSpace(text.front()))
        return 1;
    return text.starts_with(noBreakSpace) ? noBreakSpace.size() : 0;
}

}  // namespace

std::string_view trimmed(std::string_view text) {
    while (const std::size_t space = leadingSpace(text))
        text.remove_prefix(space);
    while (!text.empty()) {
        if (isAsciiSpace(text.back()))
            text.remove_suffix(1);
        else if (text.ends_with(noBreakSpace))
            text.remove_suffix(noBreakSpace.size());
        else
            break;
    }
    return text;
}

std::string collapsed(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    bool spaceDue = false;
    while (!text.empty()) {
        if (const std::size_t space = leadingSpace(text)) {
            spaceDue = !result.empty();
            text.remove_prefix(space);
        } else if (text.starts_with(zeroWidthSpace)) {
            text.remove_prefix(zeroWidthSpace.size());
        } else {
            if (spaceDue)
                result += ' ';
            spaceDue = false;
            result += text.front();
            text.remove_prefix(1);
        }
    }
    return result;
}

std::string withoutGaps(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char before = result.empty() ? '\0' : result.back();
        const char after = at + 1 < text.size() ? text[at + 1] : '\0';
        const bool isGap = text[at] == ' ' && (before == '(' || before == '[' || after == ')' ||
                                               after == ']' || after == ',');
        if (!isGap)
            result += text[at];
    }
    return result;
}

std::string withSetLines(std::string_view text, std::string_view lead) {
    std::string result;
    result.reserve(text.size() + lead.size());
    for (const char c : text) {
        result += c;
        if (c == '\n')
            result += lead;
    }
    return result;
}

std::string_view firstCharacter(std::string_view text) {
    const auto isContinuation = [](char c) { return (c & '\xC0') == '\x80'; };
    const auto next = std::find_if_not(text.begin() + 1, text.end(), isContinuation);
    return text.substr(0, static_cast<std::size_t>(next - text.begin()));
}

std::string lowered(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return result;
}

bool isWellFormed(std::string_view text) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    std::size_t at = 0;
    while (at < text.size()) {
        UChar32 character = 0;
// The macro's own arithmetic narrows from int.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wsign-conversion"
        U8_NEXT(bytes, at, text.size(), character);
#pragma GCC diagnostic pop
        if (character < 0)
            return false;
    }
    return true;
}

std::string toWellFormed(std::string_view text) {
    if (isWellFormed(text))
        return std::string(text);
    constexpr UChar32 replacement = 0xFFFD;
    std::u16string utf16(text.size(), u'\0');
    std::int32_t written = 0;
    UErrorCode error = U_ZERO_ERROR;
    u_strFromUTF8WithSub(utf16.data(), static_cast<std::int32_t>(utf16.size()), &written,
                         text.data(), static_cast<std::int32_t>(text.size()), replacement, nullptr,
                         &error);
    utf16.resize(U_SUCCESS(error) ? static_cast<std::size_t>(written) : 0);
    return fl::i18n::toUtf8(utf16);
}

std::string percentDecoded(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        unsigned value = 0;
        if (text.front() == '%' && text.size() >= 3 &&
            std::from_chars(text.data() + 1, text.data() + 3, value, 16).ptr == text.data() + 3) {
            result += static_cast<char>(static_cast<unsigned char>(value));
            text.remove_prefix(3);
        } else {
            result += text.front();
            text.remove_prefix(1);
        }
    }
    return result;
}

std::vector<std::string> splitAtCommas(std::string_view text) {
    std::vector<std::string> parts;
    std::size_t begin = 0;
    int depth = 0;
    for (std::size_t at = 0; at <= text.size(); ++at) {
        const char c = at < text.size() ? text[at] : ',';
        if (c == '(' || c == '[' || c == '{')
            ++depth;
        else if (c == ')' || c == ']' || c == '}')
            --depth;
        else if (c == ',' && (depth <= 0 || at == text.size())) {
            if (const auto part = trimmed(text.substr(begin, at - begin)); !part.empty())
                parts.emplace_back(part);
            begin = at + 1;
        }
    }
    return parts;
}

std::string_view lastComponent(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    return dot == std::string_view::npos ? name : name.substr(dot + 1);
}

std::string underlined(std::string_view title) {
    const auto characters =
        std::ranges::count_if(title, [](char c) { return (c & '\xC0') != '\x80'; });
    return std::string(title) + "\n" + std::string(static_cast<std::size_t>(characters), '-');
}

std::string withLead(std::string lead, std::string_view text) {
    const std::size_t digits = text.find_first_not_of("0123456789");
    const bool isNumbered =
        digits > 0 && digits != std::string_view::npos && text.substr(digits).starts_with(". ");
    const bool isSetApart =
        isNumbered || text.starts_with("- ") || text.starts_with('|') || text.starts_with(' ');
    return std::move(lead) + (isSetApart ? "\n" : " ") + std::string(text);
}

std::string withoutColon(std::string text) {
    while (text.ends_with(':') || text.ends_with(' '))
        text.pop_back();
    return text;
}

std::string joined(const std::vector<std::string>& parts, std::string_view separator) {
    std::string result;
    for (const std::string& part : parts) {
        if (&part != &parts.front())
            result += separator;
        result += part;
    }
    return result;
}

}  // namespace reference::importers::sphinx
