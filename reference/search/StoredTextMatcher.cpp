#include "reference/search/StoredTextMatcher.hpp"

#include <algorithm>

#include "docimage/unitBytes.hpp"
#include "fl/i18n/contains.hpp"

namespace reference::search {

namespace {

using fl::i18n::contains;

bool isAscii(std::string_view bytes) {
    return std::ranges::all_of(bytes,
                               [](char byte) { return static_cast<signed char>(byte) >= 0; });
}

// Whether lower-casing the text may do more to its ASCII letters than folding each by itself does:
// a text with an unpaired surrogate is not folded at all, and the Kelvin sign and the dotted
// capital I become ASCII letters. Lead bytes of surrogates begin with 0xED, as do a few others.
bool isFoldedOtherwise(std::string_view bytes) {
    return contains(bytes, "\xED") || contains(bytes, "\xE2\x84\xAA") ||
           contains(bytes, "\xC4\xB0");
}

}  // namespace

StoredTextMatcher::StoredTextMatcher(const ReferenceRequestExt& ext)
    : m_ext(ext),
      m_searched(docimage::toUnitBytes(ext.searchText())),
      m_isAsciiSearched(isAscii(m_searched)) {}

bool StoredTextMatcher::matches(std::string_view stored) {
    if (m_ext.isCaseSensitive())
        return contains(stored, m_searched);
    const bool isAsciiStored = fold(stored);
    if (isAsciiStored || (m_isAsciiSearched && !isFoldedOtherwise(stored)))
        return contains(m_folded, m_searched);
    docimage::assignUnitBytes(stored, m_text);
    return m_ext.isTextMatch(m_text);
}

// Folds ASCII letters into `m_folded`; whether there is nothing else.
bool StoredTextMatcher::fold(std::string_view stored) {
    m_folded.resize(stored.size());
    unsigned char all = 0;
    std::ranges::transform(stored, m_folded.begin(), [&all](char byte) {
        all |= static_cast<unsigned char>(byte);
        return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
    });
    return all < 0x80;
}

}  // namespace reference::search
