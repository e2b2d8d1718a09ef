#include "reference/search/StoredTextMatcher.hpp"

#include <algorithm>

#include "docimage/unitBytes.hpp"

namespace reference::search {

StoredTextMatcher::StoredTextMatcher(const ReferenceRequestExt& ext)
    : m_ext(ext), m_searched(docimage::toUnitBytes(ext.searchText())) {}

bool StoredTextMatcher::matches(std::string_view stored) {
    if (m_ext.isCaseSensitive())
        return stored.find(m_searched) != std::string_view::npos;
    m_folded.resize(stored.size());
    unsigned char all = 0;
    std::ranges::transform(stored, m_folded.begin(), [&all](char byte) {
        all |= static_cast<unsigned char>(byte);
        return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
    });
    if (all < 0x80)
        return m_folded.find(m_searched) != std::string::npos;
    docimage::assignUnitBytes(stored, m_text);
    return m_ext.isTextMatch(m_text);
}

}  // namespace reference::search
