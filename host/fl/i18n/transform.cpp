#include "fl/i18n/transform.hpp"

#include <algorithm>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

#include <unicode/uchar.h>
#include <unicode/utf16.h>

namespace fl::i18n::detail {
namespace {

constexpr UChar32 capitalIWithDot = 0x0130;
constexpr UChar32 capitalSigma = 0x03A3;
constexpr char16_t finalSigma = u'\u03C2';

constexpr bool isAscii(char16_t unit) {
    return unit < 0x80;
}

constexpr char16_t asciiToLower(char16_t unit) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + (u'a' - u'A')) : unit;
}

// How many units at the beginning of the text are ASCII. Most texts are nothing else, so it goes by
// blocks.
std::size_t asciiLength(std::u16string_view text) {
    constexpr std::size_t block = 8;
    std::size_t at = 0;
    for (; at + block <= text.size(); at += block) {
        char16_t all = 0;
        for (std::size_t unit = at; unit < at + block; ++unit)
            all |= text[unit];
        if (!isAscii(all))
            break;
    }
    while (at < text.size() && isAscii(text[at]))
        ++at;
    return at;
}

constexpr bool isSurrogate(UChar32 character) {
    return character >= 0xD800 && character <= 0xDFFF;
}

// A buffer that takes what fits, and counts all.
class Output {
  public:
    explicit Output(std::span<char16_t> buffer) : m_buffer(buffer) {}

    [[nodiscard]] std::size_t length() const noexcept { return m_length; }

    void addLowered(std::u16string_view ascii) {
        const auto room = m_buffer.subspan(std::min(m_length, m_buffer.size()));
        const std::size_t fitting = std::min(ascii.size(), room.size());
        std::transform(ascii.data(), ascii.data() + fitting, room.data(), asciiToLower);
        m_length += ascii.size();
    }

    void add(char16_t unit) {
        if (m_length < m_buffer.size())
            m_buffer[m_length] = unit;
        ++m_length;
    }

    void addCharacter(UChar32 character) {
        if (U_IS_BMP(character)) {
            add(static_cast<char16_t>(character));
            return;
        }
        add(U16_LEAD(character));
        add(U16_TRAIL(character));
    }

  private:
    std::span<char16_t> m_buffer;
    std::size_t m_length = 0;
};

// The character that begins at `at`, which moves behind it. An unpaired surrogate counts as one.
UChar32 takeNext(std::u16string_view text, std::size_t& at) {
    const char16_t unit = text[at++];
    if (U16_IS_LEAD(unit) && at < text.size() && U16_IS_TRAIL(text[at]))
        return U16_GET_SUPPLEMENTARY(unit, text[at++]);
    return unit;
}

// The character that ends before `at`, which moves to its beginning.
UChar32 takePrevious(std::u16string_view text, std::size_t& at) {
    const char16_t unit = text[--at];
    if (U16_IS_TRAIL(unit) && at > 0 && U16_IS_LEAD(text[at - 1]))
        return U16_GET_SUPPLEMENTARY(text[--at], unit);
    return unit;
}

bool isCaseIgnorable(UChar32 character) {
    return u_hasBinaryProperty(character, UCHAR_CASE_IGNORABLE) != 0;
}

bool isCased(UChar32 character) {
    return u_hasBinaryProperty(character, UCHAR_CASED) != 0;
}

// Whether the first character that is not case-ignorable is a letter with case.
bool beginsWithCased(std::u16string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const UChar32 character = takeNext(text, at);
        if (!isCaseIgnorable(character))
            return isCased(character);
    }
    return false;
}

// Whether the last character that is not case-ignorable is a letter with case.
bool endsWithCased(std::u16string_view text) {
    for (std::size_t at = text.size(); at > 0;) {
        const UChar32 character = takePrevious(text, at);
        if (!isCaseIgnorable(character))
            return isCased(character);
    }
    return false;
}

}  // namespace

// The full mapping takes each character alone, as the simple one does, but for two: the capital I
// with a dot becomes two characters, and the capital sigma has another form at the end of a word.
std::size_t transform(char16_t* out, std::size_t capacity, const char16_t* in, std::size_t length,
                      const to_lower& /*rule*/) {
    const std::u16string_view text(in, length);
    Output output(std::span(out, capacity));
    for (std::size_t at = 0; at < length;) {
        const std::size_t other = at + asciiLength(text.substr(at));
        output.addLowered(text.substr(at, other - at));
        at = other;
        if (at == length)
            break;
        const UChar32 character = takeNext(text, at);
        if (isSurrogate(character))
            throw std::invalid_argument("The text is not well-formed UTF-16: unit " +
                                        std::to_string(other) + " is an unpaired surrogate.");
        if (character == capitalIWithDot) {
            output.add(u'i');
            output.add(u'\u0307');
        } else if (character == capitalSigma && endsWithCased(text.substr(0, other)) &&
                   !beginsWithCased(text.substr(at))) {
            output.add(finalSigma);
        } else {
            output.addCharacter(u_tolower(character));
        }
    }
    return output.length();
}

}  // namespace fl::i18n::detail
