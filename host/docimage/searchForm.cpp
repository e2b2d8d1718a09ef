#include "docimage/searchForm.hpp"

#include <algorithm>
#include <array>

#include <unicode/utf16.h>

#include "docimage/unitBytes.hpp"
#include "fl/i18n/transform.hpp"

namespace reference::docimage {
namespace {

constexpr char16_t finalSigma = 0x03C2;
constexpr char16_t smallSigma = 0x03C3;

// Whether all of the text is ASCII; if so, the lower case of each unit is in `out`. In one pass
// without a branch, which the compiler turns into a few instructions for many units.
bool lowerAscii(std::u16string_view text, char* out) {
    char16_t all = 0;
    for (const char16_t unit : text) {
        all |= unit;
        const auto byte = static_cast<char>(unit);
        *out++ = byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
    }
    return all < 0x80;
}

// Of well-formed text.
void appendForm(std::u16string_view text, std::string& form) {
    using fl::i18n::to_lower;
    using fl::i18n::detail::transform;
    std::array<char16_t, 512> buffer;
    std::u16string large;
    char16_t* lower = buffer.data();
    std::size_t length = transform(lower, buffer.size(), text.data(), text.size(), to_lower());
    if (length > buffer.size()) {
        large.resize(length);
        lower = large.data();
        length = transform(lower, large.size(), text.data(), text.size(), to_lower());
    }
    std::replace(lower, lower + length, finalSigma, smallSigma);
    appendUnitBytes({lower, length}, form);
}

// The length of the well-formed text that begins at `at`.
std::size_t wellFormedLength(std::u16string_view text, std::size_t at) {
    std::size_t end = at;
    while (end < text.size()) {
        if (!U16_IS_SURROGATE(text[end])) {
            ++end;
            continue;
        }
        const bool pair =
            U16_IS_LEAD(text[end]) && end + 1 < text.size() && U16_IS_TRAIL(text[end + 1]);
        if (!pair)
            break;
        end += 2;
    }
    return end - at;
}

}  // namespace

bool isWellFormed(std::u16string_view text) {
    return wellFormedLength(text, 0) == text.size();
}

std::string searchForm(std::u16string_view text) {
    std::string form(text.size(), '\0');
    if (lowerAscii(text, form.data()))
        return form;
    form.clear();
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = wellFormedLength(text, at);
        if (length > 0)
            appendForm(text.substr(at, length), form);
        at += length;
        if (at < text.size())
            appendUnitBytes(text.substr(at++, 1), form);
    }
    return form;
}

void assignSearchForm(std::u16string_view text, FormBuffer& form) {
    form.resize(text.size(), boost::container::default_init);
    if (lowerAscii(text, form.data()))
        return;
    const std::string whole = searchForm(text);
    form.assign(whole.begin(), whole.end());
}

}  // namespace reference::docimage
