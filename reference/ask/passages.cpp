#include "reference/ask/passages.hpp"

#include <algorithm>

#include "docimage/searchForm.hpp"
#include "docimage/unitBytes.hpp"

namespace reference::ask {
namespace {

constexpr float synonymShare = 0.7F;

// The search form of a text that is stored as bytes; one pass where it is ASCII, as most are.
void assignFormOfBytes(std::string_view bytes, std::string& form) {
    if (!std::ranges::all_of(bytes,
                             [](char byte) { return static_cast<signed char>(byte) >= 0; })) {
        form = docimage::searchForm(docimage::fromUnitBytes(bytes));
        return;
    }
    form.assign(bytes);
    for (char& byte : form)
        if (byte >= 'A' && byte <= 'Z')
            byte = static_cast<char>(byte + ('a' - 'A'));
}

}  // namespace

std::size_t PassageFinder::Hash::operator()(std::string_view word) const noexcept {
    return std::hash<std::string_view>()(word);
}

void PassageFinder::addWord(std::string_view word, std::size_t number, bool isSynonym) {
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
    assignFormOfBytes(text, m_form);
    m_found.clear();
    std::size_t position = 0;
    docimage::forEachWord(m_form, [&](std::string_view word) {
        if (const auto found = m_words.find(word); found != m_words.end()) {
            m_found.push_back({.position = position, .bits = found->second});
            m_texts.all.add(found->second);
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
