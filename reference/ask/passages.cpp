#include "reference/ask/passages.hpp"

#include <algorithm>
#include <array>

#include "docimage/searchForm.hpp"
#include "docimage/unitBytes.hpp"
#include "reference/ask/asciiBytes.hpp"

namespace reference::ask {
namespace {

constexpr float synonymShare = 0.7F;

// What three bytes have in common with the same letters in the other case: their lowest five bits.
// What is missing counts as nothing.
std::size_t beginningOf(std::string_view word) noexcept {
    constexpr unsigned bits = 5;
    constexpr unsigned mask = (1U << bits) - 1;
    std::size_t number = 0;
    for (std::size_t at = 0; at < 3 && at < word.size(); ++at)
        number |= std::size_t{static_cast<unsigned char>(word[at]) & mask} << (bits * at);
    return number;
}

// The empty "()" is for cppcheck 2.10, which cannot read a lambda without.
constexpr auto wordBytes = []() {
    std::array<bool, 256> is{};
    for (unsigned byte = 0; byte < is.size(); ++byte)
        is[byte] = docimage::isWordByte(static_cast<char>(byte));
    return is;
}();

bool isInWord(char byte) noexcept {
    return wordBytes[static_cast<unsigned char>(byte)];
}

}  // namespace

std::size_t PassageFinder::Hash::operator()(std::string_view word) const noexcept {
    return std::hash<std::string_view>()(word);
}

void PassageFinder::addWord(std::string_view word, std::size_t number, bool isSynonym) {
    if (word.empty())
        return;
    m_beginnings[beginningOf(word)] = true;
    auto found = m_words.find(word);
    if (found == m_words.end())
        found = m_words.emplace(std::string(word), WordBits()).first;
    (isSynonym ? found->second.synonyms : found->second.words) |= std::uint64_t{1} << number;
}

void PassageFinder::clear() noexcept {
    m_looked = 0;
    m_passage = {};
    m_bestWeight = -1;
}

bool PassageFinder::look(std::string_view text) {
    text = text.substr(0, longestText - m_looked);
    m_looked += text.size();
    m_found.clear();
    std::size_t position = 0;
    for (std::size_t at = 0; at < text.size();) {
        if (!isInWord(text[at])) {
            ++at;
            continue;
        }
        const std::size_t begin = at;
        while (++at < text.size() && isInWord(text[at])) {
        }
        const std::string_view word = text.substr(begin, at - begin);
        if (const WordBits* const bits = bitsOf(word)) {
            m_found.push_back({.position = position, .bits = *bits});
        }
        ++position;
    }
    std::size_t end = 0;
    for (std::size_t first = 0; first < m_found.size() && end < m_found.size(); ++first) {
        const std::size_t before = end;
        while (end < m_found.size() &&
               m_found[end].position < m_found[first].position + passageLength)
            ++end;
        // A passage that another one holds has no more words than it.
        if (end > before)
            takePassage(first, end);
    }
    return m_looked == longestText;
}

// Most words of a text begin like none that is looked for, and need not be folded. What begins with
// other letters than those of ASCII may be folded to anything.
const WordBits* PassageFinder::bitsOf(std::string_view word) {
    if (!m_beginnings[beginningOf(word)] && isAscii(word.substr(0, 3)))
        return nullptr;
    if (isAscii(word)) {
        m_form.assign(word);
        for (char& byte : m_form)
            byte = lowerByte(byte);
    } else {
        m_form = docimage::searchForm(docimage::fromUnitBytes(word));
    }
    const auto found = m_words.find(std::string_view(m_form));
    return found == m_words.end() ? nullptr : &found->second;
}

void PassageFinder::takePassage(std::size_t first, std::size_t end) {
    WordBits bits;
    for (std::size_t at = first; at < end; ++at)
        bits.add(m_found[at].bits);
    float weight = 0;
    for (std::size_t number = 0; number < m_weights.size(); ++number) {
        if ((bits.words >> number & 1U) != 0)
            weight += m_weights[number];
        else if ((bits.synonyms >> number & 1U) != 0)
            weight += m_weights[number] * synonymShare;
    }
    if (weight > m_bestWeight) {
        m_bestWeight = weight;
        m_passage = bits;
    }
}

}  // namespace reference::ask
