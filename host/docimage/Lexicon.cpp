#include "docimage/Lexicon.hpp"

#include <algorithm>
#include <numeric>
#include <utility>
#include <xxhash.h>

#include "docimage/searchForm.hpp"
#include "fl/i18n/contains.hpp"

namespace reference::docimage {
namespace {

constexpr std::size_t trigramLength = 3;

std::uint32_t trigramAt(std::string_view letters, std::size_t at) {
    const auto byte = [&](std::size_t offset) {
        return static_cast<std::uint32_t>(static_cast<unsigned char>(letters[at + offset]));
    };
    return byte(0) << 16U | byte(1) << 8U | byte(2);
}

}  // namespace

Lexicon::Lexicon(const Image& image, std::uint32_t firstSection)
    : m_words(image, firstSection),
      m_texts(image, firstSection + 2),
      m_trigrams(image, firstSection + 4),
      m_trigramWords(image, firstSection + 5),
      m_wellFormed(image, firstSection + 7) {}

std::string_view Lexicon::rarestTrigram(std::string_view letters) const {
    if (m_trigramWords.size() == 0)
        return {};
    const auto known = m_trigrams.range(0, m_trigrams.size());
    std::string_view rarest;
    for (std::size_t at = 0; at + trigramLength <= letters.size(); ++at) {
        const std::uint32_t trigram = trigramAt(letters, at);
        const auto found = std::ranges::lower_bound(known, trigram);
        if (found == known.end() || *found != trigram)
            return {};
        const auto words = m_trigramWords[static_cast<std::size_t>(found - known.begin())];
        if (at == 0 || words.size() < rarest.size())
            rarest = words;
    }
    return rarest;
}

bool Lexicon::hasPart(std::string_view word, const WordPart& part) {
    if (part.isStart && part.isEnd)
        return word == part.letters;
    if (part.isStart)
        return word.starts_with(part.letters);
    return part.isEnd ? word.ends_with(part.letters) : fl::i18n::contains(word, part.letters);
}

std::size_t LexiconBuilder::Hash::operator()(std::string_view word) const noexcept {
    return XXH3_64bits(word.data(), word.size());
}

std::vector<std::uint32_t> orderByEnds(const std::vector<std::string_view>& texts) {
    std::vector<std::uint32_t> order(texts.size());
    std::iota(order.begin(), order.end(), 0U);
    std::ranges::sort(order, [&texts](std::uint32_t a, std::uint32_t b) {
        return std::lexicographical_compare(texts[a].rbegin(), texts[a].rend(), texts[b].rbegin(),
                                            texts[b].rend());
    });
    return order;
}

void LexiconBuilder::addText(std::u16string_view text, std::uint32_t number) {
    m_isWellFormed = m_isWellFormed && docimage::isWellFormed(text);
    forEachWord(searchForm(text), [&](std::string_view word) { addWord(word, number); });
}

void LexiconBuilder::addWord(std::string_view word, std::uint32_t text) {
    auto found = m_words.find(word);
    if (found == m_words.end())
        found = m_words.emplace(std::string(word), Texts()).first;
    Texts& texts = found->second;
    if (!texts.deltas.empty() && texts.last == text)
        return;
    appendVarint(text - texts.last, texts.deltas);
    texts.last = text;
}

void LexiconBuilder::writeTo(ImageWriter& writer, std::uint32_t firstSection, FoundBy foundBy) {
    std::vector<std::pair<std::string_view, std::string_view>> sorted;
    sorted.reserve(m_words.size());
    for (const auto& [word, texts] : m_words)
        sorted.emplace_back(word, texts.deltas);
    std::ranges::sort(sorted);

    TextTableBuilder words;
    TextTableBuilder texts;
    // A trigram above the number of a word that holds it.
    std::vector<std::uint64_t> trigrams;
    for (const auto& [word, deltas] : sorted) {
        const std::uint64_t number = words.add(word);
        texts.add(deltas);
        if (foundBy == FoundBy::Ends)
            continue;
        for (std::size_t at = 0; at + trigramLength <= word.size(); ++at)
            trigrams.push_back(std::uint64_t{trigramAt(word, at)} << 32U | number);
    }
    std::ranges::sort(trigrams);
    trigrams.erase(std::unique(trigrams.begin(), trigrams.end()), trigrams.end());

    std::vector<std::uint32_t> known;
    TextTableBuilder wordsOfTrigrams;
    std::string deltas;
    std::uint32_t last = 0;
    for (std::size_t at = 0; at < trigrams.size(); ++at) {
        const auto trigram = static_cast<std::uint32_t>(trigrams[at] >> 32U);
        const auto word = static_cast<std::uint32_t>(trigrams[at]);
        if (known.empty() || known.back() != trigram) {
            known.push_back(trigram);
            last = 0;
        }
        appendVarint(word - last, deltas);
        last = word;
        if (at + 1 == trigrams.size() || trigrams[at + 1] >> 32U != trigram) {
            wordsOfTrigrams.add(deltas);
            deltas.clear();
        }
    }

    if (foundBy == FoundBy::Ends) {
        std::vector<std::string_view> all;
        all.reserve(sorted.size());
        for (const auto& entry : sorted)
            all.push_back(entry.first);
        known = orderByEnds(all);
    }
    words.writeTo(writer, firstSection);
    texts.writeTo(writer, firstSection + 2);
    writer.addArray(firstSection + 4, known);
    wordsOfTrigrams.writeTo(writer, firstSection + 5);
    writer.addArray(firstSection + 7, std::vector<std::uint32_t>{m_isWellFormed ? 1U : 0U});
}

}  // namespace reference::docimage
