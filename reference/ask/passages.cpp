#include "reference/ask/passages.hpp"

#include <algorithm>

#include "docimage/searchForm.hpp"
#include "docimage/unitBytes.hpp"
#include "reference/ask/asciiBytes.hpp"

namespace reference::ask {
namespace {

constexpr float synonymShare = 0.7F;

// The number of a word's first two bytes in search form.
std::size_t beginningOf(std::string_view word) noexcept {
    constexpr unsigned bits = 8;
    const auto first = static_cast<unsigned char>(lowerByte(word[0]));
    const auto second = word.size() > 1 ? static_cast<unsigned char>(lowerByte(word[1])) : 0U;
    return std::size_t{first} << bits | second;
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
    m_texts = {};
    m_bestWeight = -1;
}

bool PassageFinder::look(std::string_view text) {
    text = text.substr(0, longestText - m_looked);
    m_looked += text.size();
    m_found.clear();
    std::size_t position = 0;
    docimage::forEachWord(text, [&](std::string_view word) {
        if (const WordBits* const bits = bitsOf(word)) {
            m_found.push_back({.position = position, .bits = *bits});
            m_texts.all.add(*bits);
        }
        ++position;
    });
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

// Most words of a text begin like none that is looked for, and need not be folded.
const WordBits* PassageFinder::bitsOf(std::string_view word) {
    const bool isPlain = isAscii(word.substr(0, 2));
    if (isPlain && !m_beginnings[beginningOf(word)])
        return nullptr;
    if (isPlain && isAscii(word)) {
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
        m_texts.passage = bits;
    }
}

}  // namespace reference::ask
