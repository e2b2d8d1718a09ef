#include "vref/OutputFilter.hpp"

#include <algorithm>
#include <cstdint>

#include <unicode/utf8.h>

#include "vref/DisplayText.hpp"
#include "vref/Terminal.hpp"

namespace reference::tools {
namespace {

constexpr char escape = '\033';
// No address is longer, and what does not end by then is no link.
constexpr std::size_t longestSequence = 8192;

bool isPlain(char byte) {
    return (byte >= ' ' && byte <= '~') || byte == '\n' || byte == '\t' || byte == '\r';
}

// The length of the sequence that `bytes` begin with, if it is one of the tool's own; else 0, or
// npos where that depends on what comes next.
std::size_t ownSequence(std::string_view bytes) {
    std::size_t longer = 0;
    const auto begins = [&](std::string_view sequence) {
        if (sequence.starts_with(bytes) && sequence.size() > bytes.size())
            longer = std::string_view::npos;
        return bytes.starts_with(sequence);
    };
    for (const std::string_view code : ownCodes())
        if (begins(code))
            return code.size();
    if (!begins(linkBegin))
        return longer;
    const auto isInLink = [](char byte) { return byte >= ' ' && byte <= '~'; };
    const auto end = std::find_if_not(bytes.begin() + linkBegin.size(), bytes.end(), isInLink);
    const std::string_view rest(end, bytes.end());
    if (rest.starts_with(linkEnd))
        return bytes.size() - rest.size() + linkEnd.size();
    const bool mayGoOn = linkEnd.starts_with(rest) && bytes.size() < longestSequence;
    return mayGoOn ? std::string_view::npos : 0;
}

constexpr char32_t illFormed = 0xFFFFFFFF;

// The first character, and in `length` how many bytes it takes; `illFormed` for bytes that are
// none.
char32_t nextCharacter(std::string_view bytes, std::int32_t& length) {
    UChar32 character = 0;
    length = 0;
    const char* const data = bytes.data();
    const auto size = static_cast<std::int32_t>(std::min<std::size_t>(bytes.size(), U8_MAX_LENGTH));
// The macro's own arithmetic narrows from int.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wsign-conversion"
    U8_NEXT(data, length, size, character);
#pragma GCC diagnostic pop
    return character < 0 ? illFormed : static_cast<char32_t>(character);
}

}  // namespace

OutputFilter::OutputFilter() {
    m_bytes.reserve(usualSize + longestSequence);
    m_passed.reserve(usualSize + longestSequence);
}

std::string_view OutputFilter::pass(std::string_view bytes) {
    m_bytes.append(bytes);
    passAll(false);
    return m_passed;
}

std::string_view OutputFilter::finish() {
    passAll(true);
    return m_passed;
}

void OutputFilter::passAll(bool isEnd) {
    m_passed.clear();
    std::string_view bytes = m_bytes;
    while (!bytes.empty()) {
        const auto plainEnd = std::ranges::find_if_not(bytes, isPlain);
        m_passed.append(bytes.begin(), plainEnd);
        bytes = std::string_view(plainEnd, bytes.end());
        if (bytes.empty())
            break;
        if (bytes.front() == escape) {
            const std::size_t length = ownSequence(bytes);
            if (length == std::string_view::npos && !isEnd)
                break;
            const bool isOwn = length != 0 && length != std::string_view::npos;
            if (isOwn)
                m_passed += bytes.substr(0, length);
            bytes.remove_prefix(isOwn ? length : 1);
            continue;
        }
        std::int32_t length = 0;
        const char32_t character = nextCharacter(bytes, length);
        const auto taken = static_cast<std::size_t>(length);
        if (character == illFormed && taken == bytes.size() && taken < U8_MAX_LENGTH && !isEnd)
            break;  // its other bytes may come
        if (character == illFormed)
            m_passed += '?';
        else if (!controlsTerminal(character))
            m_passed += bytes.substr(0, taken);
        bytes.remove_prefix(taken);
    }
    m_bytes.erase(0, m_bytes.size() - bytes.size());
}

}  // namespace reference::tools
